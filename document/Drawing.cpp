// SPDX-License-Identifier: MIT
// Pictures of documents: in files, and in the context of a host.

#include "document/DocumentState.h"
#include "document/DrawingModes.h"
#include "document/KeptContext.h"
#include "document/SceneFraming.h"
#include "document/ScenePictures.h"
#include "document/TextEncoding.h"
#include "document/poster/PictureState.h"
#include "document/poster/PosterTarget.h"
#include "document/poster/PosterView.h"
#include "document/poster/ShownTextures.h"
#include "orvane/orvane.h"
#include "platform/OpenGL.h"
#include "platform/Rendering.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"
#include "studio/GroundShadow.h"
#include "studio/StudioDrawer.h"

#include <algorithm>

namespace orvane
{

namespace
{

/// Throws Error when the stack of the host's context has too few free matrices for the scene.
void CheckMatrixStack(const SceneDocument& document)
{
    document.CheckLevels();
    constexpr int matricesOfCamera = 1;
    GLint most = 0;
    GLint used = 0;
    glGetIntegerv(GL_MAX_MODELVIEW_STACK_DEPTH, &most);
    glGetIntegerv(GL_MODELVIEW_STACK_DEPTH, &used);
    const int needed = document.Levels() + matricesOfCamera;
    if (needed > most - used)
    {
        throw Error("OpenGL", std::to_string(most - used) + " free matrices on the stack",
                    std::to_string(needed) + ", because the nodes nest " +
                        std::to_string(document.Levels()) + " levels deep");
    }
}

}  // namespace

void WritePicture(const Document& document, const std::string& path, const PictureOptions& options)
{
    const DocumentState& state = DocumentState::Of(document);
    const Size size =
        options.size ? *options.size : UnaskedSize(*state.scene.view, state.scene.path);
    const PosterSettings settings(path, options, size);
    CheckPoster(settings);
    state.scene.CheckLevels();
    const std::unique_ptr<PosterTarget> target = MakeTarget(settings);
    const CodePageScope scope(state.scene.codePage);
    const KeptContext kept;
    DrawPoster(*state.ViewFor(size), settings, *target);
}

void Draw(const Document& document, const DrawOptions& options)
{
    CheckCurrentContext();
    const DocumentState& state = DocumentState::Of(document);
    GLint viewport[4] = {};
    glGetIntegerv(GL_VIEWPORT, viewport);
    const Size size = options.size.value_or(Size{viewport[2], viewport[3]});
    CheckSize(size);
    const CodePageScope scope(state.scene.codePage);
    const AdoptedContext adopted(viewport[0] + size.width, viewport[1] + size.height);
    if (HasBackgroundPicture(*state.scene.scene) && wglGetCurrentContext() == nullptr)
    {
        throw Error("OpenGL", "a context made through neither EGL nor GLX",
                    "one of them, because the document has a background picture");
    }
    const KeptState kept;
    CheckMatrixStack(state.scene);

    glViewport(viewport[0], viewport[1], size.width, size.height);
    glScissor(viewport[0], viewport[1], size.width, size.height);
    glEnable(GL_SCISSOR_TEST);  // without it, glClear would clear more than the viewport
    ResetHostState();
    PrepareForPicture(WireWidth(size, DrawingModeOf(*state.scene.view)));
    PosterView view(*state.ViewFor(size), 1);
    PosterParameters parameters(view);
    parameters.SetApplyProjection();
    std::optional<StudioDrawer> studio;
    std::optional<GroundShadow> ground;
    if (options.studio)
    {
        CheckStudioOptions(*options.studio);
        studio.emplace(*options.studio);
        parameters.SetSolidDrawer(&*studio);
        parameters.showsThrough = true;
        if (options.studio->hasGround)
        {
            ground.emplace(*state.scene.scene);
            parameters.ground = &*ground;
        }
    }
    const ShownTextures textures(view);
    const int drawn = view.Draw(&parameters);
    if (drawn == 0)
    {
        throw Error("OpenGL", "the scene could not be drawn completely");
    }
    textures.TellLost(options.warn);
    if (parameters.hasLostBackgroundPicture)
    {
        TellLostPicture(state.scene.scene->GetTexture()->filename.Text(), options.warn);
    }
}

}  // namespace orvane
