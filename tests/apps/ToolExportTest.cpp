// SPDX-License-Identifier: MIT
// The command export.

#include "tests/support/Chunks.h"
#include "tests/support/Json.h"
#include "tests/support/ToolRun.h"

#include <gtest/gtest.h>

#include <cstring>

namespace
{

std::uint32_t TrianglesOfStl(const std::string& file)
{
    std::uint32_t triangles = 0;
    EXPECT_GE(file.size(), 84u);
    std::memcpy(&triangles, file.data() + 80, 4);
    EXPECT_EQ(file.size(), 84 + 50 * std::size_t{triangles});
    return triangles;
}

/// A 3D Studio file with one triangle, which encloses nothing.
Bytes OpenMesh()
{
    const RecordBytes vertices = VertexChunk({0, 0, 0, 10, 0, 0, 10, 10, 0});
    return FileOf(
        {ObjectChunk("leaf", {ChunkOf(0x4100, {vertices, FaceChunk({0, 1, 2, 7}, {})})})});
}

}  // namespace

TEST(ToolExport, EveryFormatIsWritten)
{
    ToolFolder folder;
    for (const char* const name : {"a.glb", "a.gltf", "a.stl", "a.3mf", "a.obj", "a.ply"})
    {
        const ToolResult result = folder.Run({"export", "I", "-o", name});
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(result.out + result.err, "");
        EXPECT_TRUE(folder.Has(name));
    }
    EXPECT_EQ(folder.Names().size(), 7u);  // with a.mtl
    EXPECT_EQ(folder.Read("a.glb").substr(0, 4), "glTF");
    EXPECT_GT(TrianglesOfStl(folder.Read("a.stl")), 12u);
}

TEST(ToolExport, StandardOutputGetsTheFormatThatIsNamed)
{
    ToolFolder folder;
    const ToolResult result = folder.Run({"export", "I", "-o", "-", "--format", "stl"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_GT(TrianglesOfStl(result.out), 12u);
    const ToolResult obj = folder.Run({"export", "I", "-o", "-", "--format", "obj"});
    EXPECT_EQ(obj.out.find("mtllib"), std::string::npos);
    EXPECT_NE(obj.out.find("usemtl Face\n"), std::string::npos);
    EXPECT_TRUE(folder.Names().empty());
}

TEST(ToolExport, JsonTellsTheMeasuresOfEveryText)
{
    ToolFolder folder;
    // An I of DejaVu Sans Bold is a rectangle: 1493 units high and 385 wide, of 2048 an em.
    const std::vector<std::string> look = {"--style", "square", "--depth",
                                           "0.5",     "--font", "DejaVu Sans Bold"};
    std::vector<std::string> arguments = {"export", "I",  "-o",   "i.stl", "--json",
                                          "--unit", "mm", "--em", "10"};
    arguments.insert(arguments.end(), look.begin(), look.end());
    const ToolResult result = folder.Run(arguments);
    ASSERT_EQ(result.status, 0) << result.err;
    const Json json = Json::parse(result.out);
    EXPECT_EQ(KeysOf(json),
              (std::vector<std::string>{"file", "format", "unit", "triangles", "vertices", "bounds",
                                        "closed", "volume", "area", "parts"}));
    EXPECT_EQ(json["file"], "i.stl");
    EXPECT_EQ(json["format"], "stl");
    EXPECT_EQ(json["unit"], "mm");
    EXPECT_EQ(json["triangles"], 12);
    EXPECT_EQ(json["closed"], true);
    const double height = 10 * 1493 / 2048.0;
    const double width = 10 * 385 / 2048.0;
    const double depth = 5;
    EXPECT_NEAR(json["volume"].get<double>(), height * width * depth, 1e-3);
    EXPECT_NEAR(json["area"].get<double>(), 2 * (height * width + height * depth + width * depth),
                1e-3);
    const Json& bounds = json["bounds"];
    EXPECT_NEAR(bounds["maximum"][1].get<double>() - bounds["minimum"][1].get<double>(), height,
                1e-5);
    ASSERT_EQ(json["parts"].size(), 1u);
    EXPECT_EQ(json["parts"][0]["name"], "I");
    EXPECT_EQ(json["parts"][0]["triangles"], 12);
    EXPECT_EQ(TrianglesOfStl(folder.Read("i.stl")), 12u);
}

TEST(ToolExport, UpAlongZLetsLettersStand)
{
    ToolFolder folder;
    const std::vector<std::string> arguments = {"export", "I",    "-o", "i.stl",
                                                "--json", "--up", "z"};
    const Json bounds = Json::parse(folder.Run(arguments).out)["bounds"];
    // The height of about 0.73 em points along z, and the front at 0 looks to -y.
    EXPECT_GT(bounds["maximum"][2].get<double>() - bounds["minimum"][2].get<double>(), 0.7);
    EXPECT_NEAR(bounds["minimum"][1].get<double>(), 0, 1e-6);
    EXPECT_NEAR(bounds["maximum"][1].get<double>(), 0.3, 1e-6);
}

TEST(ToolExport, ASavedSceneIsExportedLikeItsText)
{
    ToolFolder folder;
    ASSERT_EQ(folder.Run({"render", "Orvane", "--style", "round", "--save", "s.orv"}).status, 0);
    ASSERT_EQ(folder.Run({"export", "--scene", "s.orv", "-o", "scene.glb"}).status, 0);
    ASSERT_EQ(folder.Run({"export", "Orvane", "--style", "round", "-o", "text.glb"}).status, 0);
    // The names of the scenes differ, so the last parts are compared.
    const std::string scene = folder.Read("scene.glb");
    const std::string text = folder.Read("text.glb");
    ASSERT_GT(text.size(), 50'000u);
    EXPECT_EQ(scene.substr(scene.size() - 50'000) == text.substr(text.size() - 50'000), true);
}

TEST(ToolExport, AFullDiskLeavesNothing)
{
    ToolFolder folder;
    const ToolResult result =
        folder.RunInShell("ulimit -f 4; trap '' XFSZ; \"$@\"", {"export", "Orvane", "-o", "a.obj"});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("a.obj: "), std::string::npos) << result.err;
    EXPECT_TRUE(folder.Names().empty());
}

TEST(ToolExport, APlaceThatCannotBeWrittenToIsTold)
{
    ToolFolder folder;
    const ToolResult result = folder.Run({"export", "I", "-o", "no/such.glb"});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("no/such.glb"), std::string::npos);
}

TEST(ToolExport, JsonAndTheFileCannotBothGoToStandardOutput)
{
    ToolFolder folder;
    const ToolResult result = folder.Run({"export", "I", "-o", "-", "--format", "stl", "--json"});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "");
}

TEST(ToolExport, SolidMakesEveryEdgeClosedAndTellsWhatBecameOfIt)
{
    struct Case
    {
        std::vector<std::string> look;
        const char* told;
    };
    const Case cases[] = {
        {{"--style", "square"}, "square edges became the plain walls of closed solids in 1 text"},
        {{"--style", "bevel", "--bevel", "0.04"},
         "bevelled edges became the profile \"chamfer 0.04\" in 1 text"},
        {{"--style", "round", "--bevel", "0.05"},
         "rounded edges became the profile \"round 0.05\" in 1 text"},
        {{"--style", "profile", "--profile", "ogee"}, nullptr},
    };
    for (const Case& each : cases)
    {
        ToolFolder folder;
        std::vector<std::string> arguments = {"export", "Rag&8",  "-o",
                                              "a.stl",  "--json", "--solid"};
        arguments.insert(arguments.end(), each.look.begin(), each.look.end());
        const ToolResult result = folder.Run(arguments);
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(result.err,
                  each.told == nullptr ? "" : std::string("orvane: ") + each.told + '\n');
        EXPECT_EQ(Json::parse(result.out)["closed"], true);
    }
}

TEST(ToolExport, SolidKeepsTheSizeOfBevels)
{
    ToolFolder folder;
    // An I of DejaVu Sans Bold is a rectangle: 1493 units high and 385 wide, of 2048 an em.
    const ToolResult result = folder.Run({"export", "I", "-o", "i.stl", "--json", "--solid",
                                          "--style", "bevel", "--bevel", "0.05", "--depth", "0.5",
                                          "--font", "DejaVu Sans Bold", "--bevel-on", "front"});
    const double height = 1493 / 2048.0;
    const double width = 385 / 2048.0;
    // The chamfer grows by 0.05 on each side over a depth of 0.05: the integral of
    // (height + 2 t) (width + 2 t).
    const double chamfer =
        height * width * 0.05 + (height + width) * 0.05 * 0.05 + 4 * 0.05 * 0.05 * 0.05 / 3;
    EXPECT_NEAR(Json::parse(result.out)["volume"].get<double>(),
                chamfer + (height + 0.1) * (width + 0.1) * 0.45, 1e-4);
}

TEST(ToolExport, SolidTellsMeshesThatAreOpenAndStrictFails)
{
    ToolFolder folder;
    folder.Write("leaf.3ds", AsText(OpenMesh()));
    const std::vector<std::string> arguments = {"export", "--import", "leaf.3ds",
                                                "-o",     "a.stl",    "--solid"};
    const ToolResult result = folder.Run(arguments);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "orvane: 1 part is not closed: \"leaf\"\n");
    EXPECT_EQ(TrianglesOfStl(folder.Read("a.stl")), 1u);

    std::vector<std::string> strict = arguments;
    strict[4] = "b.stl";
    strict.emplace_back("--strict");
    const ToolResult refused = folder.Run(strict);
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.err, "orvane: b.stl: 1 part is not closed: \"leaf\"\n");
    EXPECT_FALSE(folder.Has("b.stl"));
}
