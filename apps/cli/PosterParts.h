// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <vector>

class DrawingObject;
class DrawingParameters;
class ProjectionData;
class ViewObject;

/// A rectangle of the picture, in shares of its width and height from its lower left.
struct PictureArea
{
    double left;
    double bottom;
    double right;
    double top;
};

/// Where in the picture the children of a scene are seen, so that each band draws only those that
/// it shows. Where they are is not asked of their bounds, which letters may leave, but of OpenGL,
/// which is made to tell what it would draw.
///
/// While it lives, children are marked as deleted that a band does not show.
class PosterParts
{
public:
    /// Goes through the scene once, in the current context, and changes the matrices and the
    /// viewport. \param picture the projection of the whole picture. \param parameters what is
    /// drawn of it.
    PosterParts(ViewObject& view, const ProjectionData& picture,
                const DrawingParameters& parameters);
    ~PosterParts();
    PosterParts(const PosterParts&) = delete;
    PosterParts& operator=(const PosterParts&) = delete;

    /// Those that are seen in an area are drawn from now on, and no others. How many these are.
    int Show(const PictureArea& area);

private:
    struct Part
    {
        DrawingObject* node;
        PictureArea area;
    };

    std::vector<Part> parts_;
};
