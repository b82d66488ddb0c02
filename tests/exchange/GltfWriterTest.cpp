// SPDX-License-Identifier: MIT
#include "imaging/TextureMap.h"
#include "orvane/Error.h"
#include "tests/support/BmpFile.h"
#include "tests/support/Json.h"
#include "tests/support/MeshFiles.h"
#include "tests/support/SolidMeshes.h"
#include "tests/support/TemporaryFile.h"

#include <gtest/gtest.h>

#include <cstring>

using orvane::MeshCamera;
using orvane::MeshFileOptions;
using orvane::MeshFormat;
using orvane::MeshLight;
using orvane::MeshScene;
using orvane::SolidMesh;

namespace
{

/// A GLB file, taken apart as the format says.
struct GlbFile
{
    explicit GlbFile(const std::string& file)
    {
        EXPECT_EQ(file.substr(0, 4), "glTF");
        EXPECT_EQ(NumberAt(file, 4), 2u);
        EXPECT_EQ(NumberAt(file, 8), file.size());
        const std::uint32_t jsonBytes = NumberAt(file, 12);
        EXPECT_EQ(file.substr(16, 4), "JSON");
        json = Json::parse(file.substr(20, jsonBytes));
        const std::size_t binary = 20 + jsonBytes;
        if (binary < file.size())
        {
            EXPECT_EQ(file.substr(binary + 4, 4), std::string("BIN\0", 4));
            EXPECT_EQ(NumberAt(file, binary), file.size() - binary - 8);
            bytes = file.substr(binary + 8);
        }
    }

    static std::uint32_t NumberAt(const std::string& file, std::size_t offset)
    {
        std::uint32_t number = 0;
        std::memcpy(&number, file.data() + offset, 4);
        return number;
    }

    /// The numbers of an accessor.
    template <typename Number>
    std::vector<Number> Numbers(const Json& accessorIndex) const
    {
        const Json& accessor = json["accessors"][accessorIndex.get<std::size_t>()];
        const Json& view = json["bufferViews"][accessor["bufferView"].get<std::size_t>()];
        std::vector<Number> numbers(view["byteLength"].get<std::size_t>() / sizeof(Number));
        const std::size_t offset = view.value("byteOffset", std::size_t{0});
        EXPECT_EQ(offset % 4, 0u);
        std::memcpy(numbers.data(), bytes.data() + offset, numbers.size() * sizeof(Number));
        return numbers;
    }

    Json json;
    std::string bytes;
};

GlbFile WriteGlb(const SolidMesh& mesh, const MeshFileOptions& options = {})
{
    return GlbFile(WriteInMemory(mesh, MeshFormat::Glb, options).Text());
}

}  // namespace

TEST(GltfWriter, OneTriangleIsOneNodeMeshAndPrimitive)
{
    MeshFileOptions options;
    options.name = "scene";
    const GlbFile file = WriteGlb(OneTriangle(), options);
    const Json& json = file.json;
    EXPECT_EQ(json["asset"]["version"], "2.0");
    EXPECT_EQ(json["scene"], 0);
    EXPECT_EQ(json["scenes"], Json::parse(R"([{"name": "scene", "nodes": [0]}])"));
    EXPECT_EQ(json["nodes"], Json::parse(R"([{"mesh": 0, "name": "triangle"}])"));
    ASSERT_EQ(json["meshes"].size(), 1u);
    const Json& primitive = json["meshes"][0]["primitives"][0];
    EXPECT_EQ(primitive["mode"], 4);
    EXPECT_EQ(primitive["material"], 0);
    EXPECT_EQ(KeysOf(primitive["attributes"]).size(), 2u);

    const Json& positions = primitive["attributes"]["POSITION"];
    EXPECT_EQ(file.Numbers<float>(positions), (std::vector<float>{0, 0, 0, 1, 0, 0, 0, 1, 0}));
    const Json& accessor = json["accessors"][positions.get<std::size_t>()];
    EXPECT_EQ(accessor["count"], 3);
    EXPECT_EQ(accessor["type"], "VEC3");
    EXPECT_EQ(accessor["min"], Json::parse("[0.0, 0.0, 0.0]"));
    EXPECT_EQ(accessor["max"], Json::parse("[1.0, 1.0, 0.0]"));
    EXPECT_EQ(file.Numbers<float>(primitive["attributes"]["NORMAL"]),
              (std::vector<float>{0, 0, 1, 0, 0, 1, 0, 0, 1}));
    const std::vector<std::uint16_t> indices = file.Numbers<std::uint16_t>(primitive["indices"]);
    EXPECT_EQ(indices, (std::vector<std::uint16_t>{0, 1, 2}));

    const Json& material = json["materials"][0];
    EXPECT_EQ(material["name"], "Face");
    const Json& surface = material["pbrMetallicRoughness"];
    EXPECT_EQ(surface["metallicFactor"], 0);
}

TEST(GltfWriter, ANodeHasOnePrimitiveForEachPartAndMaterial)
{
    SolidMesh mesh;
    AddCube(mesh, "W\xC3\xBCrfel");
    const GlbFile file = WriteGlb(mesh);
    EXPECT_EQ(file.json["nodes"][0]["name"], "W\xC3\xBCrfel");
    const Json& primitives = file.json["meshes"][0]["primitives"];
    ASSERT_EQ(primitives.size(), 2u);
    EXPECT_EQ(file.Numbers<std::uint16_t>(primitives[0]["indices"]).size(), 12u);
    EXPECT_EQ(file.Numbers<std::uint16_t>(primitives[1]["indices"]).size(), 24u);
    const Json& materials = file.json["materials"];
    EXPECT_FALSE(materials[0].contains("alphaMode") && materials[0]["alphaMode"] != "OPAQUE");
    EXPECT_EQ(materials[1]["alphaMode"], "BLEND");
    EXPECT_EQ(materials[1]["pbrMetallicRoughness"]["baseColorFactor"][3], 0.5);
}

TEST(GltfWriter, LengthsAreInMetres)
{
    MeshFileOptions options;
    options.unit = orvane::LengthUnit::Millimeter;
    options.em = 500;
    const GlbFile file = WriteGlb(OneTriangle(), options);
    // 500 millimetres are half a metre; the matrix of the node scales by that.
    const Json& matrix = file.json["nodes"][0]["matrix"];
    EXPECT_EQ(matrix, Json::parse("[0.5,0.0,0.0,0.0, 0.0,0.5,0.0,0.0, 0.0,0.0,0.5,0.0, "
                                  "0.0,0.0,0.0,1.0]"));
}

TEST(GltfWriter, ATransformThatShearsIsAppliedToTheVertices)
{
    SolidMesh mesh = OneTriangle();
    mesh.nodes[0].transform = {1, 0, 0, 0, 0.5, 1, 0, 0, 0, 0, 1, 0, 7, 0, 0, 1};
    const GlbFile file = WriteGlb(mesh);
    EXPECT_FALSE(file.json["nodes"][0].contains("matrix"));
    const Json& attributes = file.json["meshes"][0]["primitives"][0]["attributes"];
    EXPECT_EQ(file.Numbers<float>(attributes["POSITION"]),
              (std::vector<float>{7, 0, 0, 8, 0, 0, 7.5f, 1, 0}));
}

TEST(GltfWriter, ATransformThatShearsAndMirrorsTurnsTheTrianglesRound)
{
    SolidMesh mesh = OneTriangle();
    mesh.nodes[0].transform = {-1, 0, 0, 0, 0.5, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    const GlbFile file = WriteGlb(mesh);
    const Json& primitive = file.json["meshes"][0]["primitives"][0];
    EXPECT_EQ(file.Numbers<std::uint16_t>(primitive["indices"]),
              (std::vector<std::uint16_t>{0, 2, 1}));
}

TEST(GltfWriter, APictureIsAPngAndItsCoordinatesPointDown)
{
    const TemporaryFile file("picture.bmp", BlueAndRed().File());
    SolidMesh mesh = OneTriangle();
    const auto texture = std::make_shared<TextureMap>(file.Path());
    texture->SetQuality(static_cast<unsigned long>(orvane::TextureQuality::Nearest));
    mesh.nodes[0].texture = texture;

    const GlbFile glb = WriteGlb(mesh);
    const Json& image = glb.json["images"][0];
    EXPECT_EQ(image["mimeType"], "image/png");
    const Json& view = glb.json["bufferViews"][image["bufferView"].get<std::size_t>()];
    const std::size_t offset = view.value("byteOffset", std::size_t{0});
    EXPECT_EQ(glb.bytes.substr(offset, 8), "\x89PNG\r\n\x1A\n");
    EXPECT_EQ(glb.json["samplers"][0]["magFilter"], 9728);  // nearest
    EXPECT_EQ(glb.json["materials"][0]["pbrMetallicRoughness"]["baseColorTexture"]["index"], 0);
    const Json& attributes = glb.json["meshes"][0]["primitives"][0]["attributes"];
    EXPECT_EQ(glb.Numbers<float>(attributes["TEXCOORD_0"]), (std::vector<float>{0, 1, 1, 1, 0, 0}));
}

TEST(GltfWriter, APictureThatIsGoneIsAnErrorThatNamesIt)
{
    SolidMesh mesh = OneTriangle();
    mesh.nodes[0].texture = std::make_shared<TextureMap>(CString("/no/such.bmp"));
    EXPECT_THROW(
        {
            try
            {
                WriteGlb(mesh);
            }
            catch (const orvane::Error& error)
            {
                EXPECT_EQ(error.Place(), "/no/such.bmp");
                throw;
            }
        },
        orvane::Error);
}

TEST(GltfWriter, CameraAndLightsAreNodes)
{
    MeshScene scene;
    scene.mesh = OneTriangle();
    MeshCamera& camera = scene.camera.emplace();
    camera.transform = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 5, 1};
    camera.fieldOfView = 90;
    camera.aspect = 1.5;
    camera.nearest = 0.1;
    camera.farthest = 100;
    MeshLight light;
    light.name = "Key";
    light.transform = camera.transform;
    light.color = {1, 0, 0.5f};
    scene.lights.push_back(light);
    light.kind = MeshLight::Kind::Spot;
    light.distance = 2;
    light.coneAngle = 30;
    scene.lights.push_back(light);
    light.kind = MeshLight::Kind::Point;
    scene.lights.push_back(light);

    const Json json = GlbFile(WriteInMemory(scene, MeshFormat::Glb).Text()).json;
    EXPECT_EQ(json["scenes"][0]["nodes"], Json::parse("[0, 1, 2, 3, 4]"));
    EXPECT_EQ(json["nodes"][1]["camera"], 0);
    EXPECT_EQ(json["nodes"][1]["matrix"][14], 5.0);
    const Json& lens = json["cameras"][0]["perspective"];
    EXPECT_NEAR(lens["yfov"].get<double>(), 3.14159265 / 2, 1e-6);
    EXPECT_EQ(lens["aspectRatio"], 1.5);

    EXPECT_EQ(json["extensionsUsed"], Json::parse(R"(["KHR_lights_punctual"])"));
    EXPECT_EQ(json["nodes"][2]["extensions"]["KHR_lights_punctual"]["light"], 0);
    const Json& lights = json["extensions"]["KHR_lights_punctual"]["lights"];
    EXPECT_EQ(lights[0]["type"], "directional");
    EXPECT_NEAR(lights[0]["intensity"].get<double>(), 3.14159265, 1e-6);
    EXPECT_NEAR(lights[0]["color"][2].get<double>(), 0.21404, 1e-5);  // sRGB 0.5
    EXPECT_EQ(lights[1]["type"], "spot");
    EXPECT_NEAR(lights[1]["spot"]["outerConeAngle"].get<double>(), 0.52359878, 1e-6);
    EXPECT_NEAR(lights[1]["intensity"].get<double>(), 4 * 3.14159265, 1e-5);
    EXPECT_EQ(lights[2]["type"], "point");
}

TEST(GltfWriter, AnOrthographicCameraHasHalfTheSizeThatItSees)
{
    MeshScene scene;
    scene.mesh = OneTriangle();
    MeshCamera& camera = scene.camera.emplace();
    camera.transform = orvane::MeshNode().transform;
    camera.isOrthographic = true;
    camera.width = 6;
    camera.height = 4;
    camera.nearest = 1;
    camera.farthest = 10;
    const Json json = GlbFile(WriteInMemory(scene, MeshFormat::Glb).Text()).json;
    EXPECT_EQ(json["cameras"][0]["type"], "orthographic");
    EXPECT_EQ(json["cameras"][0]["orthographic"]["xmag"], 3.0);
    EXPECT_EQ(json["cameras"][0]["orthographic"]["ymag"], 2.0);
}

TEST(GltfWriter, ManyVerticesHaveIndicesOf32Bits)
{
    SolidMesh mesh = OneTriangle();
    for (std::uint32_t i = 3; i < 65537; i += 2)
    {
        mesh.vertices.resize(i + 2, mesh.vertices[1]);
        mesh.indices.insert(mesh.indices.end(), {0, i, i + 1});
    }
    mesh.groups[0].indexCount = mesh.indices.size();
    GlbFile file = WriteGlb(mesh);
    const Json primitive = file.json["meshes"][0]["primitives"][0];
    EXPECT_EQ(file.json["accessors"][primitive["indices"].get<std::size_t>()]["componentType"],
              5125);  // unsigned int
    EXPECT_EQ(file.Numbers<std::uint32_t>(primitive["indices"]).back(), 65536u);
}

TEST(GltfWriter, TheTextFileHoldsTheSameBytes)
{
    SolidMesh mesh;
    AddCube(mesh, "cube");
    const Json json = Json::parse(WriteInMemory(mesh, MeshFormat::Gltf).Text());
    const GlbFile binary = WriteGlb(mesh);
    EXPECT_EQ(json["meshes"], binary.json["meshes"]);
    const std::string uri = json["buffers"][0]["uri"];
    const std::string start = "data:application/octet-stream;base64,";
    EXPECT_EQ(uri.substr(0, start.size()), start);
    EXPECT_EQ(uri.size() - start.size(), (binary.bytes.size() + 2) / 3 * 4);
}

TEST(GltfWriter, AMeshWithoutTrianglesIsAFileWithoutBuffers)
{
    const Json json = WriteGlb(SolidMesh()).json;
    EXPECT_FALSE(json.contains("buffers"));
    EXPECT_FALSE(json.contains("meshes"));
}
