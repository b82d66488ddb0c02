// SPDX-License-Identifier: MIT
// What an unchanged text costs when it is drawn again from a mesh cache, and a text of which one
// letter has changed: against other libraries that keep something between draws. And what it costs
// to build a mesh.

#include "bench/Canvas.h"
#include "bench/OtherTexts.h"
#include "bench/Scenes.h"
#include "bench/Summary.h"
#include "orvane.h"
#include "orvane/classes.h"
#include "solids/MeshBuilder.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <optional>

namespace
{

constexpr const char* fontFile = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

struct Size
{
    int width;
    int height;
};

std::string Characters(const OrvFontString& text)
{
    std::string characters = text.GetTextString()->Text();
    std::replace(characters.begin(), characters.end(), '\r', '\n');
    return characters;
}

/// A text that fills the picture, as a job for other libraries.
TextJob JobOf(const OrvFontString& text, const Size& size)
{
    const DVector dimensions = text.GetScaledDimensions();
    const double aspect = static_cast<double>(size.width) / size.height;
    const double half = std::max(dimensions.y / 2, dimensions.x / 2 / aspect) * 1.1;
    return {fontFile, Characters(text), text.ShouldBevelEdges() != 0,
            TextView{dimensions.x / 2, 0, half / 0.45, aspect}};
}

/// The job for a library whose first baseline lies at 0, not in the middle of the text.
TextJob FromFirstBaseline(TextJob job, const OrvFontString& text)
{
    job.view.centerY = text.GetFirstLineOffset() - text.GetScaledDimensions().y / 2;
    return job;
}

/// The ratios of two functions that are run in turns: of the time and of the processor's time.
void AddComparison(const std::string& what, const std::string& other, const Paired& times)
{
    char figure[160];
    std::snprintf(figure, sizeof figure, "%.3f ms, %.2f x %s (%.3f ms); processor time %.2f x",
                  times.ours * 1e3, times.ratio, other.c_str(), times.floor * 1e3,
                  times.processorRatio);
    AddSummary(what, figure);
}

/// Whether the picture has a pixel that is not black. A picture of a few pixels may have none: its
/// letters are smaller than a pixel.
bool IsSomethingSeen()
{
    GLint viewport[4];
    glGetIntegerv(GL_VIEWPORT, viewport);
    constexpr GLint few = 100;
    if (viewport[2] < few)
    {
        return true;
    }
    std::vector<GLuint> pixels(static_cast<std::size_t>(viewport[2]) *
                               static_cast<std::size_t>(viewport[3]));
    glReadPixels(0, 0, viewport[2], viewport[3], GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
    constexpr GLuint colors = 0x00FFFFFF;
    return std::any_of(pixels.begin(), pixels.end(),
                       [](GLuint pixel) { return (pixel & colors) != 0; });
}

/// Adds a line with the fastest of the other libraries.
/// \param ours draws; \p theirs draws with a library's text
void CompareWithFastest(const std::string& what, int turns, const TextJob& job,
                        const std::function<void()>& ours,
                        const std::function<void(OtherText&)>& theirs)
{
    std::optional<Paired> best;
    std::string bestName;
    for (const OtherLibrary& library : OtherLibraries())
    {
        const std::unique_ptr<OtherText> other = library.make(job);
        if (other == nullptr)
        {
            continue;
        }
        for (const auto& draw : {ours, std::function<void()>([&] { theirs(*other); })})
        {
            Frame(draw);
            if (!IsSomethingSeen())
            {
                std::fprintf(stderr, "bench: %s: a text is not seen beside %s\n", what.c_str(),
                             library.name);
                std::exit(1);
            }
        }
        const Paired times = TimeInTurns(
            turns, [&] { Frame(ours); }, [&] { Frame([&] { theirs(*other); }); });
        if (std::getenv("ORVANE_BENCH_ALL") != nullptr)
        {
            AddComparison(what + ", all", library.name, times);
        }
        if (!best || times.ratio > best->ratio)
        {
            best = times;
            bestName = library.name;
        }
    }
    if (best)
    {
        AddComparison(what, bestName, *best);
    }
    for (const std::string& missing : MissingLibraries())
    {
        AddSummary(what, "left out: " + missing + " is not installed");
    }
}

std::string NameOf(int characters, orvane::EdgeStyle style, const Size& size)
{
    return std::to_string(characters) + " characters, " +
           (style == orvane::EdgeStyle::Square ? "square, " : "bevel, ") +
           std::to_string(size.width) + " x " + std::to_string(size.height);
}

constexpr Size sizes[] = {{16, 16}, {1280, 720}};

void MeasureRedraw()
{
    for (const Size& size : sizes)
    {
        for (const int characters : {40, 1000, 10000})
        {
            for (const auto style : {orvane::EdgeStyle::Square, orvane::EdgeStyle::Bevel})
            {
                const Canvas canvas(size.width, size.height);
                orvane::MeshCache cache;
                const auto text = MakeText(characters, style);
                const TextJob job = JobOf(*text, size);
                DrawingParameters parameters = SolidDraw();
                parameters.SetSolidDrawer(&cache);
                const int turns = characters > 1000 ? 9 : characters > 40 ? 31 : 201;
                CompareWithFastest(
                    "redraw " + NameOf(characters, style, size), turns,
                    FromFirstBaseline(job, *text),
                    [&] {
                        job.view.Apply();
                        text->Draw(&parameters);
                    },
                    [](OtherText& other) { other.Draw(); });
            }
        }
    }
}

void MeasureChange()
{
    constexpr int characters = 200;
    for (const auto style : {orvane::EdgeStyle::Square, orvane::EdgeStyle::Bevel})
    {
        const Size& size = sizes[0];
        const Canvas canvas(size.width, size.height);
        orvane::MeshCache cache;
        const auto text = MakeText(characters, style);
        const TextJob job = JobOf(*text, size);
        DrawingParameters parameters = SolidDraw();
        parameters.SetSolidDrawer(&cache);
        const std::string usual = Characters(*text);
        // Each draw has another letter at another place.
        const auto changed = [&usual](int draw) {
            std::string characters = usual;
            const auto place = static_cast<std::size_t>(draw) * 7 % characters.size();
            if (characters[place] != '\n')
            {
                characters[place] = static_cast<char>('a' + draw % 26);
            }
            return characters;
        };
        int ourDraws = 0;
        int theirDraws = 0;
        CompareWithFastest(
            "change a letter and redraw " + NameOf(characters, style, size), 101,
            FromFirstBaseline(job, *text),
            [&] {
                std::string characters = changed(++ourDraws);
                std::replace(characters.begin(), characters.end(), '\n', '\r');
                text->SetTextString(characters.c_str());
                job.view.Apply();
                text->Draw(&parameters);
            },
            [&](OtherText& other) {
                other.SetText(changed(++theirDraws));
                other.Draw();
            });
    }
}

void MeasureMesh()
{
    const auto text = MakeText(40, orvane::EdgeStyle::Bevel);
    std::vector<double> seconds;
    std::vector<double> processor;
    for (int turn = 0; turn < 201; ++turn)
    {
        const std::clock_t start = std::clock();
        seconds.push_back(Seconds([&] { orvane::BuildMesh(*text); }));
        processor.push_back(static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
    }
    char figure[100];
    std::snprintf(figure, sizeof figure, "%.3f ms, its glyphs built before; processor time %.3f ms",
                  Median(seconds) * 1e3, Median(processor) * 1e3);
    AddSummary("mesh of 40 characters, bevel", figure);
}

const SummaryPart redraw("redraw", MeasureRedraw);
const SummaryPart change("change", MeasureChange);
const SummaryPart mesh("mesh", MeasureMesh);

}  // namespace
