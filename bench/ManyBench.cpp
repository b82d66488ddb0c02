// SPDX-License-Identifier: MIT
// Work whose time must grow in proportion to its size. The tests count its steps; here it is timed.

#include "orvane.h"

#include <benchmark/benchmark.h>

#include <vector>

namespace
{

/// Separates vertices of which eight lie at each place.
void SeparateVertices(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    for (auto _ : state)
    {
        state.PauseTiming();
        TTPolyGlyph glyph;
        glyph.SetContourCount(1);
        glyph.vertices.SetSize(count);
        for (int i = 0; i < count; ++i)
        {
            const int place = i % (count / 8);
            glyph.vertices[i].point.SetPoint(static_cast<short>(place % 251 * 100),
                                             static_cast<short>(place / 251 * 100));
        }
        glyph.contours.GetElement(0)->SetFirstVertexIndex(0);
        glyph.contours.GetElement(0)->SetLastVertexIndex(count - 1);
        glyph.contours.GetElement(0)->CalculateVertexNormals();
        state.ResumeTiming();
        glyph.CorrectDuplicateVerticies();
    }
    state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(SeparateVertices)->Arg(7500)->Arg(60000)->Unit(benchmark::kMillisecond);

void AddChildren(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    for (auto _ : state)
    {
        state.PauseTiming();
        std::vector<DrawingObject*> nodes(static_cast<std::size_t>(count));
        for (DrawingObject*& node : nodes)
        {
            node = new DrawingObject;
        }
        {
            DrawingObject root;
            state.ResumeTiming();
            for (DrawingObject* const node : nodes)
            {
                root.AddChild(node);
            }
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(AddChildren)->Arg(5000)->Arg(40000)->Unit(benchmark::kMillisecond);

/// Ends a tree whose nodes stand on an external undo stack as often as there are nodes.
void EndTreeOnUndoStack(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    for (auto _ : state)
    {
        state.PauseTiming();
        DrawingObjectStack stack;
        DrawingObject root;
        for (int i = 0; i < count; ++i)
        {
            root.AddChild(new DrawingObject);
        }
        root.AttachExternalUndoStack(&stack);
        for (int i = 0; i < count; ++i)
        {
            root.GetHeadChild()->SaveToExternalUndo();
            root.MoveChildToBottom(root.GetHeadChild());
        }
        state.ResumeTiming();
        root.DestroyChildren();
    }
    state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(EndTreeOnUndoStack)->Arg(2500)->Arg(20000)->Unit(benchmark::kMillisecond);

}  // namespace
