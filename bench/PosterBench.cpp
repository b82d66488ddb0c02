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
#include <cstring>
#include <fstream>
#include <future>
#include <vector>

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

/// A square BMP file of 24 bits, of which a strip at a time is a bitmap.
class PosterFile
{
public:
    explicit PosterFile(int size) : size_(size), rowBytes_((std::uint64_t{24} * size + 31) / 32 * 4)
    {
        file_ = CreateFileA(path_.Path(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                            FILE_ATTRIBUTE_NORMAL, nullptr);
        const std::uint64_t bytes = firstPixel + rowBytes_ * size_;
        mapping_ =
            CreateFileMappingA(file_, nullptr, PAGE_READWRITE, static_cast<DWORD>(bytes >> 32),
                               static_cast<DWORD>(bytes), nullptr);
        if (mapping_ == nullptr)
        {
            Fail("the picture's file cannot be made");
        }
    }
    ~PosterFile()
    {
        EndStrip();
        DeleteDC(dc_);
        CloseHandle(mapping_);
        CloseHandle(file_);
    }
    PosterFile(const PosterFile&) = delete;
    PosterFile& operator=(const PosterFile&) = delete;

    /// The rows from top on, as the bitmap of a device context.
    HDC BeginStrip(int top, int height)
    {
        EndStrip();
        BITMAPINFO info{};
        info.bmiHeader = {sizeof info.bmiHeader, size_, height, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
        const std::uint64_t offset = firstPixel + rowBytes_ * (size_ - top - height);
        strip_ = CreateDIBSection(dc_, &info, DIB_RGB_COLORS, nullptr, mapping_,
                                  static_cast<DWORD>(offset));
        if (strip_ == nullptr)
        {
            Fail("a strip of the picture's file cannot be mapped");
        }
        previous_ = SelectObject(dc_, strip_);
        return dc_;
    }
    void EndStrip()
    {
        if (strip_ != nullptr)
        {
            SelectObject(dc_, previous_);
            DeleteObject(strip_);
            strip_ = nullptr;
        }
    }

private:
    static constexpr std::uint64_t firstPixel = 56;  // a multiple of 4 behind the header

    int size_;
    std::uint64_t rowBytes_;
    ScratchFile path_;
    HANDLE file_;
    HANDLE mapping_;
    HDC dc_ = CreateCompatibleDC(nullptr);
    HBITMAP strip_ = nullptr;
    HGDIOBJ previous_ = nullptr;
};

/// Rows of bands by turns, a good hundred bands each.
void MeasurePoster(int size)
{
    PeakMemory::Reset();
    Showcase showcase(size, size);
    DrawingParameters parameters = SolidDraw();
    GLMemoryDIB band;
    if (!band.Create(showcase.view.GetProjection(), 24))
    {
        Fail(GetLastErrorText().c_str());
    }
    const int width = static_cast<int>(band.GetDIBWidth());
    const int height = static_cast<int>(band.GetDIBHeight());
    const int rows = static_cast<int>(std::ceil(band.GetBandingRows()));
    const int columns = static_cast<int>(std::ceil(band.GetBandingColumns()));
    PosterFile file(size);
    const std::vector<std::uint32_t> calls = RecordStream("showcase");
    std::vector<BYTE> readBack(std::size_t{4} * width * height);

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
                    strip = file.BeginStrip(top, std::min(height, size - top));
                }
                if (!band.CopyBand(strip, 0, -top, row, column))
                {
                    Fail("a band was not copied");
                }
            });
        }
    };
    const auto replayRow = [&](int row) {
        for (int column = 0; column < columns; ++column)
        {
            band.PrepareNextBand(row, column, nullptr);
            Replay(calls);
            glReadPixels(0, 0, width, height, GL_BGRA, GL_UNSIGNED_BYTE, readBack.data());
        }
    };

    constexpr int bandsInTurn = 120;
    const int rowsInTurn = std::max(1, bandsInTurn / columns);
    double ours = 0;
    double floor = 0;
    for (int first = 0; first < rows; first += rowsInTurn)
    {
        const int end = std::min(rows, first + rowsInTurn);
        ours += Seconds([&] {
            for (int row = first; row < end; ++row)
            {
                drawRow(row);
            }
            copied.get();
        });
        floor += Seconds([&] {
            for (int row = first; row < end; ++row)
            {
                replayRow(row);
            }
        });
    }
    file.EndStrip();
    char figure[160];
    std::snprintf(figure, sizeof figure,
                  "%.2f s, %.2f x replayed and read back (%.2f s), %.0f MiB at most", ours,
                  ours / floor, floor, PeakMemory::MiB());
    AddSummary("picture of " + std::to_string(size) + " x " + std::to_string(size) + " in " +
                   std::to_string(rows * columns) + " bands",
               figure);
}

void Measure()
{
    MeasurePoster(4096);
    MeasurePoster(20000);
}
const SummaryPart part("poster", Measure);

}  // namespace
