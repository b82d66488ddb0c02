// SPDX-License-Identifier: MIT
// Pictures far larger than a window, drawn band by band into a BMP file, against the same bands
// with the scene's OpenGL calls, computed beforehand, made again and only read back.

#include "bench/CallStream.h"
#include "bench/Scenes.h"
#include "bench/ScratchFile.h"
#include "bench/Summary.h"
#include "orvane.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <future>
#include <vector>

#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

namespace
{

[[noreturn]] void Fail(const char* what)
{
    std::fprintf(stderr, "bench: poster: %s\n", what);
    std::exit(1);
}

/// The most memory resident so far, in MiB; counts anew after Reset.
class PeakMemory
{
public:
    static void Reset() { std::ofstream("/proc/self/clear_refs") << "5"; }
    static double MiB()
    {
        std::ifstream status("/proc/self/status");
        for (std::string line; std::getline(status, line);)
        {
            if (line.rfind("VmHWM:", 0) == 0)
            {
                return std::atof(line.c_str() + 6) / 1024;
            }
        }
        return 0;
    }
};

/// A square BMP file of 24 bits, written a strip at a time: of its rows only those are in memory.
class PosterFile
{
public:
    explicit PosterFile(int size)
        : size_(size),
          rowBytes_((std::uint64_t{24} * static_cast<std::uint64_t>(size) + 31) / 32 * 4)
    {
        // A mapping of the whole length takes the space on the disk.
        file_ = CreateFileA(path_.Path(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                            FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
        const std::uint64_t bytes = firstPixel + rowBytes_ * static_cast<std::uint64_t>(size_);
        const HANDLE mapping =
            CreateFileMappingA(file_, nullptr, PAGE_READWRITE, static_cast<DWORD>(bytes >> 32),
                               static_cast<DWORD>(bytes), nullptr);
        if (mapping == nullptr)
        {
            Fail("the picture's file cannot be made");
        }
        CloseHandle(mapping);
    }
    ~PosterFile()
    {
        Release();
        DeleteDC(dc_);
        CloseHandle(file_);
    }
    PosterFile(const PosterFile&) = delete;
    PosterFile& operator=(const PosterFile&) = delete;

    /// So many rows as the bitmap of a device context.
    HDC BeginStrip(int height)
    {
        if (height != height_)
        {
            Release();
            BITMAPINFO info{};
            info.bmiHeader = {sizeof info.bmiHeader, size_, height, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
            strip_ = CreateDIBSection(dc_, &info, DIB_RGB_COLORS, &bits_, nullptr, 0);
            if (strip_ == nullptr)
            {
                Fail("there is no memory for a strip of the picture");
            }
            previous_ = SelectObject(dc_, strip_);
            height_ = height;
        }
        return dc_;
    }
    /// Writes them as the rows from top on.
    void EndStrip(int top)
    {
        const std::uint64_t offset =
            firstPixel + rowBytes_ * static_cast<std::uint64_t>(size_ - top - height_);
        OVERLAPPED place{};
        place.Offset = static_cast<DWORD>(offset);
        place.OffsetHigh = static_cast<DWORD>(offset >> 32);
        DWORD written = 0;
        if (!WriteFile(file_, bits_,
                       static_cast<DWORD>(rowBytes_ * static_cast<std::uint64_t>(height_)),
                       &written, &place))
        {
            Fail("the picture's file cannot be written");
        }
    }

private:
    static constexpr std::uint64_t firstPixel = sizeof(BITMAPFILEHEADER) + sizeof(BITMAPINFOHEADER);

    void Release()
    {
        if (strip_ != nullptr)
        {
            SelectObject(dc_, previous_);
            DeleteObject(strip_);
        }
    }

    int size_;
    std::uint64_t rowBytes_;
    ScratchFile path_;
    HANDLE file_ = nullptr;
    HDC dc_ = CreateCompatibleDC(nullptr);
    HBITMAP strip_ = nullptr;
    HGDIOBJ previous_ = nullptr;
    void* bits_ = nullptr;
    int height_ = 0;
};

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

    void DrawRow(int row)
    {
        for (int column = 0; column < std::ceil(band_.GetBandingColumns()); ++column)
        {
            band_.PrepareNextBand(row, column, nullptr);
            Replay(calls_);
            glReadPixels(0, 0, width_, height_, GL_BGRA, GL_UNSIGNED_BYTE, pixels_.data());
        }
    }

private:
    GLMemoryDIB& band_;
    int width_;
    int height_;
    const std::vector<std::uint32_t> calls_ = RecordStream("showcase");
    std::vector<BYTE> pixels_;
};

void CreateBands(GLMemoryDIB& band, const Showcase& showcase)
{
    if (!band.Create(showcase.view.GetProjection(), 24))
    {
        Fail(GetLastErrorText().c_str());
    }
}

void AddPoster(const std::string& what, int size, double seconds, double floor, double mebibytes)
{
    char figure[120];
    std::snprintf(figure, sizeof figure,
                  "%.2f s, %.2f x replayed and read back (%.2f s), %.0f MiB at most", seconds,
                  seconds / floor, floor, mebibytes);
    AddSummary(what + " of " + std::to_string(size) + " x " + std::to_string(size), figure);
}

/// By turns of a good hundred bands.
void MeasureLibrary(int size)
{
    PeakMemory::Reset();
    Showcase showcase(size, size);
    DrawingParameters parameters = SolidDraw();
    GLMemoryDIB band;
    CreateBands(band, showcase);
    const int height = static_cast<int>(band.GetDIBHeight());
    const int rows = static_cast<int>(std::ceil(band.GetBandingRows()));
    const int columns = static_cast<int>(std::ceil(band.GetBandingColumns()));
    PosterFile file(size);
    Replayer replayer(band);

    // A band is copied while the next one is drawn: once it is in its bits, by a thread that has no
    // context.
    std::future<void> copied;
    HDC strip = nullptr;
    const auto drawRow = [&](int row) {
        const int top = row * height;
        for (int column = 0; column < columns; ++column)
        {
            band.PrepareNextBand(row, column, &parameters);
            if (!showcase.view.Draw(&parameters))
            {
                Fail("a band was not drawn");
            }
            if (copied.valid())
            {
                copied.get();
            }
            GdiFlush();
            copied = std::async(std::launch::async, [&, top, row, column] {
                if (column == 0)
                {
                    strip = file.BeginStrip(std::min(height, size - top));
                }
                if (!band.CopyBand(strip, 0, -top, row, column))
                {
                    Fail("a band was not copied");
                }
                if (column == columns - 1)
                {
                    file.EndStrip(top);
                }
            });
        }
    };
    const auto drawRows = [&](int first, int end) {
        for (int row = first; row < end; ++row)
        {
            drawRow(row);
        }
        copied.get();
    };
    const auto replayRows = [&](int first, int end) {
        for (int row = first; row < end; ++row)
        {
            replayer.DrawRow(row);
        }
    };

    drawRows(0, 1);  // warm both
    replayRows(0, 1);
    constexpr int bandsInTurn = 120;
    const int rowsInTurn = std::max(1, bandsInTurn / columns);
    double ours = 0;
    double floor = 0;
    for (int first = 0; first < rows; first += rowsInTurn)
    {
        const int end = std::min(rows, first + rowsInTurn);
        ours += Seconds([&] { drawRows(first, end); });
        floor += Seconds([&] { replayRows(first, end); });
    }
    AddPoster("picture in " + std::to_string(rows * columns) + " bands", size, ours, floor,
              PeakMemory::MiB());
}

/// The most memory that a program had resident, in MiB.
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
    int status = 1;
    rusage usage{};
    if (posix_spawn(&child, ORVANE_TOOL, nullptr, nullptr, pointers.data(), environ) != 0 ||
        wait4(child, &status, 0, &usage) != child || status != 0)
    {
        Fail("the tool failed");
    }
    return static_cast<double>(usage.ru_maxrss) / 1024;
}

/// The tool, in a fresh process, on the same scene, process start and all.
void MeasureTool(int size, const char* ending)
{
    Showcase showcase(size, size);
    const ScratchFile scene;
    {
        CFile file(scene.Path(), CFile::modeCreate | CFile::modeWrite);
        CArchive archive(&file, CArchive::store);
        archive.WriteObject(&showcase.scene);
        archive.WriteObject(&showcase.view);
        archive.Close();
    }
    const ScratchFile picture(ending);
    const std::string side = std::to_string(size);
    double mebibytes = 0;
    const double seconds = Seconds([&] {
        mebibytes = RunTool({"render", "--scene", scene.Path(), "--size", side + "x" + side,
                             "--samples", "1", "-o", picture.Path()});
    });

    GLMemoryDIB band;
    CreateBands(band, showcase);
    Replayer replayer(band);
    replayer.DrawRow(0);
    const double floor = Seconds([&] {
        for (int row = 0; row < std::ceil(band.GetBandingRows()); ++row)
        {
            replayer.DrawRow(row);
        }
    });
    AddPoster(std::string("the tool's ") + ending, size, seconds, floor, mebibytes);
}

void Measure()
{
    for (const int size : {4096, 20000})
    {
        MeasureLibrary(size);
        MeasureTool(size, ".bmp");
    }
    MeasureTool(20000, ".png");
}
const SummaryPart part("poster", Measure);

}  // namespace
