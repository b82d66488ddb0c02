// SPDX-License-Identifier: MIT
#pragma once

#include "scene/DrawingParameters.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"

#include <vector>

namespace orvane
{

class GroundShadow;

/// Says what one call of PosterView::Draw shows.
class PosterParameters : public DrawingParameters
{
public:
    explicit PosterParameters(const ViewObject& view);

    bool ShouldDraw(const DrawingObject& node) const override;
    bool ShouldKeepTransparentDepth() const override { return keepsTransparentDepth; }
    void LoseBackgroundPicture() override { hasLostBackgroundPicture = true; }

    std::vector<const DrawingObject*> hidden;  ///< nodes to leave out, sorted by address
    const GroundShadow* ground = nullptr;      ///< borrowed; null for a scene without a ground
    bool keepsTransparentDepth = false;
    bool hasLostBackgroundPicture = false;  ///< in any draw with these parameters
};

/// A copy of a view for pictures. It shows the same scene and does not change the scene.
///
/// If the scene has transparent texts, only the foremost surfaces of the scene are drawn. So a
/// transparent letter shows the background behind it, but no other surface behind it, not even an
/// opaque surface.
class PosterView : public ViewObject
{
public:
    /// \param samples how many pixels of the drawing make one pixel of the picture, in each
    /// direction
    PosterView(const ViewObject& view, int samples);

    /// \param parameters must be PosterParameters
    int DrawChildren(DrawingParameters* parameters) override;
    int DrawObject(DrawingParameters* parameters) override;

private:
    SceneObject background_;  ///< a copy of the scene's background, placed for the drawing's pixels
    bool hasTransparentSolid_;
};

}  // namespace orvane
