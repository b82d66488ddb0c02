// SPDX-License-Identifier: MIT
#include "document/poster/PosterView.h"

#include "imaging/TextureSettings.h"
#include "import3ds/TriangularMeshObject.h"
#include "platform/OpenGL.h"
#include "scene/DescendentWalk.h"
#include "scene/OrvString.h"
#include "solids/MeshTransform.h"
#include "solids/OrvOutlineShape.h"
#include "studio/GroundShadow.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <utility>

namespace orvane
{

namespace
{

using Nodes = std::vector<const DrawingObject*>;

constexpr std::less<const DrawingObject*> byAddress;

bool IsTextOrOutline(const DrawingObject& node)
{
    return dynamic_cast<const OrvString*>(&node) != nullptr ||
           dynamic_cast<const OrvOutlineShape*>(&node) != nullptr;
}

bool IsSolid(const DrawingObject& node)
{
    return IsTextOrOutline(node) || dynamic_cast<const TriangularMeshObject*>(&node) != nullptr;
}

bool IsShownThrough(const DrawingObject& node)
{
    return IsTextOrOutline(node) && node.IsTransparent();
}

/// The nodes of a scene that a condition holds for, sorted by address.
Nodes NodesOf(const DrawingObject& scene, bool (*isWanted)(const DrawingObject&))
{
    Nodes nodes;
    VisitDescendents(scene, [&](const DrawingObject& node) {
        if (isWanted(node))
        {
            nodes.push_back(&node);
        }
        return true;
    });
    std::sort(nodes.begin(), nodes.end(), byAddress);
    return nodes;
}

Nodes Together(const Nodes& a, const Nodes& b)
{
    Nodes all;
    std::set_union(a.begin(), a.end(), b.begin(), b.end(), std::back_inserter(all), byAddress);
    return all;
}

/// How far a node's middle lies from the camera, along its line of sight.
/// \param camera leads from the parent of the scene to the camera
double DistanceOf(const DrawingObject& node, const MeshTransform& camera)
{
    const Vector middle = node.GetBoundsGlobalCenter();  // in the coordinates of its parent
    return -(camera * TransformAbove(node)).Apply({middle.x, middle.y, middle.z})[2];
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
    return hidden.empty() || !std::binary_search(hidden.begin(), hidden.end(), &node, byAddress);
}

PosterView::PosterView(const ViewObject& view, int samples)
    : ViewObject(view),
      background_(*scene, 0),
      solids_(NodesOf(*scene, IsSolid)),
      transparent_(NodesOf(*scene, IsShownThrough))
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

void PosterView::ShowPlainBackground(const ColorVector& color)
{
    background_.GetTexture()->Reset();
    background_.SetBackgroundColor(color);
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
    auto& ours = static_cast<PosterParameters&>(*parameters);
    if (ours.ground != nullptr && parameters->IsRender())
    {
        ours.ground->Draw();
    }
    if (transparent_.empty() || !parameters->IsRender())
    {
        return ViewObject::DrawChildren(parameters);
    }
    return ours.showsThrough ? DrawShowingThrough(ours) : DrawForemost(ours);
}

int PosterView::DrawShowingThrough(PosterParameters& parameters)
{
    PosterParameters pass = parameters;
    const auto drawWithout = [&](const Nodes& hidden) {
        pass.hidden = Together(parameters.hidden, hidden);
        return ViewObject::DrawChildren(&pass);
    };
    if (drawWithout(transparent_) == 0)
    {
        return 0;
    }
    MeshTransform camera;
    glGetDoublev(GL_MODELVIEW_MATRIX, camera.matrix.data());
    std::vector<std::pair<double, const DrawingObject*>> byDistance;
    for (const DrawingObject* const node : transparent_)
    {
        byDistance.emplace_back(DistanceOf(*node, camera), node);
    }
    std::sort(byDistance.begin(), byDistance.end(),
              [](const auto& a, const auto& b) { return a.first > b.first; });
    int drawn = 1;
    for (const auto& [distance, shown] : byDistance)
    {
        Nodes others = solids_;
        for (const DrawingObject* each = shown; each != nullptr; each = each->GetParent())
        {
            others.erase(std::remove(others.begin(), others.end(), each), others.end());
        }
        for (const GLenum culled : {GL_FRONT, GL_BACK})
        {
            glCullFace(culled);
            drawn = drawn != 0 ? drawWithout(others) : 0;
        }
        glCullFace(GL_BACK);
    }
    return drawn;
}

int PosterView::DrawForemost(PosterParameters& parameters)
{
    // Transparent surfaces leave no depth behind. Drawn once, they would show through each other,
    // and the order of drawing would change the picture. So a first pass draws only the depth of
    // all surfaces; in the second pass only the foremost surfaces pass the depth test.
    GLboolean mask[4];
    glGetBooleanv(GL_COLOR_WRITEMASK, mask);
    glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
    PosterParameters depthOnly = parameters;
    depthOnly.ClearShowTextures();
    depthOnly.ClearShowLights();
    depthOnly.keepsTransparentDepth = true;
    int drawn = ViewObject::DrawChildren(&depthOnly);
    glColorMask(mask[0], mask[1], mask[2], mask[3]);
    glDepthMask(GL_TRUE);
    GLint function = GL_LESS;
    glGetIntegerv(GL_DEPTH_FUNC, &function);
    glDepthFunc(GL_LEQUAL);
    drawn = drawn != 0 ? ViewObject::DrawChildren(&parameters) : 0;
    glDepthFunc(static_cast<GLenum>(function));
    return drawn;
}

}  // namespace orvane
