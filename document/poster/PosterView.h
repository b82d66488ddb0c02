// SPDX-License-Identifier: MIT
#pragma once

#include "scene/DrawingParameters.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"

#include <vector>

namespace orvane
{

/// What one draw of a PosterView shows.
class PosterParameters : public DrawingParameters
{
public:
    explicit PosterParameters(const ViewObject& view);

    bool ShouldDraw(const DrawingObject& node) const override;
    bool ShouldKeepTransparentDepth() const override { return keepsTransparentDepth; }

    std::vector<const DrawingObject*> hidden;  ///< nodes to leave out, sorted by address
    bool keepsTransparentDepth = false;
};

/// A copy of a view for pictures. It looks at the same scene and changes nothing of it.
///
/// Behind a transparent text one sees the background and opaque nodes, but no letters: of
/// everything that is transparent only the foremost surfaces are drawn.
class PosterView : public ViewObject
{
public:
    /// \param samples how many pixels of the drawing make one pixel of the picture, in each
    /// direction
    PosterView(const ViewObject& view, int samples);

    /// \param parameters PosterParameters
    int DrawChildren(DrawingParameters* parameters) override;
    int DrawObject(DrawingParameters* parameters) override;

private:
    SceneObject background_;  ///< a copy of the scene's background, placed for the drawing's pixels
    bool hasTransparentText_;
};

}  // namespace orvane
