// SPDX-License-Identifier: MIT
// Pictures far larger than a window, drawn band by band into a BMP file, against the same bands
// with the scene's OpenGL calls, computed beforehand, made again and only read back.

#include "bench/CallStream.h"
#include "bench/Scenes.h"
#include "bench/ScratchFile.h"
#include "bench/Summary.h"
#include "document/poster/Poster.h"
#include "document/poster/PosterTarget.h"
#include "orvane.h"

#include <spawn.h>
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace
{

[[noreturn]] void Fail(const char* what)
{
    std::fprintf(stderr, "bench: poster: %s\n", what);
    std::exit(1);
}

/// The most memory that a process had resident so far, in MiB.
double PeakMemory(const std::string& process)
{
    std::ifstream status("/proc/" + process + "/status");
    for (std::string line; std::getline(status, line);)
    {
        if (line.rfind("VmHWM:", 0) == 0)
        {
            return std::atof(line.c_str() + 6) / 1024;
        }
    }
    return 0;
}

/// From here on it counts anew in this process.
void ForgetPeakMemory()
{
    std::ofstream("/proc/self/clear_refs") << "5";
}

/// The floor: bands with the recorded calls made again and read back.
class Replayer
{
public:
    explicit Replayer(GLMemoryDIB& band)
        : band_(band),
          width_(static_cast<int>(band.GetDIBWidth())),
          height_(static_cast<int>(band.GetDIBHeight())),
          pixels_(std::size_t{4} * static_cast<std::size_t>(width_) *
                  static_cast<std::size_t>(height_))
    {}

    void Draw()
    {
        for (int row = 0; row < std::ceil(band_.GetBandingRows()); ++row)
        {
            for (int column = 0; column < std::ceil(band_.GetBandingColumns()); ++column)
            {
                band_.PrepareNextBand(row, column, nullptr);
                Replay(calls_);
                glReadPixels(0, 0, width_, height_, GL_BGRA, GL_UNSIGNED_BYTE, pixels_.data());
            }
        }
    }

private:
    GLMemoryDIB& band_;
    int width_;
    int height_;
    const std::vector<std::uint32_t> calls_ = RecordStream("showcase");
    std::vector<BYTE> pixels_;
};

/// The most memory that the tool had resident, in MiB. What the system reports at its end counts
/// this process with it, which it was before it became the tool.
double RunTool(std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), ORVANE_TOOL);
    std::vector<char*> pointers;
    for (std::string& argument : arguments)
    {
        pointers.push_back(argument.data());
    }
    pointers.push_back(nullptr);
    pid_t child = 0;
    if (posix_spawn(&child, ORVANE_TOOL, nullptr, nullptr, pointers.data(), environ) != 0)
    {
        Fail("the tool does not start");
    }
    double mebibytes = 0;
    int status = 0;
    while (waitpid(child, &status, WNOHANG) == 0)
    {
        mebibytes = std::max(mebibytes, PeakMemory(std::to_string(child)));
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    if (status != 0)
    {
        Fail("the tool failed");
    }
    return mebibytes;
}

orvane::PosterSettings SettingsOf(int size, const char* output)
{
    orvane::PosterSettings settings;
    settings.output = output;
    settings.size = {size, size};
    settings.options.samples = 1;
    return settings;
}

/// Draws into a file by the tool's own function, here. How much memory that took at most, in MiB.
double DrawHere(const Showcase& showcase, const orvane::PosterSettings& settings)
{
    ForgetPeakMemory();
    DrawPoster(showcase.view, settings, *MakeTarget(settings));
    return PeakMemory("self");
}

/// The tool, in a fresh process, on the same scene, process start and all.
double DrawThere(const ScratchFile& scene, const orvane::PosterSettings& settings)
{
    const std::string side = std::to_string(settings.Width());
    return RunTool({"render", "--scene", scene.Path(), "--size", side + "x" + side, "--samples",
                    "1", "-o", settings.output});
}

void Save(Showcase& showcase, const ScratchFile& scene)
{
    CFile file(scene.Path(), CFile::modeCreate | CFile::modeWrite);
    CArchive archive(&file, CArchive::store);
    archive.WriteObject(&showcase.scene);
    archive.WriteObject(&showcase.view);
    archive.Close();
}

void MeasurePicture(const std::string& what, Showcase& showcase,
                    const orvane::PosterSettings& settings, int turns,
                    const std::function<double()>& drawPicture)
{
    GLMemoryDIB band;
    if (!band.Create(showcase.view.GetProjection(), 24))
    {
        Fail(GetLastErrorText().c_str());
    }
    Replayer replayer(band);
    double mebibytes = 0;
    const auto draw = [&] {
        std::remove(settings.output.c_str());
        mebibytes = std::max(mebibytes, drawPicture());
    };
    const Paired times = TimeInTurns(turns, draw, [&] { replayer.Draw(); });
    char figure[120];
    std::snprintf(figure, sizeof figure,
                  "%.2f s, %.2f x replayed and read back (%.2f s), %.0f MiB at most", times.ours,
                  times.ratio, times.floor, mebibytes);
    const std::string side = std::to_string(settings.Width());
    AddSummary(what + " of " + side + " x " + side, figure);
}

void Measure()
{
    constexpr int turns = 5;
    for (const int size : {4096, 20000})
    {
        Showcase showcase(size, size);
        const ScratchFile scene;
        Save(showcase, scene);
        const ScratchFile picture(".bmp");
        const orvane::PosterSettings settings = SettingsOf(size, picture.Path());
        MeasurePicture("a .bmp", showcase, settings, turns,
                       [&] { return DrawHere(showcase, settings); });
        MeasurePicture("the tool's .bmp", showcase, settings, turns,
                       [&] { return DrawThere(scene, settings); });
        if (size == 20000)
        {
            const ScratchFile png(".png");
            const orvane::PosterSettings pngSettings = SettingsOf(size, png.Path());
            MeasurePicture("the tool's .png", showcase, pngSettings, 1,
                           [&] { return DrawThere(scene, pngSettings); });
        }
    }
}
const SummaryPart part("poster", Measure);

}  // namespace
