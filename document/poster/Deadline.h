// SPDX-License-Identifier: MIT
#pragma once

#include "orvane/Options.h"

#include <chrono>
#include <condition_variable>
#include <optional>
#include <string>
#include <thread>

namespace orvane
{

/// Stops a drawing that takes longer than its options allow. While this object lives, a thread of
/// its own waits for the end of the time, if there is a limit.
class Deadline
{
public:
    /// Starts the time.
    /// \param limits maxSeconds, and the host's own cancellation
    explicit Deadline(const PictureOptions& limits);

    /// Stops the drawing when the time is over or the host cancels. No value when neither can
    /// happen.
    const std::optional<Cancellation>& Stop() const { return stop_; }

    /// Throws LimitExceeded when the time is over, and Cancelled when the host has cancelled.
    /// \param share of the picture that is drawn, 0 to 1
    void ThrowIfStopped(const std::string& place, double share) const;

private:
    using Clock = std::chrono::steady_clock;

    bool IsCancelledByHost() const;
    void Wait(const std::stop_token& end);

    std::optional<Cancellation> host_;
    std::optional<Cancellation> stop_;
    double seconds_ = 0;
    Clock::time_point start_ = Clock::now();
    // Made here, because a thread that runs out of memory would end the process.
    std::condition_variable_any ended_;
    std::jthread thread_;  ///< the last member, because it uses the others
};

}  // namespace orvane
