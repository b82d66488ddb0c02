// SPDX-License-Identifier: MIT
// What a scene costs as it grows: saving and loading it against writing and reading as many bytes,
// and its bounds, a picking pass and a draw, which take the same time for each node however many
// there are.

#include "bench/Canvas.h"
#include "bench/Scenes.h"
#include "bench/ScratchFile.h"
#include "bench/Summary.h"
#include "orvane.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <vector>

namespace
{

constexpr int mostNodes = 10000;

void Require(bool holds, const char* what)
{
    if (!holds)
    {
        std::fprintf(stderr, "bench: %s\n", what);
        std::exit(1);
    }
}

void Save(SceneObject& scene, const char* path)
{
    CFile file(path, CFile::modeCreate | CFile::modeWrite);
    CArchive archive(&file, CArchive::store);
    scene.Serialize(archive);
    archive.Close();
    file.Close();
}

void Load(SceneObject& scene, const char* path)
{
    CFile file(path, CFile::modeRead);
    CArchive archive(&file, CArchive::load);
    scene.Serialize(archive);
    archive.Close();
}

void WriteRaw(const std::vector<char>& bytes, const char* path)
{
    std::FILE* const file = std::fopen(path, "wb");
    Require(file != nullptr && std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size() &&
                std::fclose(file) == 0,
            "the scratch file cannot be written");
}

void ReadRaw(std::vector<char>& bytes, const char* path)
{
    std::FILE* const file = std::fopen(path, "rb");
    Require(file != nullptr && std::fread(bytes.data(), 1, bytes.size(), file) == bytes.size() &&
                std::fclose(file) == 0,
            "the scratch file cannot be read");
}

void AddRatio(const std::string& what, const Paired& times, const char* floor, std::size_t bytes)
{
    char figure[120];
    std::snprintf(figure, sizeof figure, "%.1f ms, %.1f x %s of as many bytes (%.1f ms, %.1f MB)",
                  times.ours * 1e3, times.ratio, floor, times.floor * 1e3,
                  static_cast<double>(bytes) / 1e6);
    AddSummary(what, figure);
}

void MeasureFile()
{
    constexpr int turns = 7;
    SceneObject scene;
    scene.AddChild(MakeTree(mostNodes, mostNodes).release());
    scene.CalculateBounds();
    const ScratchFile file;
    Save(scene, file.Path());
    std::vector<char> bytes(std::filesystem::file_size(file.Path()));

    const Paired save = TimeInTurns(
        turns, [&] { Save(scene, file.Path()); }, [&] { WriteRaw(bytes, file.Path()); });
    AddRatio("save a scene of 10,000 nodes", save, "fwrite", bytes.size());

    Save(scene, file.Path());
    // Destroying a loaded scene is no part of loading it.
    std::vector<std::unique_ptr<SceneObject>> loaded;
    const Paired load = TimeInTurns(
        turns,
        [&] {
            loaded.push_back(std::make_unique<SceneObject>());
            Load(*loaded.back(), file.Path());
        },
        [&] { ReadRaw(bytes, file.Path()); });
    AddRatio("load a scene of 10,000 nodes", load, "fread", bytes.size());
    Require(loaded.back()->GetDescendentCount() == mostNodes, "a loaded scene lacks nodes");
}

/// Microseconds for each node that an operation takes on trees of 10, 100, 1,000 and 10,000 nodes:
/// so many trees at a time that they have 10,000 nodes together, and the processor's caches help
/// all alike.
void AddPerNode(const std::string& what, int children,
                const std::function<void(DrawingObject&)>& operation)
{
    constexpr int turns = 3;
    std::string figure;
    for (int nodes = 10; nodes <= mostNodes; nodes *= 10)
    {
        std::vector<std::unique_ptr<DrawingObject>> trees;
        for (int made = 0; made < mostNodes; made += nodes)
        {
            trees.push_back(MakeTree(nodes, children));
        }
        const auto all = [&] {
            for (const std::unique_ptr<DrawingObject>& tree : trees)
            {
                operation(*tree);
            }
        };
        all();  // warms
        std::vector<double> seconds;
        for (int turn = 0; turn < turns; ++turn)
        {
            seconds.push_back(Seconds(all));
        }
        char part[40];
        std::snprintf(part, sizeof part, "%s%.2f", nodes > 10 ? ", " : "",
                      Median(seconds) * 1e6 / mostNodes);
        figure += part;
    }
    const std::string shape =
        children >= mostNodes ? "all siblings" : std::to_string(children) + " children each";
    AddSummary(what + ", " + shape, figure + " us a node of 10, 100, 1,000, 10,000");
}

void MeasureTrees()
{
    const Canvas canvas;
    glDisable(GL_DEPTH_TEST);  // a repeated draw does not spare what the first one has covered
    std::vector<GLuint> hits(1 << 20);
    glSelectBuffer(static_cast<GLsizei>(hits.size()), hits.data());
    for (const int children : {mostNodes, 2})
    {
        AddPerNode("bounds", children, [](DrawingObject& tree) { tree.CalculateBounds(); });
        AddPerNode("draw", children, [](DrawingObject& tree) {
            DrawingParameters parameters = SolidDraw();
            Require(tree.Draw(&parameters) != 0, "a tree was not drawn");
            glFinish();
        });
        AddPerNode("pick", children, [](DrawingObject& tree) {
            DrawingParameters parameters = SolidDraw();
            parameters.SetSelecting();
            glRenderMode(GL_SELECT);
            glInitNames();
            glPushName(0);
            Require(tree.Draw(&parameters) != 0, "a tree was not drawn");
            Require(glRenderMode(GL_RENDER) > 0, "nothing was picked");
        });
    }
}

void Measure()
{
    MeasureFile();
    MeasureTrees();
}
const SummaryPart part("scene", Measure);

}  // namespace
