// SPDX-License-Identifier: MIT
// Times the tool's export of a text from the start of its process, less the time of a start that
// does nothing else.

#include "bench/Command.h"
#include "bench/ScratchFile.h"
#include "bench/Summary.h"

#include <sys/resource.h>

#include <cstdio>
#include <string>
#include <vector>

namespace
{

struct Times
{
    double wall;       ///< seconds
    double processor;  ///< seconds, in the program and in the system
};

/// The processor time of all processes that this one has waited for, in seconds.
double ProcessorTimeOfChildren()
{
    rusage usage = {};
    getrusage(RUSAGE_CHILDREN, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

Times TimesOf(const std::string& command)
{
    const double before = ProcessorTimeOfChildren();
    const double wall = Seconds([&command] { RunCommand(command); });
    return {wall, ProcessorTimeOfChildren() - before};
}

void Measure()
{
    const ScratchFile file(".glb");
    const std::string start = std::string(ORVANE_TOOL) + " --version > /dev/null";
    const std::string letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmn";
    const std::string exported =
        std::string(ORVANE_TOOL) + " export " + letters + " --style bevel --output " + file.Path();
    RunCommand(exported);  // fills the caches of the system
    std::vector<double> wall;
    std::vector<double> processor;
    std::vector<double> startWall;
    std::vector<double> startProcessor;
    for (int turn = 0; turn < 41; ++turn)
    {
        const Times empty = TimesOf(start);
        const Times whole = TimesOf(exported);
        wall.push_back(whole.wall - empty.wall);
        processor.push_back(whole.processor - empty.processor);
        startWall.push_back(empty.wall);
        startProcessor.push_back(empty.processor);
    }
    char figure[120];
    std::snprintf(figure, sizeof figure,
                  "%.1f ms more than --version (%.1f ms); processor time %.1f ms more (%.1f ms)",
                  Median(wall) * 1e3, Median(startWall) * 1e3, Median(processor) * 1e3,
                  Median(startProcessor) * 1e3);
    AddSummary("the tool's .glb of 40 characters, bevel", figure);
}
const SummaryPart part("export", Measure);

}  // namespace
