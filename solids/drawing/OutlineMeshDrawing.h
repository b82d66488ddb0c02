// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/Vector2D.h"
#include "solids/OutlineSolids.h"
#include "solids/drawing/RangedMeshDrawing.h"

#include <optional>

namespace orvane
{

class OrvOutlineShape;

/// The triangles of the solids of outlines, in the order of the areas, each a range.
class OutlineMeshDrawing final : public RangedMeshDrawing
{
public:
    using RangedMeshDrawing::RangedMeshDrawing;

    /// \param room the bytes that the triangles may take; outlines with more are not drawn
    SolidDrawing Draw(OrvOutlineShape& outlines, DrawingParameters& parameters, std::size_t room);

private:
    /// All that the triangles are made from.
    struct Inputs
    {
        explicit Inputs(const OrvOutlineShape& outlines);
        bool operator==(const Inputs& other) const;

        OutlineSettings outlines;
        bool isTextured;
        Vector2D textureRepeat;
    };
    /// Makes the triangles anew if they are made from something else. Returns false if they take
    /// more bytes than there is room for.
    bool Update(OrvOutlineShape& outlines, std::size_t room);

    std::optional<Inputs> inputs_;  ///< empty while there are no triangles
};

}  // namespace orvane
