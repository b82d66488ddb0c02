// SPDX-License-Identifier: MIT
// Times the drawing of texts against replaying the same OpenGL calls from memory. Replaying is the
// least time that any program needs that makes these calls.

#include "bench/CallStream.h"
#include "bench/Canvas.h"
#include "bench/Scenes.h"
#include "bench/Summary.h"
#include "orvane.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace
{

constexpr const char* styles[] = {"square", "bevel", "round"};

void DrawText(benchmark::State& state)
{
    const Canvas canvas;
    const auto text =
        MakeText(static_cast<int>(state.range(0)), static_cast<orvane::EdgeStyle>(state.range(1)));
    DrawingParameters parameters = SolidDraw();
    for (auto _ : state)
    {
        Frame([&] { text->Draw(&parameters); });
    }
    state.SetLabel(styles[state.range(1)]);
}
BENCHMARK(DrawText)->ArgsProduct({{40, 1000}, {0, 1, 2}})->Unit(benchmark::kMillisecond);

void Measure()
{
    const Canvas canvas;
    for (const int characters : {40, 1000})
    {
        for (int style = 0; style < orvane::edgeStyleCount; ++style)
        {
            const auto text = MakeText(characters, static_cast<orvane::EdgeStyle>(style));
            const std::vector<std::uint32_t> words =
                RecordStream(std::to_string(characters) + " " + std::to_string(style));
            DrawingParameters parameters = SolidDraw();
            const Paired times = TimeInTurns(
                characters > 100 ? 41 : 301, [&] { Frame([&] { text->Draw(&parameters); }); },
                [&] { Frame([&] { Replay(words); }); });
            char figure[120];
            std::snprintf(figure, sizeof figure, "%.3f ms, %.2f x the replayed calls (%.3f ms)",
                          times.ours * 1e3, times.ratio, times.floor * 1e3);
            AddSummary("draw " + std::to_string(characters) + " characters, " + styles[style],
                       figure);
        }
    }
}
const SummaryPart part("draw", Measure);

}  // namespace
