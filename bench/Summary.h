// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <vector>

/// Seconds that a call takes.
template <typename Function>
double Seconds(Function function)
{
    const auto start = std::chrono::steady_clock::now();
    function();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// The middle value; of an even number, the upper of the two.
double Median(std::vector<double> values);

/// Times two things turn by turn, so that both see the same machine: the medians, in seconds, and
/// the median of the ratios turn by turn.
struct Paired
{
    double ours;
    double floor;
    double ratio;
};
Paired TimeInTurns(int turns, const std::function<void()>& ours,
                   const std::function<void()>& floor);

/// A line of the table that is printed at the end.
void AddSummary(const std::string& what, const std::string& figure);

/// A function that measures and calls AddSummary; all run, in order of registration, before the
/// table is printed, or the named one alone.
struct SummaryPart
{
    SummaryPart(const char* name, void (*measure)());
};
