// SPDX-License-Identifier: MIT
#include "document/poster/Deadline.h"

#include "orvane/Error.h"

#include <algorithm>
#include <mutex>
#include <sstream>

namespace orvane
{

Deadline::Deadline(const PictureOptions& limits) : host_(limits.cancellation), stop_(host_)
{
    if (limits.maxSeconds)
    {
        seconds_ = *limits.maxSeconds;
        stop_.emplace();
        thread_ = std::jthread([this](const std::stop_token& end) { Wait(end); });
    }
}

bool Deadline::IsCancelledByHost() const
{
    return host_ && host_->IsCancelled();
}

// A drawing tests one event, so the host's cancellation is passed on to it.
void Deadline::Wait(const std::stop_token& end)
{
    constexpr std::chrono::duration<double> betweenLooks(0.02);  // at the host's cancellation
    std::mutex mutex;
    std::unique_lock lock(mutex);
    while (!end.stop_requested())
    {
        const std::chrono::duration<double> passed = Clock::now() - start_;
        const std::chrono::duration<double> left(seconds_ - passed.count());
        if (left.count() <= 0 || IsCancelledByHost())
        {
            stop_->Cancel();
            return;
        }
        ended_.wait_for(lock, end, std::min(left, betweenLooks), [] { return false; });
    }
}

void Deadline::ThrowIfStopped(const std::string& place, double share) const
{
    if (!stop_ || !stop_->IsCancelled())
    {
        return;
    }
    if (IsCancelledByHost())
    {
        throw Cancelled(place);
    }
    const double passed = std::chrono::duration<double>(Clock::now() - start_).count();
    std::ostringstream found;
    found << static_cast<int>(share * 100) << " % is drawn after " << passed << " seconds";
    std::ostringstream allowed;
    allowed << seconds_;
    throw LimitExceeded(place, "maxSeconds", found.str(), allowed.str());
}

}  // namespace orvane
