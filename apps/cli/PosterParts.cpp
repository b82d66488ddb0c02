// SPDX-License-Identifier: MIT
#include "apps/cli/PosterParts.h"

#include "platform/OpenGL.h"
#include "scene/DrawingParameters.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"

#include <algorithm>
#include <limits>
#include <memory>

namespace
{

constexpr GLsizei mostValues = 4'000'000;  // of feedback; who needs more is seen everywhere
constexpr GLsizei side = 4096;             // pixels of the picture that feedback tells of
constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr PictureArea everywhere = {-infinity, -infinity, infinity, infinity};

/// The rectangle around everything that feedback tells of.
PictureArea AreaOf(const GLfloat* values, GLint count)
{
    PictureArea area = {infinity, infinity, -infinity, -infinity};
    for (GLint i = 0; i < count;)
    {
        const int token = static_cast<int>(values[i++]);
        if (token == GL_PASS_THROUGH_TOKEN)
        {
            ++i;
            continue;
        }
        const bool isLine = token == GL_LINE_TOKEN || token == GL_LINE_RESET_TOKEN;
        int vertices = token == GL_POLYGON_TOKEN ? static_cast<int>(values[i++]) : isLine ? 2 : 1;
        for (; vertices > 0 && i + 1 < count; --vertices, i += 2)
        {
            const double x = values[i] / double{side};
            const double y = values[i + 1] / double{side};
            area = {std::min(area.left, x), std::min(area.bottom, y), std::max(area.right, x),
                    std::max(area.top, y)};
        }
    }
    return area;
}

}  // namespace

PosterParts::PosterParts(ViewObject& view, const ProjectionData& picture,
                         const DrawingParameters& original)
{
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    picture.ApplyVolume();
    glViewport(0, 0, side, side);
    glMatrixMode(GL_MODELVIEW);
    glLoadMatrixd(view.GetCompositeMatrix());
    glMultMatrixd(view.GetScene()->GetCompositeMatrix());
    DrawingParameters parameters = original;
    parameters.ClearShowTextures();

    const auto values = std::make_unique_for_overwrite<GLfloat[]>(mostValues);
    glFeedbackBuffer(mostValues, GL_2D, values.get());
    DrawingObjectList& children = *view.GetScene()->GetChildren();
    for (POSITION position = children.GetHeadPosition(); position != nullptr;)
    {
        DrawingObject* const node = children.GetNext(position);
        if (!node->IsDeleted())
        {
            glRenderMode(GL_FEEDBACK);
            const int drawn = node->Draw(&parameters);
            const GLint count = glRenderMode(GL_RENDER);
            parts_.push_back(
                {node, drawn != 0 && count >= 0 ? AreaOf(values.get(), count) : everywhere});
        }
    }
    glLoadIdentity();
}

PosterParts::~PosterParts()
{
    Show(everywhere);
}

int PosterParts::Show(const PictureArea& area)
{
    int shown = 0;
    for (const Part& part : parts_)
    {
        if (part.area.right < area.left || part.area.left > area.right ||
            part.area.top < area.bottom || part.area.bottom > area.top)
        {
            part.node->SetDeleted();
        }
        else
        {
            part.node->ClearDeleted();
            ++shown;
        }
    }
    return shown;
}
