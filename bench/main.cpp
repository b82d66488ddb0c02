// SPDX-License-Identifier: MIT
// Runs the detailed benchmarks, then measures and prints a table of figures and ratios.
// --summary-only leaves the detailed benchmarks out; --summary-only=NAME also measures only one
// part of the table.

#include "bench/Summary.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <ctime>

namespace
{

struct Line
{
    std::string what;
    std::string figure;
};

std::vector<Line>& Lines()
{
    static std::vector<Line> lines;
    return lines;
}

struct Part
{
    std::string name;
    void (*measure)();
};

std::vector<Part>& Parts()
{
    static std::vector<Part> parts;
    return parts;
}

}  // namespace

double Median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

Paired TimeInTurns(int turns, const std::function<void()>& ours, const std::function<void()>& floor)
{
    std::vector<double> our;
    std::vector<double> least;
    std::vector<double> ratios;
    std::vector<double> processorRatios;
    const auto time = [](const std::function<void()>& function, std::vector<double>& seconds) {
        const std::clock_t start = std::clock();
        seconds.push_back(Seconds(function));
        return static_cast<double>(std::clock() - start);
    };
    // One untimed run of each fills the caches.
    ours();
    floor();
    for (int i = 0; i < turns; ++i)
    {
        // The two take turns in going first, so that neither always finds the caches filled by the
        // other.
        double ourProcessor = 0;
        double leastProcessor = 0;
        if (i % 2 == 0)
        {
            ourProcessor = time(ours, our);
            leastProcessor = time(floor, least);
        }
        else
        {
            leastProcessor = time(floor, least);
            ourProcessor = time(ours, our);
        }
        ratios.push_back(our.back() / least.back());
        processorRatios.push_back(ourProcessor / std::max(leastProcessor, 1.0));
    }
    return {Median(our), Median(least), Median(ratios), Median(processorRatios)};
}

void AddSummary(const std::string& what, const std::string& figure)
{
    Lines().push_back({what, figure});
}

SummaryPart::SummaryPart(const char* name, void (*measure)())
{
    Parts().push_back({name, measure});
}

int main(int argc, char** argv)
{
    const std::string option = "--summary-only";
    const std::string argument = argc == 2 ? argv[1] : "";
    const bool onePart = argument.rfind(option + "=", 0) == 0;
    if (argument != option && !onePart)
    {
        benchmark::Initialize(&argc, argv);
        if (benchmark::ReportUnrecognizedArguments(argc, argv))
        {
            return 2;
        }
        benchmark::RunSpecifiedBenchmarks();
    }
    for (const Part& each : Parts())
    {
        if (!onePart || argument == option + "=" + each.name)
        {
            each.measure();
        }
    }
    std::size_t width = 0;
    for (const Line& line : Lines())
    {
        width = std::max(width, line.what.size());
    }
    std::printf("\n");
    for (const Line& line : Lines())
    {
        std::printf("%-*s  %s\n", static_cast<int>(width), line.what.c_str(), line.figure.c_str());
    }
    return 0;
}
