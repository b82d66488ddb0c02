// SPDX-License-Identifier: MIT
// What the tool tells of 3D Studio files.

#include "apps/cli/info/ChunkTree.h"
#include "orvane/Error.h"
#include "tests/support/Chunks.h"
#include "tests/support/Json.h"
#include "tests/support/ToolRun.h"

#include <gtest/gtest.h>

#include <sstream>

namespace
{

class ToolMeshInfo : public testing::Test
{
protected:
    ToolFolder folder;
};

// One mesh, with what an import does not use around it.
Bytes FileWithMuchBesides()
{
    const RecordBytes mesh = ChunkOf(
        0x4100,
        {VertexChunk({1, 2, 3, 5, 2, 3, 1, 8, 3, 1, 2, 13}), ChunkOf(0x4140),
         FaceChunk({0, 1, 2, 7, 0, 2, 3, 7}, {MaterialGroup("red", {0}), ChunkOf(0x4150)})});
    return ChunkOf(
        0x4D4D, {ChunkOf(0x3D3D, {MaterialChunk("red", {DiffuseColor(255, 0, 0), ChunkOf(0xA200)}),
                                  ObjectChunk("lamp", {ChunkOf(0x4600)}),
                                  ObjectChunk("eye", {ChunkOf(0x4700)}),
                                  ObjectChunk("shape", {mesh, ChunkOf(0x4010)})}),
                 ChunkOf(0xB000)});
}

TEST_F(ToolMeshInfo, InfoListsMeshesMaterialsAndSkippedChunksWithReasons)
{
    folder.Write("x.3ds", AsText(FileWithMuchBesides()));
    const ToolResult result = folder.Run({"info", "x.3ds"});
    EXPECT_EQ(result.status, 0) << result.err;
    const auto has = [&](const char* text) { return result.out.find(text) != std::string::npos; };
    EXPECT_TRUE(has("\"x.3ds\": a 3D Studio file"));
    EXPECT_TRUE(has("\"shape\"  4 vertices  2 faces, hidden  1 3 -8 to 5 13 -2"));
    EXPECT_TRUE(has("\"Undefined\""));
    EXPECT_TRUE(has("#ff0000"));
    EXPECT_TRUE(has("0xA200 texture map"));
    EXPECT_TRUE(has("texture maps are not imported"));
    EXPECT_TRUE(has("0x4150 smoothing groups"));
    EXPECT_TRUE(has("0x4600 light"));
    EXPECT_TRUE(has("0x4700 camera"));
    EXPECT_TRUE(has("0xB000 keyframes"));
    EXPECT_FALSE(has("Chunks:"));
}

TEST_F(ToolMeshInfo, InfoAsJsonTellsTheSame)
{
    folder.Write("x.3ds", AsText(FileWithMuchBesides()));
    const ToolResult result = folder.Run({"info", "--json", "x.3ds"});
    EXPECT_EQ(result.status, 0) << result.err;
    const Json json = Json::parse(result.out);
    EXPECT_EQ(json.at("file").get<std::string>(), "x.3ds");
    EXPECT_EQ(json.at("kind").get<std::string>(), "meshes");
    ASSERT_EQ(json.at("meshes").size(), 1u);
    const Json& mesh = json.at("meshes").at(0);
    EXPECT_EQ(mesh.at("name").get<std::string>(), "shape");
    EXPECT_EQ(mesh.at("vertices").get<double>(), 4);
    EXPECT_EQ(mesh.at("faces").get<double>(), 2);
    EXPECT_TRUE(mesh.at("hidden").get<bool>());
    EXPECT_FALSE(mesh.at("shadow").get<bool>());
    // y up: x stays, y is the file's z, z is the file's -y; turned in single precision.
    const std::vector<double> minimum = mesh.at("minimum").get<std::vector<double>>();
    ASSERT_EQ(minimum.size(), 3u);
    EXPECT_NEAR(minimum[0], 1, 1e-4);
    EXPECT_NEAR(minimum[1], 3, 1e-4);
    EXPECT_NEAR(minimum[2], -8, 1e-4);
    ASSERT_EQ(json.at("materials").size(), 2u);
    EXPECT_EQ(json.at("materials").at(0).at("name").get<std::string>(), "Undefined");
    EXPECT_EQ(json.at("materials").at(1).at("name").get<std::string>(), "red");
    EXPECT_EQ(json.at("materials").at(1).at("diffuse").get<std::vector<double>>(),
              (std::vector<double>{1, 0, 0, 1}));
    std::vector<std::string> ids;
    for (const Json& skipped : json.at("skipped"))
    {
        ids.push_back(skipped.at("id").get<std::string>());
        EXPECT_FALSE(skipped.at("why").get<std::string>().empty());
    }
    EXPECT_EQ(ids, (std::vector<std::string>{"0xA200", "0x4600", "0x4700", "0x4140", "0x4150",
                                             "0xB000"}));
    EXPECT_FALSE(json.contains("chunks"));
}

TEST_F(ToolMeshInfo, TheChunkTreeHasOffsetsAndLengths)
{
    const RecordBytes color = DiffuseColor(1, 2, 3);
    folder.Write("x.3ds", AsText(FileOf({MaterialChunk("m", {color}), ChunkOf(0x1234)})));
    const ToolResult result = folder.Run({"info", "--chunks", "x.3ds"});
    EXPECT_EQ(result.status, 0) << result.err;
    const std::size_t at = result.out.find("Chunks: 7");
    ASSERT_NE(at, std::string::npos) << result.out;
    EXPECT_EQ(result.out.substr(at),
              "Chunks: 7\n"
              "  offset  length  chunk\n"
              "  0       47      0x4D4D main\n"
              "  6       41        0x3D3D editor data\n"
              "  12      29          0xAFFF material\n"
              "  18      8             0xA000 material name\n"
              "  26      15            0xA020 diffuse colour\n"
              "  32      9               0x0011 colour in bytes\n"
              "  41      6           0x1234 unknown\n");
    const Json chunks =
        Json::parse(folder.Run({"info", "--chunks", "--json", "x.3ds"}).out).at("chunks");
    ASSERT_EQ(chunks.size(), 7u);
    EXPECT_EQ(chunks.at(5).at("id").get<std::string>(), "0x0011");
    EXPECT_EQ(chunks.at(5).at("depth").get<double>(), 4);
    EXPECT_EQ(chunks.at(5).at("offset").get<double>(), 32);
    EXPECT_EQ(chunks.at(5).at("length").get<double>(), 9);
    EXPECT_TRUE(chunks.at(5).at("whole").get<bool>());
}

TEST_F(ToolMeshInfo, TheChunkTreeOfADamagedFileEndsWhereNoHeaderCanBeRead)
{
    const RecordBytes tooLong = RecordBytes().Word(0x4000).Dword(1000);
    const RecordBytes noHeader = RecordBytes().Word(0x4000).Dword(3);
    folder.Write("long.3ds", AsText(FileOf({tooLong})));
    folder.Write("bad.3ds", AsText(FileOf({noHeader, MeshObjectChunk("a")})));
    EXPECT_NE(folder.Run({"info", "--chunks", "long.3ds"})
                  .out.find("0x4000 object, ends past the end of its parent or of the file"),
              std::string::npos);
    const ToolResult bad = folder.Run({"info", "--chunks", "bad.3ds"});
    EXPECT_EQ(bad.status, 0);
    EXPECT_NE(bad.out.find("Chunks: 2"), std::string::npos) << bad.out;
    EXPECT_NE(bad.out.find("the next bytes in 0x3D3D are not the header of a chunk"),
              std::string::npos);
}

TEST_F(ToolMeshInfo, TheTreeOfAFileThatIsAllNestingIsListedInTime)
{
    constexpr DWORD depth = 20000;
    RecordBytes bytes;
    for (DWORD level = 0; level < depth; ++level)
    {
        bytes.Word(level == 0 ? WORD{0x4D4D} : WORD{0x3D3D}).Dword((depth - level) * 6);
    }
    folder.Write("x.3ds", AsText(bytes));
    const ToolResult result = folder.Run({"info", "--chunks", "x.3ds"});
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.out.find("Chunks: 20000"), std::string::npos);
    EXPECT_LT(result.out.size(), 200u * depth);
}

TEST_F(ToolMeshInfo, TheDumpIsTheTextOfTheMeshes)
{
    const RecordBytes triangle =
        ChunkOf(0x4100, {VertexChunk({0, 0, 0, 2, 0, 0, 0, 0, 4}), FaceChunk({0, 1, 2, 7})});
    folder.Write("one.3ds", AsText(FileOf({ObjectChunk("a", {triangle})})));
    EXPECT_EQ(folder.Run({"info", "one.3ds", "--dump", "dump.txt"}).status, 0);
    const std::string dump = folder.Read("dump.txt");
    EXPECT_EQ(dump.rfind("V E R T I C I E S\n\nVertex Number 0    X = 0", 0), 0u) << dump;
    EXPECT_NE(
        dump.find("\n\n\n\nF A C E S\n\nFace Number 0    A = 0    B = 1    C = 2    Flags = 7"),
        std::string::npos)
        << dump;
    Imported node(FileOf({ObjectChunk("a", {triangle})}));
    std::ostringstream text;
    node.Mesh().WriteVertsAndFaces(text);
    EXPECT_EQ(dump, text.str());
    EXPECT_EQ(folder.Run({"info", "one.3ds", "--dump", "-"}).out, dump);
}

TEST_F(ToolMeshInfo, TheDumpOfSeveralMeshesNamesEach)
{
    folder.Write("two.3ds", AsText(FileOf({MeshObjectChunk("a"), MeshObjectChunk("b")})));
    const std::string dump = folder.Run({"info", "two.3ds", "--dump", "-"}).out;
    EXPECT_EQ(dump.rfind("M E S H  a\n\nV E R T I C I E S\n", 0), 0u);
    EXPECT_NE(dump.find("\nM E S H  b\n\nV E R T I C I E S\n"), std::string::npos);
}

TEST_F(ToolMeshInfo, InfoTellsWhyAFileCannotBeRead)
{
    const auto complaint = [this](const std::vector<std::string>& arguments) {
        const ToolResult result = folder.Run(arguments);
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.out, "");
        return result.err;
    };
    folder.Write("x.3ds", AsText(FileOf({MeshObjectChunk("a")})));
    EXPECT_NE(complaint({"info", "none.3ds"}).find("none.3ds: there is no such file"),
              std::string::npos);
    EXPECT_NE(complaint({"info", "x.3ds", "--dump", "no/folder.txt"}).find("no/folder.txt"),
              std::string::npos);
    folder.Write("x.orv", "no scene");
    EXPECT_NE(complaint({"info", "x.orv", "--chunks"}).find("--chunks"), std::string::npos);
    EXPECT_NE(complaint({"info", "x.orv", "--dump", "-"}).find("--dump"), std::string::npos);
}

TEST_F(ToolMeshInfo, EveryTruncationOfAFileIsDescribedOrRefused)
{
    const std::string whole = AsText(FileWithMuchBesides());
    for (std::size_t length = 0; length <= whole.size(); length += 7)
    {
        folder.Write("x.3ds", whole.substr(0, length));
        const ToolResult result = folder.Run({"info", "--chunks", "--json", "x.3ds"});
        EXPECT_EQ(result.status, length >= 6 ? 0 : 1) << length << result.err;
    }
}

TEST(ChunkTree, AFileThatCannotBeOpenedIsNamed)
{
    try
    {
        orvane::ReadChunkTree("/none/x.3ds");
        ADD_FAILURE();
    }
    catch (const orvane::Error& error)
    {
        EXPECT_EQ(error.Place(), "/none/x.3ds");
        EXPECT_EQ(std::string(error.what()).find("/none/x.3ds", 1), std::string::npos);
    }
}

}  // namespace
