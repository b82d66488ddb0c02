// SPDX-License-Identifier: MIT
#include "apps/cli/commands/CostOptions.h"

#include "apps/cli/Terminal.h"
#include "apps/cli/commands/OptionValues.h"
#include "orvane/Error.h"
#include "platform/Limits.h"
#include "platform/Process.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <string>

namespace orvane
{

namespace
{

constexpr std::uint64_t bytesPerMebibyte = std::uint64_t{1} << 20;
constexpr std::chrono::milliseconds betweenLooks(5);

/// Seconds that a drawing may take to stop by itself when its time is over.
constexpr double stoppingTime = 0.5;

}  // namespace

void AddCostOptions(CLI::App& command, CostLimits& costs)
{
    command.add_option("--max-seconds", costs.seconds, "Stops when the whole command takes longer")
        ->option_text("S")
        ->check(NumberBetween(limits::minSeconds, limits::maxSeconds));
    command.add_option("--max-memory", costs.mebibytes, "Stops when more MiB of memory are in use")
        ->option_text("N")
        ->check(IntegerBetween(1, limits::maxMebibytes));
}

CostWatch::CostWatch(const CostLimits& limits) : limits_(limits)
{
    if (limits_.seconds || limits_.mebibytes)
    {
        // Here as well, because a short command may be over before the thread has begun.
        CheckCosts();
        thread_ = std::jthread([this](const std::stop_token& end) { Watch(end); });
    }
}

CostWatch::~CostWatch()
{
    hasEnded_ = true;
}

double CostWatch::SecondsPassed() const
{
    return std::chrono::duration<double>(Clock::now() - start_).count();
}

void CostWatch::LimitTime(PictureOptions& picture) const
{
    if (limits_.seconds)
    {
        picture.maxSeconds = std::max(*limits_.seconds - SecondsPassed(), limits::minSeconds);
    }
}

void CostWatch::Watch(const std::stop_token& end)
{
    std::mutex mutex;
    std::condition_variable_any ended;
    std::unique_lock lock(mutex);
    while (!end.stop_requested())
    {
        CheckCosts();
        ended.wait_for(lock, end, betweenLooks, [] { return false; });
    }
}

void CostWatch::CheckCosts()
{
    const double seconds = SecondsPassed();
    if (limits_.seconds && seconds > *limits_.seconds + stoppingTime)
    {
        EndProcessWith(NumberText(seconds) + " seconds are over, and --max-seconds allows " +
                       NumberText(*limits_.seconds));
    }
    const std::uint64_t mebibytes = limits_.mebibytes ? MemoryInUse() / bytesPerMebibyte : 0;
    if (limits_.mebibytes && mebibytes >= *limits_.mebibytes)
    {
        EndProcessWith(std::to_string(mebibytes) +
                       " MiB of memory are in use, and --max-memory allows " +
                       std::to_string(*limits_.mebibytes));
    }
}

void CostWatch::EndProcessWith(const std::string& problem)
{
    if (!hasEnded_.exchange(true))
    {
        Say(problem);
        EndProcess(1);
    }
}

Error CostWatch::Explain(const LimitExceeded& error) const
{
    const bool isTime = error.Limit() == "maxSeconds";
    return Error(error.Place(), error.Found() + ", and " +
                                    (isTime ? "--max-seconds" : "--max-pixels") + " allows " +
                                    (isTime ? NumberText(*limits_.seconds) : error.Expected()));
}

}  // namespace orvane
