// SPDX-License-Identifier: MIT
#include "exchange/MeshScene.h"

#include "orvane/Error.h"
#include "solids/MeshTransform.h"
#include "solids/NodeTransform.h"

#include <cmath>
#include <cstdio>

namespace orvane
{

namespace
{

bool IsInMetres(MeshFormat format)
{
    return format == MeshFormat::Glb || format == MeshFormat::Gltf;
}

double Metres(LengthUnit unit)
{
    switch (unit)
    {
        case LengthUnit::Millimeter:
            return 0.001;
        case LengthUnit::Centimeter:
            return 0.01;
        case LengthUnit::Inch:
            return 0.0254;
        default:
            return 1;
    }
}

/// Turns y up into the axis that is up in the file. The result is right-handed, too.
MeshTransform TurnUp(UpAxis up)
{
    return up == UpAxis::Y ? MeshTransform()
                           : MeshTransform{{1, 0, 0, 0, 0, 0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1}};
}

/// Leaves of a transform only how it turns and moves, because cameras and lights in files have no
/// size. The direction of the z axis stays.
void KeepRotation(std::array<double, 16>& m)
{
    const MeshPoint z = Unit({m[8], m[9], m[10]});
    MeshPoint x = Unit(Cross({m[4], m[5], m[6]}, z));
    if (x == MeshPoint{0, 0, 0})
    {
        // Without a y axis any direction will do that is not along z.
        x = Unit(Cross(std::abs(z[1]) < 0.9 ? MeshPoint{0, 1, 0} : MeshPoint{1, 0, 0}, z));
    }
    if (z == MeshPoint{0, 0, 0})
    {
        m = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, m[12], m[13], m[14], 1};
        return;
    }
    const MeshPoint y = Cross(z, x);
    m = {x[0], x[1], x[2], 0, y[0], y[1], y[2], 0, z[0], z[1], z[2], 0, m[12], m[13], m[14], 1};
}

}  // namespace

void PlaceScene(MeshScene& scene, MeshFormat format, const MeshFileOptions& options)
{
    if (!(options.em >= 1e-6 && options.em <= 1e6))
    {
        char found[32];
        std::snprintf(found, sizeof(found), "%g", options.em);
        throw OptionError("em", "expected 1e-06 to 1e+06", found);
    }
    if (IsInMetres(format) && options.up != UpAxis::Y)
    {
        throw OptionError("up", "y is up in every glTF file", "z");
    }
    const double scale = IsInMetres(format) ? options.em * Metres(options.unit) : options.em;
    MeshTransform placement = TurnUp(options.up);
    for (std::size_t i = 0; i < 12; ++i)
    {
        placement.matrix[i] *= scale;
    }
    for (MeshNode& node : scene.mesh.nodes)
    {
        node.transform = (placement * MeshTransform{node.transform}).matrix;
    }
    if (scene.camera)
    {
        MeshCamera& camera = *scene.camera;
        camera.transform = (placement * MeshTransform{camera.transform}).matrix;
        KeepRotation(camera.transform);
        for (double* const length :
             {&camera.width, &camera.height, &camera.nearest, &camera.farthest})
        {
            *length *= scale;
        }
    }
    for (MeshLight& light : scene.lights)
    {
        light.transform = (placement * MeshTransform{light.transform}).matrix;
        KeepRotation(light.transform);
        light.distance *= scale;
    }
}

}  // namespace orvane
