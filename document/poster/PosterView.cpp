// SPDX-License-Identifier: MIT
#include "document/poster/PosterView.h"

#include "imaging/TextureSettings.h"
#include "platform/OpenGL.h"
#include "scene/DescendentWalk.h"
#include "scene/OrvString.h"
#include "solids/OrvOutlineShape.h"
#include "studio/GroundShadow.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace orvane
{

namespace
{

bool HasTransparentSolid(const DrawingObject& scene)
{
    bool hasOne = false;
    VisitDescendents(scene, [&hasOne](const DrawingObject& node) {
        const bool isBlended = dynamic_cast<const OrvString*>(&node) != nullptr ||
                               dynamic_cast<const OrvOutlineShape*>(&node) != nullptr;
        hasOne = hasOne || (isBlended && node.IsTransparent());
        return !hasOne;
    });
    return hasOne;
}

}  // namespace

PosterParameters::PosterParameters(const ViewObject& view)
{
    SetFlags(view.GetDrawingMode());
    SetShowObject();
    SetShowChildren();
    SetShowBackgroundTexture();
    if (view.ShouldShowTextures())
    {
        SetShowTextures();
    }
    if (view.ShouldShowLightsMode())
    {
        SetShowLights();
    }
}

bool PosterParameters::ShouldDraw(const DrawingObject& node) const
{
    return hidden.empty() || !std::binary_search(hidden.begin(), hidden.end(), &node,
                                                 std::less<const DrawingObject*>());
}

PosterView::PosterView(const ViewObject& view, int samples)
    : ViewObject(view), background_(*scene, 0), hasTransparentSolid_(HasTransparentSolid(*scene))
{
    TextureMap& picture = *background_.GetTexture();
    if (picture.placement == static_cast<DWORD>(BackgroundPlacement::Stretch))
    {
        // The place of a stretched background picture is in pixels of the bitmap. Each pixel of the
        // finished picture takes \p samples pixels of the bitmap in each direction.
        picture.SetHorizontalLocation(picture.GetHorizontalLocation() * samples);
        picture.SetVerticalLocation(picture.GetVerticalLocation() * samples);
    }
}

int PosterView::DrawObject(DrawingParameters* parameters)
{
    SceneObject* const shown = std::exchange(scene, &background_);
    const int drawn = ViewObject::DrawObject(parameters);
    scene = shown;
    return drawn;
}

int PosterView::DrawChildren(DrawingParameters* parameters)
{
    const auto& ours = static_cast<PosterParameters&>(*parameters);
    if (ours.ground != nullptr && parameters->IsRender())
    {
        ours.ground->Draw();
    }
    if (!hasTransparentSolid_ || !parameters->IsRender())
    {
        return ViewObject::DrawChildren(parameters);
    }
    // Transparent surfaces leave no depth behind. Drawn once, they would show through each other,
    // and the order of drawing would change the picture. So a first pass draws only the depth of
    // all surfaces; in the second pass only the foremost surfaces pass the depth test.
    GLboolean mask[4];
    glGetBooleanv(GL_COLOR_WRITEMASK, mask);
    glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
    PosterParameters depthOnly = static_cast<PosterParameters&>(*parameters);
    depthOnly.ClearShowTextures();
    depthOnly.ClearShowLights();
    depthOnly.keepsTransparentDepth = true;
    int drawn = ViewObject::DrawChildren(&depthOnly);
    glColorMask(mask[0], mask[1], mask[2], mask[3]);
    glDepthMask(GL_TRUE);
    GLint function = GL_LESS;
    glGetIntegerv(GL_DEPTH_FUNC, &function);
    glDepthFunc(GL_LEQUAL);
    drawn = drawn != 0 ? ViewObject::DrawChildren(parameters) : 0;
    glDepthFunc(static_cast<GLenum>(function));
    return drawn;
}

}  // namespace orvane
