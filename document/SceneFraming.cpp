// SPDX-License-Identifier: MIT
#include "document/SceneFraming.h"

#include "document/OptionRange.h"
#include "orvane/Error.h"
#include "platform/Limits.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace orvane
{

namespace
{

constexpr double margin = 0.08;  // of the picture's width or height, kept free on each side
constexpr double degree = std::numbers::pi / 180;

// The allowed range of the distance from the camera to the nearest point of the scene, in units of
// the camera's coordinates. The scene is scaled to bring the distance into this range, where the
// depth buffer is precise enough and no part of the scene lies in front of the near clipping plane.
constexpr double nearestDistance = 1;
constexpr double farthestDistance = 10;

/// Moves the camera sideways until the scene appears in the middle of the picture.
void CentreScene(ViewObject& view)
{
    const Vector low = view.GetBoundsLocalMinimum();
    const Vector high = view.GetBoundsLocalMaximum();
    constexpr int rounds = 12;  // each round at least halves the distance from the middle
    for (int i = 0; i < rounds; ++i)
    {
        double least[2] = {1e30, 1e30};
        double most[2] = {-1e30, -1e30};
        double nearest = 1e30;
        for (int corner = 0; corner < 8; ++corner)
        {
            DVector point((corner & 1) != 0 ? high.x : low.x, (corner & 2) != 0 ? high.y : low.y,
                          (corner & 4) != 0 ? high.z : low.z);
            view.GetTransform()->TransformDVectors(&point, 1);
            const double slopes[2] = {point.x / -point.z, point.y / -point.z};
            for (int axis = 0; axis < 2; ++axis)
            {
                least[axis] = std::min(least[axis], slopes[axis]);
                most[axis] = std::max(most[axis], slopes[axis]);
            }
            nearest = std::min(nearest, -point.z);
        }
        view.Translate(
            DVector(-nearest * (least[0] + most[0]) / 2, -nearest * (least[1] + most[1]) / 2, 0.0));
    }
}

/// Moves the camera until the scene fills the picture up to the margin. To leave the margin free,
/// the lens is narrower during the move. Returns false when there is nothing to see.
bool ZoomWithMargin(ViewObject& view)
{
    const double angle = view.GetProjection().GetFieldOfViewAngle();
    view.SetProjectionFieldOfViewAngle(
        2 * std::atan(std::tan(angle / 2 * degree) * (1 - 2 * margin)) / degree);
    const bool moved = view.ZoomExtents() != 0;
    view.SetProjectionFieldOfViewAngle(angle);
    return moved;
}

}  // namespace

DrawingObject& AddNode(SceneObject& scene, std::unique_ptr<DrawingObject> node)
{
    scene.AddChild(node.get());
    return *node.release();
}

void CheckCameraOptions(const CameraOptions& options)
{
    constexpr double largest = std::numeric_limits<double>::max();
    for (const double angle : {options.turn.x, options.turn.y, options.turn.z})
    {
        CheckRange("turn", angle, -largest, largest);
    }
    CheckRange("fieldOfView", options.fieldOfView, 0.1, 170);
    if (options.lensLength)
    {
        CheckRange("lensLength", *options.lensLength, 1, 10000);
    }
}

void CheckSize(const Size& size)
{
    CheckRange("width", size.width, 1, largestPictureSide);
    CheckRange("height", size.height, 1, largestPictureSide);
}

void FrameScene(ViewObject& view, const CameraOptions& options, const Size& size)
{
    CoordinateTransform turned;
    turned.Rotate(options.turn.z, DVector(0.0, 0.0, 1.0));
    turned.Rotate(options.turn.y, DVector(0.0, 1.0, 0.0));
    turned.Rotate(options.turn.x, DVector(1.0, 0.0, 0.0));
    view.SetTransform(turned);
    view.SetUnscaledSize(size.width, size.height);
    view.SetViewSize(size.width, size.height);
    if (options.lensLength)
    {
        view.SetProjectionLensLength(*options.lensLength);
    }
    else
    {
        view.SetProjectionFieldOfViewAngle(options.fieldOfView);
    }
    options.orthographic ? view.SetProjectionOrthographic() : view.ClearProjectionOrthographic();

    if (ZoomWithMargin(view))
    {
        // The camera is at the origin and looks along -z, so this is the distance of the scene's
        // nearest point.
        view.CalculateBounds();
        const double distance = -view.GetBoundsGlobalMaximum().z;
        const double wanted = std::clamp(distance, nearestDistance, farthestDistance);
        if (wanted != distance && distance > 0)
        {
            const double factor = wanted / distance;
            view.GetTransform()->SetScale(DVector(factor, factor, factor));
            ZoomWithMargin(view);
        }
        if (options.orthographic)
        {
            view.SetProjectionOrthographicWidth(view.GetProjectionOrthographicWidth() /
                                                (1 - 2 * margin));
        }
        else
        {
            CentreScene(view);
        }
    }
    view.SaveReferenceAspect();
}

void SizeView(ViewObject& view, const Size& size)
{
    const ProjectionData lens = view.GetProjection();
    view.SetUnscaledSize(size.width, size.height);
    const bool hasFramedAspect = view.GetProjection().GetAspect() == lens.GetReferenceAspect();
    if (!hasFramedAspect && lens.referenceHeight > 0)
    {
        view.Resize(size.width, size.height);
    }
    view.SetViewSize(size.width, size.height);
}

std::optional<Size> FramedSize(const ViewObject& view)
{
    const ProjectionData lens = view.GetProjection();
    const double height = lens.referenceHeight;
    const double width = std::round(height * lens.GetReferenceAspect());
    // The numbers may come from a damaged file.
    constexpr double most = std::numeric_limits<int>::max();
    if (!(height >= 1 && height <= most && width >= 1 && width <= most))
    {
        return std::nullopt;
    }
    return Size{static_cast<int>(width), static_cast<int>(height)};
}

Size UnaskedSize(const ViewObject& view, const std::string& path)
{
    const Size size = FramedSize(view).value_or(defaultPictureSize);
    if (size.width > limits::maxPictureSide || size.height > limits::maxPictureSide)
    {
        throw Error(path.empty() ? "document" : path,
                    "a stored size of " + std::to_string(size.width) + " x " +
                        std::to_string(size.height) + " pixels",
                    "at most " + std::to_string(limits::maxPictureSide) +
                        " in each direction, or a size given for the picture");
    }
    return size;
}

}  // namespace orvane
