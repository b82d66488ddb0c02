// SPDX-License-Identifier: MIT
// Files as `orvane info` sees them: the versions of their records, files that are not scenes,
// damaged files.
#include "apps/cli/info/SceneInfo.h"
#include "extrude/Library.h"
#include "import3ds/ThreeDStudioObject.h"
#include "import3ds/TriangularMeshObject.h"
#include "orvane/Error.h"
#include "platform/Fonts.h"
#include "tests/support/PrivateFonts.h"
#include "tests/support/SavedScene.h"
#include "tests/support/SceneRecords.h"

#include <fstream>
#include <random>

namespace
{

using ToolInfoFiles = SavedScene;

std::vector<std::string> Records(const Json& json)
{
    std::vector<std::string> records;
    for (const Json& record : json.at("records"))
    {
        records.push_back(record.at("class").get<std::string>() + " " +
                          std::to_string(static_cast<int>(record.at("version").get<double>())) +
                          " x" +
                          std::to_string(static_cast<int>(record.at("count").get<double>())));
    }
    return records;
}

TEST_F(ToolInfoFiles, RecordsAreCountedByClassAndVersion)
{
    scene.DestroyLights();
    AddText("x");
    AddText("y");
    Save();
    // Nodes: scene, view, two texts; each has one bounding element with two spheres, a box colour,
    // a texture and a transform; a text has three colours more, a view a lens.
    EXPECT_EQ(
        Records(InfoAsJson()),
        (std::vector<std::string>{"BoundingElement 1 x4", "Color 1 x10", "CoordinateTransform 1 x4",
                                  "DrawingObject 3 x4", "NamedColor 1 x10", "OrvFontString 1 x2",
                                  "OrvString 2 x2", "ProjectionData 4 x1", "SceneObject 3 x1",
                                  "Sphere 1 x8", "TextureMap 2 x4", "ViewObject 5 x1"}));
}

TEST_F(ToolInfoFiles, OldRecordsAreListedWithTheVersionsInTheFile)
{
    // A scene of version 1 whose node is of version 2, looked at by a view of version 3 with a lens
    // of version 2. The class mark says what was current then, which need not be the same.
    NodeRecord old;
    old.version = 2;
    RecordBytes bytes;
    bytes.NewClass("SceneObject", 1).Append(old.Get());
    bytes.Dword(1).Append(SceneColorsRecord()).Dword(0).Word(0);
    bytes.NewClass("ViewObject", 3).Append(ViewNodeRecord().Get());
    bytes.Dword(3).Dword(1).Dword(0);
    bytes.Dword(2).Doubles({40, 1, 40, -1}).Dword(1).Double(1);
    bytes.Dword(0).Dword(1).Dword(1).Dword(1).Dword(1);
    folder.Write("s.orv", AsText(bytes.Get()));
    EXPECT_EQ(
        Records(InfoAsJson()),
        (std::vector<std::string>{"BoundingElement 1 x2", "Color 1 x2", "CoordinateTransform 1 x2",
                                  "DrawingObject 2 x1", "DrawingObject 3 x1", "NamedColor 1 x2",
                                  "ProjectionData 2 x1", "SceneObject 1 x1", "Sphere 1 x4",
                                  "TextureMap 2 x2", "ViewObject 3 x1"}));
    EXPECT_NE(RunInfo().out.find("\n  DrawingObject        version 2  1 record\n"
                                 "  DrawingObject        version 3  1 record\n"),
              std::string::npos);
}

class ToolInfoRefusal : public SavedScene
{
protected:
    std::string Refused(const std::string& content)
    {
        folder.Write("s.orv", content);
        const ToolResult result = RunInfo();
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.out, "");
        return result.err;
    }
};

TEST_F(ToolInfoRefusal, NamesTheFileThePlaceAndTheFoundAndExpectedValues)
{
    Save();
    const std::string good = folder.Read("s.orv");
    EXPECT_EQ(Refused(""),
              "orvane: s.orv: byte 0: the input ends after 0 of the 2 bytes of a value\n");
    EXPECT_EQ(Refused(good.substr(0, 1000)),
              "orvane: s.orv: byte 1000: the input ends after 1 of the 8 bytes of a value\n");
    EXPECT_EQ(Refused(good + "more!"),
              "orvane: s.orv: byte " + std::to_string(good.size() + 1) +
                  ": the bytes after the view are not the number of a code page\n");

    // Two objects of other classes.
    RecordBytes text;
    text.NewClass("NamedView", 2).Append(NamedViewRecord("a"));
    EXPECT_EQ(Refused(AsText(text.Get())),
              "orvane: s.orv: byte 15: found class NamedView, expected SceneObject\n");
    RecordBytes unknown;
    unknown.NewClass("Sc\x1Bne", 2);
    EXPECT_EQ(Refused(AsText(unknown.Get())),
              "orvane: s.orv: byte 11: class Sc\\u001bne is not known\n");
    EXPECT_EQ(Refused("PNG or anything else"),
              "orvane: s.orv: byte 0: found 50 4E, expected FF FF, with which scene files begin\n");

    // The version of the scene's node, behind the mark, the schema, the length and the name.
    std::string newer = good;
    newer[17] = 9;
    EXPECT_EQ(Refused(newer),
              "orvane: s.orv: byte 21: class DrawingObject has a record of version 9, "
              "expected 1 to 3\n");
}

TEST_F(ToolInfoRefusal, SaysThatAFileIsMissingOrIsAFolder)
{
    const ToolResult result = folder.Run({"info", "none.orv"});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("none.orv"), std::string::npos);
    EXPECT_NE(result.err.find("No such file"), std::string::npos) << result.err;
    const ToolResult directory = folder.Run({"info", "."});
    EXPECT_EQ(directory.status, 1);
    EXPECT_NE(directory.err.find("directory"), std::string::npos) << directory.err;
}

TEST_F(ToolInfoRefusal, OfACommandLineHasStatus2)
{
    EXPECT_EQ(folder.Run({"info"}).status, 2);
    EXPECT_EQ(folder.Run({"info", "a", "b"}).status, 2);
    EXPECT_EQ(folder.Run({"info", "a", "--yaml"}).status, 2);
}

// In this process: a run for each would take minutes.
TEST_F(ToolInfoFiles, TwoThousandDamagedFilesAreDescribedOrRefused)
{
    OrvFontString& text = AddText("Orvane\r\nA");
    AddText("below", &text);
    auto* const import = new ThreeDStudioObject;
    auto* const mesh = new TriangularMeshObject;
    mesh->GetVerticies()->Add(Vector(1, 2, 3));
    mesh->GetFaces()->Add(TriangularFace());
    import->AddChild(mesh);
    scene.AddChild(import);
    scene.SaveCurrentView("Front", view.GetTransform(), std::make_unique<ProjectionData>().get());
    const std::string good = SceneFileBytes(scene, view);
    const std::string path = folder.Path("s.orv");

    const PrivateFonts fonts({ORVANE_TEST_DATA "/EdgeTest.ttf"});
    const UINT codePage = GetACP();
    std::mt19937 random(20);
    const auto below = [&random](std::size_t limit) { return random() % limit; };
    int told = 0;
    int refused = 0;
    for (int i = 0; i < 2000; ++i)
    {
        std::string damaged = good;
        const std::size_t changes = 1 + below(4);
        for (std::size_t change = 0; change < changes; ++change)
        {
            // Small numbers, large ones and signs do most harm to counts and lengths.
            const char values[] = {0, 1, 2, 127, -128, -1, static_cast<char>(below(256))};
            damaged[below(damaged.size())] = values[below(sizeof values)];
        }
        switch (below(8))
        {
            case 0:
                damaged.resize(below(damaged.size()));
                break;
            case 1:
                damaged.erase(below(damaged.size()), 1 + below(40));
                break;
            case 2:
                damaged.insert(below(damaged.size()), 1 + below(40), static_cast<char>(below(256)));
                break;
            default:
                break;
        }
        std::ofstream(path, std::ios::binary) << damaged;
        try
        {
            const Json json = Json::parse(orvane::DescribeScene(path, orvane::InfoFormat::Json));
            EXPECT_EQ(json.at("kind").get<std::string>(), "scene");
            EXPECT_FALSE(orvane::DescribeScene(path, orvane::InfoFormat::Text).empty());
            ++told;
        }
        catch (const orvane::Error& failure)
        {
            EXPECT_EQ(std::string(failure.what()).rfind(path + ": byte ", 0), 0u) << failure.what();
            ++refused;
        }
    }
    SetProcessCodePage(codePage);
    DetachLibrary();  // with the fonts
    AttachLibrary();
    // Most bytes are numbers of which any will do.
    EXPECT_GT(told, 500);
    EXPECT_GT(refused, 500);
}

}  // namespace
