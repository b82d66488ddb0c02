// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/DVector.h"
#include "geometry/MeshVertex.h"
#include "geometry/Vector2D.h"
#include "material/NamedColor.h"
#include "platform/OpenGL.h"
#include "profiles/EdgeProfile.h"
#include "profiles/PlaneRegion.h"
#include "profiles/ProfileSolid.h"

#include <cstddef>
#include <string>
#include <vector>

class TextureMap;

namespace orvane
{

/// What the solid of a region is made with, besides the region.
struct SolidSettings
{
    bool operator==(const SolidSettings&) const = default;

    EdgeProfile profile;
    ProfileSides sides = ProfileSides::Both;
    double smoothAngle = ProfileSolidOptions().smoothAngle;
    double depth = 0;  ///< not negative
    /// The region is scaled by these factors, which are not negative, before its edges are cut.
    double scaleX = 1, scaleY = 1;
    /// The finished solid is scaled by these factors.
    double stretchX = 1, stretchY = 1, stretchZ = 1;
};

enum class ProfileScaling
{
    WithNode,  ///< the profile grows with the node in x and y
    Fixed
};

/// The settings for a node of a scale, whose z is the depth. A profile that is deeper than there is
/// room for is made smaller.
SolidSettings SettingsFor(const DVector& scale, EdgeProfile profile, ProfileSides sides,
                          double smoothAngle, ProfileScaling scaling);

/// How far a profile reaches out of the outline; 0 for one that does not.
double ReachOf(const EdgeProfile& profile);

/// The corners of a solid's triangles, those of the faces first, then of the wall and of the
/// profiles.
struct SolidSurface
{
    struct Corner
    {
        float place[3];
        float normal[3];
    };

    std::vector<Corner> corners;
    std::size_t firstOfEdge = 0;
    std::size_t firstOfBevel = 0;
};

enum class SolidOutcome
{
    Profiled,  ///< the solid has the profile
    Square,    ///< its edges could not be cut, so they are square
    Missing    ///< it has no triangles, because it has no size or one that is no number
};

struct BuiltSolid
{
    SolidSurface surface;
    SolidOutcome outcome = SolidOutcome::Missing;
    std::string problem;  ///< why the solid does not have the profile; empty if it has
};

/// Scales a region by scaleX and scaleY.
void ScaleRegion(PlaneRegion& region, const SolidSettings& settings);

/// \param region after ScaleRegion
BuiltSolid BuildSolid(const PlaneRegion& region, const SolidSettings& settings);

/// How texture coordinates follow from places.
struct SurfaceTexture
{
    /// A texture coordinate is a place in ems, unless the texture is scaled with the node.
    SurfaceTexture(const TextureMap& texture, const DVector& scale);

    bool isUsed;
    Vector2D repeat;
};

struct SurfaceMaterials
{
    const NamedColor& face;
    const NamedColor& edge;
    const NamedColor& bevel;
};

/// Hands a solid's surface to a sink (extrude/SurfaceSink.h), part by part.
/// \param scale of the node
template <typename Sink>
void EmitSurface(const SolidSurface& surface, const SurfaceMaterials& materials,
                 const SurfaceTexture& texture, const DVector& scale, Sink& sink)
{
    const bool isMirrored = (scale.x < 0) != ((scale.y < 0) != (scale.z < 0));
    const auto emit = [&](std::size_t first, std::size_t end) {
        sink.FrontFace(isMirrored ? GL_CW : GL_CCW);
        sink.Begin(GL_TRIANGLES);
        for (std::size_t i = first; i < end; ++i)
        {
            const SolidSurface::Corner& corner = surface.corners[i];
            sink.Normal(corner.normal[0], corner.normal[1], corner.normal[2]);
            if (texture.isUsed)
            {
                sink.TexCoord(Vector2D(corner.place[0] * texture.repeat.x,
                                       corner.place[1] * texture.repeat.y));
            }
            sink.Vertex(corner.place[0], corner.place[1], corner.place[2]);
        }
        sink.End();
        sink.FrontFace(GL_CCW);
    };
    sink.UseMaterial(materials.face);
    sink.BeginPart(MeshPart::Face);
    emit(0, surface.firstOfEdge);
    sink.EndPart();
    sink.BeginPart(MeshPart::Edge);
    sink.UseMaterial(materials.edge);
    emit(surface.firstOfEdge, surface.firstOfBevel);
    sink.EndPart();
    sink.BeginPart(MeshPart::Bevel);
    sink.UseMaterial(materials.bevel);
    emit(surface.firstOfBevel, surface.corners.size());
    sink.EndPart();
}

}  // namespace orvane
