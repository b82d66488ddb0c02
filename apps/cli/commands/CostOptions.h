// SPDX-License-Identifier: MIT
#pragma once

#include "orvane/Options.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <optional>
#include <thread>

namespace CLI
{
class App;
}

namespace orvane
{

class Error;
class LimitExceeded;

/// What a command may cost. Without a value there is no limit.
struct CostLimits
{
    std::optional<double> seconds;           ///< of the whole command
    std::optional<std::uint64_t> mebibytes;  ///< of memory, as MemoryInUse counts it
};

/// Adds --max-seconds and --max-memory to a command.
void AddCostOptions(CLI::App& command, CostLimits& costs);

/// Ends the process, with a message and exit status 1, when the command that is running uses more
/// memory than it may, or does not stop in time by itself. It begins with this object and ends with
/// it. Make the object before output files, so that these are removed before it ends.
class CostWatch
{
public:
    explicit CostWatch(const CostLimits& limits);
    ~CostWatch();
    CostWatch(const CostWatch&) = delete;
    CostWatch& operator=(const CostWatch&) = delete;

    /// Gives a picture that is drawn from now on the time that is left.
    void LimitTime(PictureOptions& picture) const;
    /// The error that such a picture threw, with the name of the tool's option.
    Error Explain(const LimitExceeded& error) const;

private:
    using Clock = std::chrono::steady_clock;

    double SecondsPassed() const;
    void Watch(const std::stop_token& end);
    /// Ends the process when it costs more than the limits allow.
    void CheckCosts();
    void EndProcessWith(const std::string& problem);

    CostLimits limits_;
    Clock::time_point start_ = Clock::now();
    std::atomic<bool> hasEnded_ = false;  ///< the command, by itself or through EndProcessWith
    std::jthread thread_;                 ///< the last member, because it uses the others
};

}  // namespace orvane
