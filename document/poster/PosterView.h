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
    /// Whether opaque surfaces behind transparent texts and outlines show through them.
    bool showsThrough = false;
    bool keepsTransparentDepth = false;
    bool hasLostBackgroundPicture = false;  ///< in any draw with these parameters
};

/// A copy of a view for pictures. It shows the same scene and does not change the scene.
///
/// If the scene has transparent texts, only the foremost surfaces of the scene are drawn. So a
/// transparent letter shows the background behind it, but no other surface behind it, not even an
/// opaque surface. With PosterParameters::showsThrough, transparent nodes are drawn over all others
/// instead, the farthest first, and of each node the surfaces that look away before the others.
class PosterView : public ViewObject
{
public:
    /// \param samples how many pixels of the drawing make one pixel of the picture, in each
    /// direction
    PosterView(const ViewObject& view, int samples);

    /// Shows a colour in place of the scene's background.
    void ShowPlainBackground(const ColorVector& color);

    /// \param parameters must be PosterParameters
    int DrawChildren(DrawingParameters* parameters) override;
    int DrawObject(DrawingParameters* parameters) override;

private:
    int DrawForemost(PosterParameters& parameters);
    int DrawShowingThrough(PosterParameters& parameters);

    SceneObject background_;  ///< a copy of the scene's background, placed for the drawing's pixels
    std::vector<const DrawingObject*> solids_;  ///< texts, outlines and meshes, sorted by address
    std::vector<const DrawingObject*>
        transparent_;  ///< the texts and outlines that are, sorted by address
};

}  // namespace orvane
