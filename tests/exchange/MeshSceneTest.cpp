// SPDX-License-Identifier: MIT
#include "exchange/MeshScene.h"

#include "orvane/Error.h"
#include "tests/support/SolidMeshes.h"

#include <gtest/gtest.h>

#include <cmath>

using orvane::LengthUnit;
using orvane::MeshBounds;
using orvane::MeshCamera;
using orvane::MeshFileOptions;
using orvane::MeshFormat;
using orvane::MeshLight;
using orvane::MeshScene;
using orvane::OptionError;
using orvane::PlaceScene;
using orvane::UpAxis;

namespace
{

/// The upper corner of a cube from (0, 0, 0) to (1, 1, 1) in a file.
std::array<float, 3> CornerInFile(MeshFormat format, const MeshFileOptions& options)
{
    MeshScene scene;
    AddCube(scene.mesh, "cube");
    PlaceScene(scene, format, options);
    return scene.mesh.Bounds().maximum;
}

}  // namespace

TEST(MeshScene, WithoutOptionsAnEmIsOneUnit)
{
    EXPECT_EQ(CornerInFile(MeshFormat::Stl, {}), (std::array<float, 3>{1, 1, 1}));
    EXPECT_EQ(CornerInFile(MeshFormat::Glb, {}), (std::array<float, 3>{1, 1, 1}));
}

TEST(MeshScene, AnEmIsAsManyUnitsAsAskedFor)
{
    MeshFileOptions options;
    options.em = 20;
    options.unit = LengthUnit::Millimeter;
    EXPECT_EQ(CornerInFile(MeshFormat::ThreeMf, options), (std::array<float, 3>{20, 20, 20}));
    // 20 millimetres are 0.02 metres.
    EXPECT_EQ(CornerInFile(MeshFormat::Glb, options), (std::array<float, 3>{0.02f, 0.02f, 0.02f}));
    options.unit = LengthUnit::Centimeter;
    EXPECT_EQ(CornerInFile(MeshFormat::Gltf, options), (std::array<float, 3>{0.2f, 0.2f, 0.2f}));
    options.unit = LengthUnit::Inch;
    EXPECT_EQ(CornerInFile(MeshFormat::Glb, options)[0], 0.508f);  // 20 times 25.4 millimetres
}

TEST(MeshScene, UpIsZWhenAskedFor)
{
    MeshScene scene;
    AddCube(scene.mesh, "cube").transform = {1, 0, 0, 0, 0, 2, 0, 0, 0, 0, 3, 0, 0, 0, 0, 1};
    MeshFileOptions options;
    options.up = UpAxis::Z;
    PlaceScene(scene, MeshFormat::Stl, options);
    const MeshBounds bounds = scene.mesh.Bounds();
    // The height of 2 points along z, and the front looks to -y.
    EXPECT_EQ(bounds.minimum, (std::array<float, 3>{0, -3, 0}));
    EXPECT_EQ(bounds.maximum, (std::array<float, 3>{1, 0, 2}));
}

TEST(MeshScene, GltfHasNoOtherUpThanY)
{
    MeshScene scene;
    MeshFileOptions options;
    options.up = UpAxis::Z;
    EXPECT_THROW(PlaceScene(scene, MeshFormat::Glb, options), OptionError);
    EXPECT_THROW(PlaceScene(scene, MeshFormat::Gltf, options), OptionError);
    EXPECT_NO_THROW(PlaceScene(scene, MeshFormat::Obj, options));
}

TEST(MeshScene, AnEmOfNoSizeIsRefused)
{
    for (const double em : {0.0, -1.0, 2e6, 1e-7, std::nan(""), HUGE_VAL})
    {
        MeshScene scene;
        MeshFileOptions options;
        options.em = em;
        EXPECT_THROW(PlaceScene(scene, MeshFormat::Stl, options), OptionError) << em;
    }
}

TEST(MeshScene, CameraAndLightsMoveWithTheMeshAndKeepNoScale)
{
    MeshScene scene;
    MeshCamera& camera = scene.camera.emplace();
    camera.transform = {2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 1, 2, 3, 1};
    camera.nearest = 0.5;
    camera.farthest = 10;
    camera.width = 4;
    camera.height = 3;
    MeshLight& light = scene.lights.emplace_back();
    light.transform = camera.transform;
    light.distance = 7;
    MeshFileOptions options;
    options.em = 10;
    PlaceScene(scene, MeshFormat::Glb, options);
    const std::array<double, 16> expected = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 10, 20, 30, 1};
    EXPECT_EQ(scene.camera->transform, expected);
    EXPECT_EQ(scene.camera->nearest, 5);
    EXPECT_EQ(scene.camera->farthest, 100);
    EXPECT_EQ(scene.camera->width, 40);
    EXPECT_EQ(scene.camera->height, 30);
    EXPECT_EQ(scene.lights[0].transform, expected);
    EXPECT_EQ(scene.lights[0].distance, 70);
}
