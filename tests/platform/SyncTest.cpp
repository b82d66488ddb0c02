// SPDX-License-Identifier: MIT
#include "platform/Sync.h"

#include "platform/DeviceContexts.h"
#include "platform/Errors.h"
#include "tests/support/Threads.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace
{

DWORD WaitOnAnotherThread(HANDLE object, DWORD milliseconds)
{
    DWORD result = WAIT_FAILED;
    std::thread([&] {
        result = WaitForSingleObject(object, milliseconds);
        ReleaseMutex(object);
    }).join();
    return result;
}

TEST(Sync, AMutexIsFreeAfterAsManyReleasesAsWaits)
{
    const HANDLE mutex = CreateMutexA(nullptr, FALSE, nullptr);
    EXPECT_EQ(WaitForSingleObject(mutex, 0), WAIT_OBJECT_0);
    EXPECT_EQ(WaitForSingleObject(mutex, INFINITE), WAIT_OBJECT_0);
    EXPECT_TRUE(ReleaseMutex(mutex));
    EXPECT_EQ(WaitOnAnotherThread(mutex, 0), WAIT_TIMEOUT);
    EXPECT_TRUE(ReleaseMutex(mutex));
    EXPECT_EQ(WaitOnAnotherThread(mutex, 0), WAIT_OBJECT_0);
    EXPECT_TRUE(CloseHandle(mutex));
}

TEST(Sync, AMutexCanBeOwnedFromTheStart)
{
    const HANDLE mutex = CreateMutexA(nullptr, TRUE, nullptr);
    EXPECT_EQ(WaitOnAnotherThread(mutex, 0), WAIT_TIMEOUT);
    EXPECT_TRUE(ReleaseMutex(mutex));
    EXPECT_FALSE(ReleaseMutex(mutex));
    EXPECT_EQ(GetLastError(), ERROR_NOT_OWNER);
    CloseHandle(mutex);
}

TEST(Sync, OnlyTheOwnerReleasesAMutex)
{
    const HANDLE mutex = CreateMutexA(nullptr, TRUE, nullptr);
    BOOL released = TRUE;
    std::thread([&] { released = ReleaseMutex(mutex); }).join();
    EXPECT_FALSE(released);
    EXPECT_TRUE(ReleaseMutex(mutex));
    CloseHandle(mutex);
}

TEST(Sync, AThreadsEndAbandonsItsMutexOnce)
{
    const HANDLE mutex = CreateMutexA(nullptr, FALSE, nullptr);
    std::thread([=] {
        WaitForSingleObject(mutex, INFINITE);
        WaitForSingleObject(mutex, INFINITE);
    }).join();
    EXPECT_EQ(WaitForSingleObject(mutex, 0), WAIT_ABANDONED);
    EXPECT_TRUE(ReleaseMutex(mutex));
    EXPECT_FALSE(ReleaseMutex(mutex));
    EXPECT_EQ(WaitForSingleObject(mutex, 0), WAIT_OBJECT_0);
    ReleaseMutex(mutex);
    CloseHandle(mutex);
}

TEST(Sync, AWaiterWakesWhenTheOwnersThreadEnds)
{
    const HANDLE mutex = CreateMutexA(nullptr, FALSE, nullptr);
    const HANDLE isOwned = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    const HANDLE mayEnd = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    std::thread owner([=] {
        WaitForSingleObject(mutex, INFINITE);
        SetEvent(isOwned);
        WaitForSingleObject(mayEnd, INFINITE);
    });
    WaitForSingleObject(isOwned, INFINITE);
    DWORD result = WAIT_FAILED;
    WaitingThread waiter([&] { result = WaitForSingleObject(mutex, 60000); });
    EXPECT_TRUE(waiter.ComesToWait());
    SetEvent(mayEnd);
    waiter.Join();
    owner.join();
    EXPECT_EQ(result, WAIT_ABANDONED);
    // The waiter's own end abandoned it again.
    EXPECT_EQ(WaitForSingleObject(mutex, 0), WAIT_ABANDONED);
    ReleaseMutex(mutex);
    for (const HANDLE handle : {mutex, isOwned, mayEnd})
    {
        EXPECT_TRUE(CloseHandle(handle));
    }
}

TEST(Sync, AClosedHandleNeverNamesALaterObject)
{
    const HANDLE closed = CreateMutexA(nullptr, FALSE, nullptr);
    EXPECT_TRUE(CloseHandle(closed));
    for (int i = 0; i < 3; ++i)
    {
        const HANDLE made = CreateMutexA(nullptr, FALSE, nullptr);
        EXPECT_NE(made, closed);
        EXPECT_EQ(WaitForSingleObject(closed, 0), WAIT_FAILED);
        EXPECT_FALSE(CloseHandle(closed));
        EXPECT_EQ(WaitForSingleObject(made, 0), WAIT_OBJECT_0);
        EXPECT_TRUE(CloseHandle(made));
    }
}

TEST(Sync, InvalidHandlesAreRefused)
{
    const HANDLE mutex = CreateMutexA(nullptr, FALSE, nullptr);
    const auto value = reinterpret_cast<std::uintptr_t>(mutex);
    for (const std::uintptr_t other : {std::uintptr_t{0}, value + 1, value + 2, value + (1u << 30),
                                       value ^ std::uintptr_t{1} << 40, ~std::uintptr_t{0}})
    {
        const HANDLE handle = reinterpret_cast<HANDLE>(other);
        EXPECT_EQ(WaitForSingleObject(handle, 0), WAIT_FAILED) << other;
        EXPECT_FALSE(CloseHandle(handle)) << other;
    }
    EXPECT_TRUE(CloseHandle(mutex));
}

TEST(Sync, AnOwnedMutexCanBeClosed)
{
    const HANDLE mutex = CreateMutexA(nullptr, TRUE, nullptr);
    EXPECT_TRUE(CloseHandle(mutex));
    EXPECT_FALSE(CloseHandle(mutex));
    EXPECT_FALSE(ReleaseMutex(mutex));
    EXPECT_EQ(WaitForSingleObject(mutex, 0), WAIT_FAILED);
}

TEST(Sync, AWaitContinuesAfterTheHandleIsClosed)
{
    const HANDLE mutex = CreateMutexA(nullptr, FALSE, nullptr);
    const HANDLE isOwned = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    const HANDLE mayEnd = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    std::thread owner([=] {
        WaitForSingleObject(mutex, INFINITE);
        SetEvent(isOwned);
        WaitForSingleObject(mayEnd, INFINITE);
    });
    WaitForSingleObject(isOwned, INFINITE);
    DWORD result = WAIT_FAILED;
    WaitingThread waiter([&] { result = WaitForSingleObject(mutex, 60000); });
    EXPECT_TRUE(waiter.ComesToWait());
    CloseHandle(mutex);
    SetEvent(mayEnd);
    waiter.Join();
    owner.join();
    EXPECT_EQ(result, WAIT_ABANDONED);
    CloseHandle(isOwned);
    CloseHandle(mayEnd);
}

TEST(Sync, AWaitEndsAfterItsTimeout)
{
    const HANDLE event = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    EXPECT_EQ(WaitForSingleObject(event, 30), WAIT_TIMEOUT);
    EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_TIMEOUT);
    CloseHandle(event);
}

TEST(Sync, AWaitWithATimeWaitsUntilTheEventIsSet)
{
    const HANDLE event = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    DWORD result = WAIT_FAILED;
    WaitingThread waiter([&] { result = WaitForSingleObject(event, 60000); });
    EXPECT_TRUE(waiter.ComesToWait());
    SetEvent(event);
    waiter.Join();
    EXPECT_EQ(result, WAIT_OBJECT_0);
    CloseHandle(event);
}

TEST(Sync, AManualEventStaysSignalledUntilItIsReset)
{
    const HANDLE event = CreateEventA(nullptr, TRUE, TRUE, nullptr);
    EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_OBJECT_0);
    EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_OBJECT_0);
    EXPECT_TRUE(ResetEvent(event));
    EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_TIMEOUT);
    EXPECT_TRUE(SetEvent(event));
    EXPECT_EQ(WaitForSingleObject(event, INFINITE), WAIT_OBJECT_0);
    CloseHandle(event);
}

TEST(Sync, AnAutomaticEventReleasesOneWait)
{
    const HANDLE event = CreateEventA(nullptr, FALSE, TRUE, nullptr);
    EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_OBJECT_0);
    EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_TIMEOUT);
    std::atomic<int> through = 0;
    const auto wait = [&] { through += WaitForSingleObject(event, 200) == WAIT_OBJECT_0 ? 1 : 0; };
    std::thread one(wait);
    std::thread two(wait);
    SetEvent(event);
    one.join();
    two.join();
    EXPECT_EQ(through, 1);
    CloseHandle(event);
}

TEST(Sync, SettingAManualEventWakesAllWaiters)
{
    const HANDLE event = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    std::atomic<int> through = 0;
    const auto wait = [&] {
        through += WaitForSingleObject(event, 60000) == WAIT_OBJECT_0 ? 1 : 0;
    };
    WaitingThread one(wait);
    WaitingThread two(wait);
    EXPECT_TRUE(one.ComesToWait());
    EXPECT_TRUE(two.ComesToWait());
    SetEvent(event);
    one.Join();
    two.Join();
    EXPECT_EQ(through, 2);
    CloseHandle(event);
}

TEST(Sync, WrongHandlesAreRefused)
{
    const HANDLE event = CreateEventA(nullptr, TRUE, TRUE, nullptr);
    const HANDLE mutex = CreateMutexA(nullptr, FALSE, nullptr);
    const HDC dc = CreateCompatibleDC(nullptr);
    EXPECT_EQ(WaitForSingleObject(nullptr, 0), WAIT_FAILED);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
    EXPECT_EQ(WaitForSingleObject(dc, 0), WAIT_FAILED);
    EXPECT_FALSE(ReleaseMutex(event));
    EXPECT_FALSE(SetEvent(mutex));
    EXPECT_FALSE(ResetEvent(nullptr));
    EXPECT_FALSE(CloseHandle(dc));
    EXPECT_FALSE(CloseHandle(nullptr));
    EXPECT_TRUE(DeleteDC(dc));
    CloseHandle(event);
    CloseHandle(mutex);
}

TEST(Sync, NamedObjectsAreRefused)
{
    EXPECT_EQ(CreateMutexA(nullptr, FALSE, "name"), nullptr);
    EXPECT_EQ(CreateEventA(nullptr, FALSE, FALSE, "name"), nullptr);
}

}  // namespace
