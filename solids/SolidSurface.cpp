// SPDX-License-Identifier: MIT
#include "solids/SolidSurface.h"

#include "geometry/Vector.h"
#include "imaging/TextureMap.h"
#include "orvane/Error.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace orvane
{

namespace
{

double SignOf(double value)
{
    return value < 0 ? -1.0 : 1.0;
}

/// The profile, made smaller if it is deeper than there is room for.
EdgeProfile Fitted(EdgeProfile profile, double room)
{
    const double depth = profile.steps.empty() ? 0 : -profile.steps.back().height;
    if (depth <= room)
    {
        return profile;
    }
    const double factor = room / depth;
    for (ProfileStep& step : profile.steps)
    {
        step.height = std::max(step.height * factor, -room);
        if (!profile.reachesMiddle)
        {
            step.offset *= factor;
        }
    }
    return profile;
}

SolidSurface SurfaceOf(const ProfileSolid& solid, const SolidSettings& settings)
{
    SolidSurface surface;
    const double stretch[3] = {settings.stretchX, settings.stretchY, settings.stretchZ};
    surface.corners.reserve(3 * solid.triangles.size());
    const auto add = [&](SolidPart part) {
        for (const SolidTriangle& triangle : solid.triangles)
        {
            for (std::size_t k = 0; triangle.part == part && k < 3; ++k)
            {
                const std::array<float, 3>& place = solid.positions[triangle.corners[k]];
                double normal[3];
                double square = 0;
                SolidSurface::Corner& corner = surface.corners.emplace_back();
                for (std::size_t axis = 0; axis < 3; ++axis)
                {
                    corner.place[axis] = static_cast<float>(stretch[axis] * place[axis]);
                    normal[axis] = triangle.normals[k][axis] / stretch[axis];
                    square += normal[axis] * normal[axis];
                }
                for (std::size_t axis = 0; axis < 3; ++axis)
                {
                    corner.normal[axis] = static_cast<float>(normal[axis] / std::sqrt(square));
                }
            }
        }
    };
    add(SolidPart::Face);
    surface.firstOfEdge = surface.corners.size();
    add(SolidPart::Edge);
    surface.firstOfBevel = surface.corners.size();
    add(SolidPart::Bevel);
    return surface;
}

}  // namespace

SolidSettings SettingsFor(const DVector& scale, EdgeProfile profile, ProfileSides sides,
                          double smoothAngle, ProfileScaling scaling)
{
    const bool scalesProfile = scaling == ProfileScaling::WithNode;
    SolidSettings settings;
    settings.sides = sides;
    settings.smoothAngle = smoothAngle;
    settings.depth = std::fabs(scale.z);
    settings.profile = Fitted(std::move(profile),
                              sides == ProfileSides::Both ? settings.depth / 2 : settings.depth);
    settings.scaleX = scalesProfile ? 1 : std::fabs(scale.x);
    settings.scaleY = scalesProfile ? 1 : std::fabs(scale.y);
    settings.stretchX = scalesProfile ? scale.x : SignOf(scale.x);
    settings.stretchY = scalesProfile ? scale.y : SignOf(scale.y);
    settings.stretchZ = SignOf(scale.z);
    return settings;
}

double ReachOf(const EdgeProfile& profile)
{
    double reach = 0;
    for (const ProfileStep& step : profile.steps)
    {
        reach = std::max(reach, step.offset);
    }
    return profile.reachesMiddle ? 0 : reach;
}

void ScaleRegion(PlaneRegion& region, const SolidSettings& settings)
{
    for (std::vector<contours::DoublePoint>& contour : region.contours)
    {
        for (contours::DoublePoint& point : contour)
        {
            point.x *= settings.scaleX;
            point.y *= settings.scaleY;
        }
    }
}

BuiltSolid BuildSolid(const PlaneRegion& region, const SolidSettings& settings)
{
    if (settings.depth == 0 || settings.stretchX == 0 || settings.stretchY == 0)
    {
        return {{}, SolidOutcome::Missing, "it has no size"};
    }
    ProfileSolidOptions options;
    options.depth = settings.depth;
    options.sides = settings.sides;
    options.smoothAngle = settings.smoothAngle;
    std::string problem;
    const EdgeProfile square{{ProfileStep{}}};
    for (const EdgeProfile* const profile : {&settings.profile, &square})
    {
        try
        {
            return {SurfaceOf(BuildProfileSolid(region, *profile, options), settings),
                    profile == &square ? SolidOutcome::Square : SolidOutcome::Profiled, problem};
        }
        catch (const Error& error)
        {
            problem = error.what();
        }
    }
    return {{}, SolidOutcome::Missing, problem};
}

SurfaceTexture::SurfaceTexture(const TextureMap& texture, const DVector& scale)
    : isUsed(texture.ShouldTexture() != 0)
{
    const auto rate = static_cast<float>(texture.GetRepeatRate());
    repeat = Vector2D(rate, rate);
    if (!texture.ShouldScaleWithObject())
    {
        const Vector size(scale);
        repeat = Vector2D(rate / std::fabs(size.x), rate / std::fabs(size.y));
    }
}

}  // namespace orvane
