// SPDX-License-Identifier: MIT
// Does mixed work in one process for some minutes: makes documents with texts, textures and meshes,
// frames them, saves them, opens what was saved, draws it, opens damaged files, and writes the
// profile. The process's own memory is noted after a warm-up and may not have grown by more than
// 8 MiB at the end.
//
// Picks are left out unless the third argument asks for them. Mesa 22.3 never frees the vertices
// that it gets in selection mode, so that memory grows with each pick, whoever makes it.
// usage: soak MINUTES [SEED [picks]]
#include "orvane/classes.h"
#include "orvane/orvane.h"
#include "platform/Process.h"
#include "tests/support/BmpFile.h"
#include "tests/support/MeshFile.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

namespace
{

constexpr double mebibyte = 1 << 20;
constexpr double maxGrowth = 8;  // MiB
constexpr int reports = 10;
// Each letter and each font that is used for the first time is kept, so memory grows at first. All
// kinds of work have been met many times by then.
constexpr double warmUpShare = 0.2;

double MemoryInMebibytes()
{
    return static_cast<double>(MemoryInUse()) / mebibyte;
}

class Work
{
public:
    Work(fs::path folder, unsigned seed, bool picks)
        : folder_(std::move(folder)), random_(seed), picks_(picks)
    {
        Write("texture.bmp", BlueAndRed().File());
        Write("mesh.3ds", MeshFile(2, Box(), 2));
        application_.SetProfilePath(Path("profile.ini").c_str());
    }

    void DoRound()
    {
        orvane::Document document;
        AddTexts(document);
        if (Number(0, 3) == 0)
        {
            document.AddMesh(Path("mesh.3ds"));
        }
        document.Frame({320, 180});
        if (picks_)
        {
            document.Pick({320, 180}, Number(0, 319), Number(0, 179));
        }
        document.Save(Path("scene.orv"));

        orvane::Document opened = orvane::Document::Open(Path("scene.orv"));
        opened.SaveView("kept");
        opened.Nodes().front().Turn(Number(0, 359), {0, 1, 0});
        orvane::PictureOptions options;
        options.samples = Number(1, 2);
        orvane::WritePicture(opened, Path(Number(0, 1) == 0 ? "picture.png" : "picture.bmp"),
                             options);
        opened.Nodes().front().Remove();

        NamedColor color;
        color.Save(Number(0, 9), "Soak", "Color");
        FailAtDamagedFile();
    }

private:
    std::string Path(const char* name) const { return (folder_ / name).string(); }
    void Write(const char* name, const Bytes& bytes) const
    {
        std::ofstream(Path(name), std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
    }
    int Number(int least, int most)
    {
        return std::uniform_int_distribution<int>(least, most)(random_);
    }

    void AddTexts(orvane::Document& document)
    {
        const int count = Number(1, 3);
        for (int i = 0; i < count; ++i)
        {
            orvane::TextOptions options;
            options.edgeStyle =
                static_cast<orvane::EdgeStyle>(Number(0, orvane::edgeStyleCount - 1));
            if (Number(0, 2) == 0)
            {
                options.texture = orvane::TextureOptions{
                    .file = Path("texture.bmp"),
                    .quality = static_cast<orvane::TextureQuality>(Number(0, 2))};
            }
            std::string text;
            for (int letter = Number(1, 12); letter > 0; --letter)
            {
                text += static_cast<char>(Number('!', '~'));
            }
            document.AddText(text, options);
        }
    }

    /// Work that ends with an error must release what it took, too.
    void FailAtDamagedFile()
    {
        const auto size = static_cast<int>(fs::file_size(Path("scene.orv")));
        fs::resize_file(Path("scene.orv"), static_cast<std::uintmax_t>(Number(0, size - 1)));
        try
        {
            orvane::Document::Open(Path("scene.orv"));
            std::fprintf(stderr, "soak: a scene that was cut off was opened\n");
            std::exit(1);
        }
        catch (const orvane::Error&)
        {}
    }

    fs::path folder_;
    std::mt19937 random_;
    bool picks_;
    CWinApp application_;
};

/// Returns the exit status.
int Run(Work& work, double minutes)
{
    const auto start = Clock::now();
    const auto share = [&] {
        return std::chrono::duration<double>(Clock::now() - start).count() / (60 * minutes);
    };
    double warm = 0;
    long rounds = 0;
    for (int report = 1; report <= reports; ++report)
    {
        while (share() < static_cast<double>(report) / reports)
        {
            work.DoRound();
            ++rounds;
            if (warm == 0 && share() >= warmUpShare)
            {
                warm = MemoryInMebibytes();
            }
        }
        std::printf("%3d %%: %ld rounds, %.1f MiB\n", 100 * report / reports, rounds,
                    MemoryInMebibytes());
        std::fflush(stdout);
    }
    const double growth = MemoryInMebibytes() - warm;
    std::printf("memory grew by %.1f MiB since the warm-up; at most %.0f are allowed\n", growth,
                maxGrowth);
    return growth <= maxGrowth ? 0 : 1;
}

}  // namespace

int main(int count, char** arguments)
{
    const double minutes = count >= 2 ? std::atof(arguments[1]) : 0;
    const bool picks = count == 4 && std::string(arguments[3]) == "picks";
    if (minutes <= 0 || count > 4 || (count == 4 && !picks))
    {
        std::fprintf(stderr, "usage: soak MINUTES [SEED [picks]]\n");
        return 2;
    }
    const unsigned seed = count >= 3 ? static_cast<unsigned>(std::atoi(arguments[2])) : 1;
    const fs::path folder =
        fs::temp_directory_path() / ("orvane-soak-" + std::to_string(std::random_device()()));
    fs::create_directory(folder);
    int status = 1;
    try
    {
        Work work(folder, seed, picks);
        status = Run(work, minutes);
    }
    catch (const std::exception& error)
    {
        std::fprintf(stderr, "soak: %s\n", error.what());
    }
    std::error_code ignored;
    fs::remove_all(folder, ignored);
    return status;
}
