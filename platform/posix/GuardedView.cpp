// SPDX-License-Identifier: MIT
#include "platform/posix/GuardedView.h"

#include <signal.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <limits>
#include <mutex>

namespace posix
{

/// The addresses of a view, where the signal handler finds them without a lock. Ranges are linked
/// and never deleted. The range of a view that has ended is used for a later view.
struct GuardedRange
{
    std::atomic<std::uintptr_t> begin;
    std::atomic<std::uintptr_t> end;
    std::atomic<bool> isUsed;
    GuardedRange* next;
};

namespace
{

/// No address is at or above this one, so that a range that begins here is empty.
constexpr std::uintptr_t nowhere = std::numeric_limits<std::uintptr_t>::max();

std::atomic<GuardedRange*> firstRange = nullptr;
// Set before the handler is installed, and not changed afterwards.
std::uintptr_t pageBytes = 0;
struct sigaction earlierAction;

/// Puts zeros where a view can no longer be read, from the page of the address to the view's end.
/// Returns whether the address lies in a view.
bool PutZeros(void* place)
{
    const auto address = reinterpret_cast<std::uintptr_t>(place);
    for (const GuardedRange* range = firstRange.load(); range != nullptr; range = range->next)
    {
        const std::uintptr_t end = range->end.load();
        if (range->begin.load() <= address && address < end)
        {
            const std::uintptr_t beforePlace = address % pageBytes;
            const int savedErrno = errno;
            void* const zeros =
                mmap(static_cast<char*>(place) - beforePlace, end - address + beforePlace,
                     PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1, 0);
            errno = savedErrno;
            return zeros != MAP_FAILED;
        }
    }
    return false;
}

void OnBusError(int signal, siginfo_t* info, void* context)
{
    if (info->si_code == BUS_ADRERR && PutZeros(info->si_addr))
    {
        return;
    }
    if ((earlierAction.sa_flags & SA_SIGINFO) != 0)
    {
        earlierAction.sa_sigaction(signal, info, context);
    }
    else if (earlierAction.sa_handler != SIG_DFL && earlierAction.sa_handler != SIG_IGN)
    {
        earlierAction.sa_handler(signal);
    }
    else
    {
        // An access is repeated when the handler returns, and ends the process then. A signal that
        // was sent is sent again.
        const bool isSent = info->si_code <= 0;
        struct sigaction standard = {};
        standard.sa_handler = isSent ? earlierAction.sa_handler : SIG_DFL;
        sigaction(signal, &standard, nullptr);
        if (isSent)
        {
            raise(signal);
        }
    }
}

void InstallHandler()
{
    static std::once_flag once;
    std::call_once(once, [] {
        pageBytes = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
        struct sigaction action = {};
        action.sa_sigaction = OnBusError;
        action.sa_flags = SA_SIGINFO | SA_ONSTACK | SA_NODEFER;
        sigemptyset(&action.sa_mask);
        sigaction(SIGBUS, nullptr, &earlierAction);
        sigaction(SIGBUS, &action, nullptr);
    });
}

/// A range that no view uses, empty at first.
GuardedRange* TakeRange()
{
    GuardedRange* range = firstRange.load();
    while (range != nullptr && range->isUsed.exchange(true))
    {
        range = range->next;
    }
    if (range == nullptr)
    {
        range = new GuardedRange{nowhere, 0, true, firstRange.load()};
        while (!firstRange.compare_exchange_weak(range->next, range))
        {}
    }
    return range;
}

}  // namespace

GuardedView::GuardedView() : start_(MAP_FAILED), range_(TakeRange()) {}

GuardedView::~GuardedView()
{
    range_->begin.store(nowhere);
    if (start_ != MAP_FAILED)
    {
        munmap(start_, length_);
    }
    range_->isUsed.store(false);
}

std::shared_ptr<GuardedView> GuardedView::Map(int descriptor, off_t offset, std::size_t length)
{
    InstallHandler();
    // The view exists before the memory is mapped, so that nothing is lost when there is too little
    // memory for it.
    std::shared_ptr<GuardedView> view(new GuardedView);
    view->start_ = mmap(nullptr, length, PROT_READ, MAP_PRIVATE, descriptor, offset);
    if (view->start_ == MAP_FAILED)
    {
        return nullptr;
    }
    view->length_ = (length + pageBytes - 1) / pageBytes * pageBytes;
    const auto begin = reinterpret_cast<std::uintptr_t>(view->start_);
    view->range_->end.store(begin + view->length_);
    view->range_->begin.store(begin);
    // A private mapping would not do for the first page: it loses its copy when the file is cut
    // off.
    if (mmap(view->start_, pageBytes, PROT_READ | PROT_WRITE,
             MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1, 0) == MAP_FAILED ||
        pread(descriptor, view->start_, std::min<std::size_t>(length, pageBytes), offset) < 0)
    {
        return nullptr;
    }
    mprotect(view->start_, pageBytes, PROT_READ);
    return view;
}

}  // namespace posix
