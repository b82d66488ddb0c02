// SPDX-License-Identifier: MIT
#include "document/poster/PosterParts.h"

#include "platform/OpenGL.h"
#include "scene/DrawingParameters.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <memory>

namespace orvane
{

namespace
{

// The most feedback values that are read for one node; they take 16 MB. A node with more values
// counts as seen everywhere.
constexpr GLsizei maxValues = 4'000'000;
// Feedback is drawn for a picture of this width and height, in pixels. The places are then divided
// by this number, because fractions hold for pictures of any size.
constexpr GLsizei feedbackSide = 4096;
constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr PictureArea everywhere = {-infinity, -infinity, infinity, infinity};

/// The smallest rectangle that contains all vertices of the feedback.
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
            const double x = values[i] / double{feedbackSide};
            const double y = values[i + 1] / double{feedbackSide};
            area = {std::min(area.left, x), std::min(area.bottom, y), std::max(area.right, x),
                    std::max(area.top, y)};
        }
    }
    return area;
}

bool Overlap(const PictureArea& a, const PictureArea& b)
{
    return a.right >= b.left && a.left <= b.right && a.top >= b.bottom && a.bottom <= b.top;
}

}  // namespace

PosterParts::PosterParts(ViewObject& view, const ProjectionData& picture,
                         const DrawingParameters& original)
{
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    picture.ApplyVolume();
    glViewport(0, 0, feedbackSide, feedbackSide);
    glMatrixMode(GL_MODELVIEW);
    glLoadMatrixd(view.GetCompositeMatrix());
    glMultMatrixd(view.GetScene()->GetCompositeMatrix());
    DrawingParameters parameters = original;
    parameters.ClearShowTextures();

    const auto values = std::make_unique_for_overwrite<GLfloat[]>(maxValues);
    glFeedbackBuffer(maxValues, GL_2D, values.get());
    const SceneObject& scene = *view.GetScene();
    const DrawingObjectList& children = *scene.GetChildren();
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
    std::sort(parts_.begin(), parts_.end(), [](const Part& a, const Part& b) {
        return std::less<const DrawingObject*>()(a.node, b.node);
    });
}

std::vector<const DrawingObject*> PosterParts::HiddenIn(const PictureArea& area) const
{
    std::vector<const DrawingObject*> hidden;
    for (const Part& part : parts_)
    {
        if (!Overlap(part.area, area))
        {
            hidden.push_back(part.node);
        }
    }
    return hidden;
}

}  // namespace orvane
