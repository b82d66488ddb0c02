// SPDX-License-Identifier: MIT
#include "orvane/DocumentAccess.h"
#include "orvane/orvane.h"
#include "scene/LightObject.h"
#include "scene/SceneObject.h"
#include "tests/support/BmpFile.h"
#include "tests/support/Json.h"
#include "tests/support/MeshFile.h"
#include "tests/support/TemporaryFile.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <set>

using orvane::Document;
using orvane::Error;
using orvane::MeshFileOptions;
using orvane::MeshFormat;
using orvane::OptionError;
using orvane::WriteMesh;

namespace fs = std::filesystem;

namespace
{

class MeshFiles : public testing::Test
{
protected:
    MeshFiles() { fs::create_directory(folder_); }
    ~MeshFiles() override { fs::remove_all(folder_); }

    std::string Path(const std::string& name) const { return folder_ + name; }
    std::string Read(const std::string& name) const
    {
        std::ifstream file(Path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }
    std::set<std::string> Names() const
    {
        std::set<std::string> names;
        for (const fs::directory_entry& entry : fs::directory_iterator(folder_))
        {
            names.insert(entry.path().filename());
        }
        return names;
    }
    /// The JSON of a GLB file.
    Json ReadGlb(const std::string& name) const
    {
        const std::string file = Read(name);
        std::uint32_t bytes = 0;
        std::memcpy(&bytes, file.data() + 12, 4);
        return Json::parse(file.substr(20, bytes));
    }
    /// The number of triangles in an STL file.
    std::uint32_t TrianglesIn(const std::string& name) const
    {
        const std::string file = Read(name);
        std::uint32_t triangles = 0;
        std::memcpy(&triangles, file.data() + 80, 4);
        EXPECT_EQ(file.size(), 84 + 50 * std::size_t{triangles});
        return triangles;
    }

private:
    std::string folder_ = TemporaryFolder() + "mesh-files/";
};

Document Word()
{
    Document document;
    document.AddText("I");
    return document;
}

}  // namespace

TEST_F(MeshFiles, TheEndingOfTheNameDecidesTheFormat)
{
    const Document document = Word();
    for (const char* const name : {"a.glb", "a.gltf", "a.stl", "a.3mf", "a.ply", "b.STL"})
    {
        WriteMesh(document, Path(name));
    }
    EXPECT_EQ(Read("a.glb").substr(0, 4), "glTF");
    EXPECT_EQ(Json::parse(Read("a.gltf"))["asset"]["version"], "2.0");
    EXPECT_EQ(Read("a.3mf").substr(0, 4), "PK\x03\x04");
    EXPECT_EQ(Read("a.ply").substr(0, 4), "ply\n");
    EXPECT_GT(TrianglesIn("a.stl"), 12u);
    EXPECT_EQ(TrianglesIn("b.STL"), TrianglesIn("a.stl"));
    EXPECT_EQ(Names().size(), 6u);
}

TEST_F(MeshFiles, AFormatMayBeNamedInstead)
{
    MeshFileOptions options;
    options.format = MeshFormat::Stl;
    WriteMesh(Word(), Path("mesh.bin"), options);
    EXPECT_GT(TrianglesIn("mesh.bin"), 12u);
}

TEST_F(MeshFiles, AnotherEndingIsAnErrorAndLeavesNoFile)
{
    EXPECT_THROW(WriteMesh(Word(), Path("a.dae")), OptionError);
    EXPECT_THROW(WriteMesh(Word(), Path("a")), OptionError);
    EXPECT_THROW(WriteMesh(Word(), "-"), OptionError);
    EXPECT_TRUE(Names().empty());
}

TEST_F(MeshFiles, OptionsThatMakeNoSenseAreErrorsAndLeaveNoFile)
{
    MeshFileOptions options;
    options.em = 0;
    EXPECT_THROW(WriteMesh(Word(), Path("a.stl"), options), OptionError);
    options.em = 1;
    options.up = orvane::UpAxis::Z;
    EXPECT_THROW(WriteMesh(Word(), Path("a.glb"), options), OptionError);
    EXPECT_TRUE(Names().empty());
}

TEST_F(MeshFiles, TheMaterialsAndPicturesOfAnObjLieBesideIt)
{
    const TemporaryFile picture("picture.bmp", BlueAndRed().File());
    Document document;
    orvane::TextOptions look;
    look.texture.emplace().file = static_cast<const char*>(picture.Path());
    document.AddText("I", look);
    WriteMesh(document, Path("plate.obj"));
    EXPECT_EQ(Names(), (std::set<std::string>{"plate.obj", "plate.mtl", "plate-0.png"}));
    EXPECT_NE(Read("plate.obj").find("mtllib plate.mtl\n"), std::string::npos);
    EXPECT_NE(Read("plate.mtl").find("map_Kd plate-0.png\n"), std::string::npos);
    EXPECT_EQ(Read("plate-0.png").substr(1, 3), "PNG");

    WriteMesh(document, Path("plate.ply"));
    EXPECT_NE(Read("plate.ply").find("comment TextureFile plate-0.png\n"), std::string::npos);
}

TEST_F(MeshFiles, AllFilesAppearOrNone)
{
    std::ofstream(Path("plate.obj")) << "old";
    fs::create_directory(Path("plate.mtl"));  // where the materials cannot be put
    EXPECT_THROW(WriteMesh(Word(), Path("plate.obj")), Error);
    EXPECT_EQ(Read("plate.obj"), "old");
    EXPECT_EQ(Names(), (std::set<std::string>{"plate.obj", "plate.mtl"}));
}

TEST_F(MeshFiles, APictureThatIsGoneIsAnErrorAndLeavesTheOldFile)
{
    Document document;
    {
        const TemporaryFile picture("picture.bmp", BlueAndRed().File());
        orvane::TextOptions look;
        look.texture.emplace().file = static_cast<const char*>(picture.Path());
        document.AddText("I", look);
    }
    std::ofstream(Path("a.glb")) << "old";
    EXPECT_THROW(WriteMesh(document, Path("a.glb")), Error);
    EXPECT_EQ(Read("a.glb"), "old");
    EXPECT_EQ(Names().size(), 1u);
}

TEST_F(MeshFiles, AGltfHasTheTextsNameTheCameraAndTheLights)
{
    Document document;
    document.AddText("\xC3\x84ra");
    orvane::CameraOptions camera;
    camera.fieldOfView = 30;
    document.Frame({200, 100}, camera);
    WriteMesh(document, Path("era.glb"));

    const Json json = ReadGlb("era.glb");
    EXPECT_EQ(json["scenes"][0]["name"], "era");
    EXPECT_EQ(json["nodes"][0]["name"], "\xC3\x84ra");
    EXPECT_EQ(json["meshes"][0]["primitives"].size(), 3u);  // face, edge and bevel
    const Json& lens = json["cameras"][0]["perspective"];
    EXPECT_NEAR(lens["yfov"].get<double>(), 30 * 3.14159265 / 180, 1e-6);
    EXPECT_NEAR(lens["aspectRatio"].get<double>(), 2, 1e-9);
    const Json& lights = json["extensions"]["KHR_lights_punctual"]["lights"];
    ASSERT_EQ(lights.size(), 2u);
    EXPECT_EQ(lights[0]["name"], "Key");
    EXPECT_EQ(lights[1]["name"], "Fill");
    EXPECT_EQ(lights[0]["type"], "directional");
}

TEST_F(MeshFiles, TheCameraStandsWhereTheSceneIsSeenFrom)
{
    Document document;
    document.AddText("I");
    orvane::CameraOptions camera;
    camera.turn = {0, 90, 0};  // the scene's left side is seen, so the camera stands at its left
    document.Frame({100, 100}, camera);
    WriteMesh(document, Path("side.glb"));
    const Json json = ReadGlb("side.glb");
    for (const Json& node : json["nodes"])
    {
        if (node.contains("camera"))
        {
            const Json& m = node["matrix"];
            EXPECT_LT(m[12].get<double>(), -0.5);
            EXPECT_NEAR(m[14].get<double>(), -0.15, 0.05);  // in the middle of the depth of 0.3
            // It looks along its -z axis, which is the scene's +x.
            EXPECT_NEAR(m[8].get<double>(), -1, 1e-6);
            EXPECT_NEAR(m[0].get<double>() * m[0].get<double>() +
                            m[1].get<double>() * m[1].get<double>() +
                            m[2].get<double>() * m[2].get<double>(),
                        1, 1e-9);
        }
    }
    EXPECT_TRUE(json.contains("cameras"));
}

TEST_F(MeshFiles, LightsThatFollowTheCameraTurnWithItAndOthersDoNot)
{
    // The key light shines from (-0.35, 0.75, 1), seen by the camera or in the scene.
    const double length = std::sqrt(0.35 * 0.35 + 0.75 * 0.75 + 1);
    for (const orvane::LightsFollow follow :
         {orvane::LightsFollow::Camera, orvane::LightsFollow::Scene})
    {
        Document document;
        document.AddText("I");
        orvane::LightOptions lights;
        lights.follow = follow;
        document.ChangeLights(lights);
        orvane::CameraOptions camera;
        camera.turn = {0, 90, 0};
        document.Frame({100, 100}, camera);
        WriteMesh(document, Path("light.glb"));
        bool isFound = false;
        const Json json = ReadGlb("light.glb");
        for (const Json& node : json["nodes"])
        {
            if (node["name"] == "Key")
            {
                isFound = true;
                const bool isCameras = follow == orvane::LightsFollow::Camera;
                // The scene is turned by 90 degrees about y, which takes (x, z) to (z, -x). What
                // the camera sees at (x, z) is therefore at (-z, x) in the scene.
                const double x = isCameras ? -1 : -0.35;
                const double z = isCameras ? -0.35 : 1;
                EXPECT_NEAR(node["matrix"][8].get<double>(), x / length, 1e-6);
                EXPECT_NEAR(node["matrix"][9].get<double>(), 0.75 / length, 1e-6);
                EXPECT_NEAR(node["matrix"][10].get<double>(), z / length, 1e-6);
            }
        }
        EXPECT_TRUE(isFound);
    }
}

TEST_F(MeshFiles, ALightThatIsOffIsLeftOut)
{
    Document document = Word();
    orvane::LightOptions lights;
    lights.changes = {{1, false, {}}};
    document.ChangeLights(lights);
    WriteMesh(document, Path("a.glb"));
    const Json json = ReadGlb("a.glb");
    EXPECT_EQ(json["extensions"]["KHR_lights_punctual"]["lights"].size(), 1u);
}

TEST_F(MeshFiles, EveryLineOfATextIsAnObjectOfA3mf)
{
    Document document;
    document.AddText("I\nI");
    WriteMesh(document, Path("lines.3mf"));
    document.AddText("I");
    WriteMesh(document, Path("texts.3mf"));
    // Each further object makes the archive longer; ThreeMfWriter's tests look inside.
    EXPECT_GT(fs::file_size(Path("texts.3mf")), fs::file_size(Path("lines.3mf")));
}

TEST_F(MeshFiles, ADocumentWithoutContentIsAFileWithoutTriangles)
{
    WriteMesh(Document(), Path("empty.stl"));
    EXPECT_EQ(TrianglesIn("empty.stl"), 0u);
    WriteMesh(Document(), Path("empty.glb"));
    EXPECT_FALSE(ReadGlb("empty.glb").contains("meshes"));
}

TEST_F(MeshFiles, SolidTextsAreClosedAndTheDocumentDoesNotChange)
{
    Document document;
    orvane::TextOptions look;
    look.edgeStyle = orvane::EdgeStyle::Round;
    look.bevelWidth = 0.0625;
    document.AddText("Rag", look);
    document.AddText("&8", look);
    WriteMesh(document, Path("drawn.stl"));  // measures the texts, which a scene file has
    document.Save(Path("before.orv"));

    MeshFileOptions options;
    options.solid = true;
    std::vector<std::string> notes;
    options.note = [&notes](const std::string& note) { notes.push_back(note); };
    WriteMesh(document, Path("solid.stl"), options);
    EXPECT_EQ(notes, std::vector<std::string>{
                         "rounded edges became the profile \"round 0.0625\" in 2 texts"});
    EXPECT_NE(TrianglesIn("solid.stl"), TrianglesIn("drawn.stl"));
    document.Save(Path("after.orv"));
    EXPECT_EQ(Read("after.orv") == Read("before.orv"), true);
}

TEST_F(MeshFiles, AnOpenMeshIsAnErrorOnlyWhenSolidIsAskedForAndNobodyIsTold)
{
    const MeshLists triangle = {{0, 0, 0, 10, 0, 0, 10, 10, 0}, {0, 1, 2, 7}};
    const TemporaryFile leaf("leaf.3ds", MeshFile(1, triangle, 1));
    Document document;
    document.AddMesh(static_cast<const char*>(leaf.Path()));
    WriteMesh(document, Path("drawn.stl"));
    MeshFileOptions options;
    options.solid = true;
    EXPECT_THROW(WriteMesh(document, Path("a.stl"), options), Error);
    EXPECT_EQ(Names(), std::set<std::string>{"drawn.stl"});
    std::vector<std::string> problems;
    options.warn = [&problems](const std::string& problem) { problems.push_back(problem); };
    WriteMesh(document, Path("a.stl"), options);
    EXPECT_EQ(problems, std::vector<std::string>{"1 part is not closed: \"mesh0\""});
}
