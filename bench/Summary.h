// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <vector>

/// The time that a call takes, in seconds.
template <typename Function>
double Seconds(Function function)
{
    const auto start = std::chrono::steady_clock::now();
    function();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// The median. Of an even number of values, the upper of the two in the middle.
double Median(std::vector<double> values);

/// The times of two functions that were run in turns: the library's, and the least that the same
/// work can take.
struct Paired
{
    double ours;            ///< median, in seconds
    double floor;           ///< median, in seconds
    double ratio;           ///< median of ours / floor, each of one turn
    double processorRatio;  ///< the same of the processor's time, of all threads together
};
/// Runs two functions in turns, so that a busy machine slows both alike.
Paired TimeInTurns(int turns, const std::function<void()>& ours,
                   const std::function<void()>& floor);

/// Adds a line to the table that is printed at the end.
void AddSummary(const std::string& what, const std::string& figure);

/// Registers a function that measures and calls AddSummary. Before the table is printed, all
/// registered functions run, or only the one with the name that was given on the command line.
struct SummaryPart
{
    SummaryPart(const char* name, void (*measure)());
};
