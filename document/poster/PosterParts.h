// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

class DrawingObject;
class DrawingParameters;
class ProjectionData;
class ViewObject;

namespace orvane
{

/// A rectangle of a picture, as fractions of the picture's width and height from its lower left
/// corner.
struct PictureArea
{
    double left;
    double bottom;
    double right;
    double top;
};

/// Knows where in a picture each child of a scene is seen, so that each band of the picture draws
/// only the children that are seen in it. OpenGL's feedback mode gives these places. The bounds of
/// a node would not do, because letters may reach beyond them.
class PosterParts
{
public:
    /// Draws the scene's children once in feedback mode, in the current OpenGL context. This
    /// changes the context's matrices and its viewport.
    /// \param picture the projection of the whole picture
    /// \param parameters as for the bands; textures are left out, because they move no vertices
    PosterParts(ViewObject& view, const ProjectionData& picture,
                const DrawingParameters& parameters);

    /// The children of the scene that are not seen in an area, sorted by address.
    std::vector<const DrawingObject*> HiddenIn(const PictureArea& area) const;
    int Count() const { return static_cast<int>(parts_.size()); }

private:
    struct Part
    {
        const DrawingObject* node;
        PictureArea area;
    };

    std::vector<Part> parts_;  ///< sorted by the address of the node
};

}  // namespace orvane
