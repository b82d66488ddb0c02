// SPDX-License-Identifier: MIT
#include "apps/cli/PosterView.h"

#include "platform/OpenGL.h"
#include "scene/DrawingParameters.h"
#include "scene/OrvString.h"
#include "scene/SceneObject.h"

namespace
{

void CollectTransparent(DrawingObject& node, std::vector<OrvString*>& texts)
{
    for (int i = 0; i < node.GetChildCount(); ++i)
    {
        CollectTransparent(*node.GetChildByIndex(i), texts);
    }
    auto* const text = dynamic_cast<OrvString*>(&node);
    if (text != nullptr && text->IsTransparent())
    {
        texts.push_back(text);
    }
}

/// Texts without their transparency as long as it lives.
class OpaqueTexts
{
public:
    explicit OpaqueTexts(const std::vector<OrvString*>& texts)
    {
        for (OrvString* const text : texts)
        {
            kept_.push_back(
                {text, {text->GetFaceColor(), text->GetEdgeColor(), text->GetBevelColor()}});
            for (int which = 0; which < surfaces; ++which)
            {
                NamedColor opaque = kept_.back().colors[which];
                ColorVector diffuse = opaque.GetDiffuseColor();
                diffuse.alpha = 1;
                opaque.SetDiffuseColor(diffuse);
                text->SetSurfaceColor(opaque, which);
            }
        }
    }
    ~OpaqueTexts()
    {
        for (const Kept& each : kept_)
        {
            for (int which = 0; which < surfaces; ++which)
            {
                each.text->SetSurfaceColor(each.colors[which], which);
            }
        }
    }
    OpaqueTexts(const OpaqueTexts&) = delete;
    OpaqueTexts& operator=(const OpaqueTexts&) = delete;

private:
    static constexpr int surfaces = 3;  // face, edge, bevel
    struct Kept
    {
        OrvString* text;
        NamedColor colors[surfaces];
    };
    std::vector<Kept> kept_;
};

}  // namespace

PosterView::PosterView(const ViewObject& view) : ViewObject(view)
{
    CollectTransparent(*scene, transparent_);
}

int PosterView::DrawChildren(DrawingParameters* parameters)
{
    if (transparent_.empty() || !parameters->IsRender())
    {
        return ViewObject::DrawChildren(parameters);
    }
    // Transparent surfaces leave no depth behind and would show through each other in the order of
    // drawing. With the depth of all of them there first, only the foremost ones are seen.
    GLboolean mask[4];
    glGetBooleanv(GL_COLOR_WRITEMASK, mask);
    glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
    int drawn = 0;
    {
        const OpaqueTexts opaque(transparent_);
        DrawingParameters depthOnly = *parameters;
        depthOnly.ClearShowTextures();
        depthOnly.ClearShowLights();
        drawn = ViewObject::DrawChildren(&depthOnly);
    }
    glColorMask(mask[0], mask[1], mask[2], mask[3]);
    glDepthMask(GL_TRUE);
    GLint function = GL_LESS;
    glGetIntegerv(GL_DEPTH_FUNC, &function);
    glDepthFunc(GL_LEQUAL);
    drawn = drawn != 0 ? ViewObject::DrawChildren(parameters) : 0;
    glDepthFunc(static_cast<GLenum>(function));
    return drawn;
}
