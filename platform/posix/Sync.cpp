// SPDX-License-Identifier: MIT
#include "platform/Sync.h"

#include "platform/Errors.h"
#include "platform/posix/Handles.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace
{

/// An object that a thread can wait for.
struct Waitable : posix::KernelObject
{
    std::mutex lock;
    std::condition_variable changed;

    /// Acquires the object for the calling thread and returns WAIT_OBJECT_0 or WAIT_ABANDONED.
    /// Returns WAIT_TIMEOUT if the object cannot be acquired now. The caller holds the lock.
    virtual DWORD Acquire() = 0;
    /// A quick check without the lock. False only if Acquire would return WAIT_TIMEOUT.
    virtual bool MayAcquire() const { return true; }
};

struct Mutex final : Waitable, std::enable_shared_from_this<Mutex>
{
    std::thread::id owner;  // the default value when no thread owns it
    int depth = 0;
    bool isAbandoned = false;

    DWORD Acquire() override;
    void Own();
};

struct Event final : Waitable
{
    std::atomic<bool> isSignalled = false;
    bool isManual = false;

    DWORD Acquire() override
    {
        const bool was = isManual ? isSignalled.load() : isSignalled.exchange(false);
        return was ? WAIT_OBJECT_0 : WAIT_TIMEOUT;
    }
    bool MayAcquire() const override { return isSignalled; }
};

/// Set when the thread's OwnedMutexes have been destroyed. This variable has no destructor, so it
/// can be read even after that.
thread_local bool isThreadEnding = false;

/// The mutexes that a thread owns. They are abandoned when the thread ends. The pointers are weak:
/// a mutex whose handle was closed and for which no thread waits no longer exists.
class OwnedMutexes
{
public:
    ~OwnedMutexes()
    {
        isThreadEnding = true;
        for (const std::weak_ptr<Mutex>& entry : mutexes_)
        {
            if (const std::shared_ptr<Mutex> mutex = entry.lock())
            {
                const std::lock_guard guard(mutex->lock);
                mutex->owner = {};
                mutex->depth = 0;
                mutex->isAbandoned = true;
                mutex->changed.notify_one();
            }
        }
    }

    void Add(const std::shared_ptr<Mutex>& mutex)
    {
        std::erase_if(mutexes_, [](const auto& entry) { return entry.expired(); });
        mutexes_.push_back(mutex);
    }
    void Remove(const Mutex* mutex)
    {
        std::erase_if(mutexes_, [=](const auto& entry) { return entry.lock().get() == mutex; });
    }

private:
    std::vector<std::weak_ptr<Mutex>> mutexes_;
};

/// The mutexes of the calling thread. Null while the thread ends: a mutex that a destructor
/// acquires at that time is never abandoned.
OwnedMutexes* OwnedByThisThread()
{
    if (isThreadEnding)
    {
        return nullptr;
    }
    thread_local OwnedMutexes owned;
    return &owned;
}

void Mutex::Own()
{
    // This may throw when there is no memory. The mutex must not be owned then.
    if (OwnedMutexes* const owned = OwnedByThisThread())
    {
        owned->Add(shared_from_this());
    }
    owner = std::this_thread::get_id();
    depth = 1;
}

DWORD Mutex::Acquire()
{
    if (depth > 0 && owner == std::this_thread::get_id())
    {
        ++depth;
        return WAIT_OBJECT_0;
    }
    if (depth > 0)
    {
        return WAIT_TIMEOUT;
    }
    Own();
    return std::exchange(isAbandoned, false) ? WAIT_ABANDONED : WAIT_OBJECT_0;
}

BOOL SetSignalled(HANDLE handle, bool isSignalled)
{
    const std::shared_ptr<Event> event = posix::Resolve<Event>(handle);
    if (event == nullptr)
    {
        SetLastError(ERROR_INVALID_HANDLE);
        return FALSE;
    }
    const std::lock_guard guard(event->lock);
    event->isSignalled = isSignalled;
    if (isSignalled)
    {
        event->isManual ? event->changed.notify_all() : event->changed.notify_one();
    }
    return TRUE;
}

}  // namespace

HANDLE CreateMutexA(SECURITY_ATTRIBUTES*, BOOL initiallyOwned, LPCSTR name)
{
    if (name != nullptr)
    {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    if (initiallyOwned)
    {
        const auto mutex = std::make_shared<Mutex>();
        mutex->Own();
        return posix::AddHandle(mutex);
    }
    return posix::AddHandle(
        +[]() -> std::shared_ptr<posix::KernelObject> { return std::make_shared<Mutex>(); });
}

BOOL ReleaseMutex(HANDLE handle)
{
    const std::shared_ptr<Mutex> mutex = posix::Resolve<Mutex>(handle);
    if (mutex == nullptr)
    {
        SetLastError(ERROR_INVALID_HANDLE);
        return FALSE;
    }
    const std::lock_guard guard(mutex->lock);
    if (mutex->depth == 0 || mutex->owner != std::this_thread::get_id())
    {
        SetLastError(ERROR_NOT_OWNER);
        return FALSE;
    }
    if (--mutex->depth == 0)
    {
        mutex->owner = {};
        if (OwnedMutexes* const owned = OwnedByThisThread())
        {
            owned->Remove(mutex.get());
        }
        mutex->changed.notify_one();
    }
    return TRUE;
}

HANDLE CreateEventA(SECURITY_ATTRIBUTES*, BOOL manualReset, BOOL initialState, LPCSTR name)
{
    if (name != nullptr)
    {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    const auto event = std::make_shared<Event>();
    event->isManual = manualReset != FALSE;
    event->isSignalled = initialState != FALSE;
    return posix::AddHandle(event);
}

BOOL SetEvent(HANDLE event)
{
    return SetSignalled(event, true);
}

BOOL ResetEvent(HANDLE event)
{
    return SetSignalled(event, false);
}

DWORD WaitForSingleObject(HANDLE handle, DWORD milliseconds)
{
    const std::shared_ptr<Waitable> object = posix::Resolve<Waitable>(handle);
    if (object == nullptr)
    {
        SetLastError(ERROR_INVALID_HANDLE);
        return WAIT_FAILED;
    }
    // Drawing tests an event before every letter, so the usual result, a timeout, is found without
    // the lock.
    if (milliseconds == 0 && !object->MayAcquire())
    {
        return WAIT_TIMEOUT;
    }

    std::unique_lock guard(object->lock);
    DWORD result = WAIT_TIMEOUT;
    const auto acquire = [&] {
        result = object->Acquire();
        return result != WAIT_TIMEOUT;
    };
    if (milliseconds == INFINITE)
    {
        object->changed.wait(guard, acquire);
    }
    else
    {
        object->changed.wait_for(guard, std::chrono::milliseconds(milliseconds), acquire);
    }
    return result;
}

BOOL CloseHandle(HANDLE handle)
{
    if (!posix::RemoveKernelObject(handle))
    {
        SetLastError(ERROR_INVALID_HANDLE);
        return FALSE;
    }
    return TRUE;
}
