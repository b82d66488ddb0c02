// SPDX-License-Identifier: MIT
#pragma once

#include "document/SceneNames.h"
#include "orvane/orvane.h"
#include "platform/Export.h"

#include <memory>
#include <string>
#include <vector>

class SceneObject;
class ViewObject;

namespace orvane
{

/// Something that lies under a pixel.
struct PickedPart
{
    HitKind kind = HitKind::Node;
    NodePath path;  ///< of the node; empty for a light
    /// The index of the character in the text's string, in which a line end counts as two
    /// characters; or of the triangle in the mesh; or of the area of outlines; or of the light.
    int index = 0;
    LetterPart part = LetterPart::Face;  ///< of a letter or an area
    double depth = 0;  ///< of the nearest point: 0 at the near clipping plane, 1 at the far one

    bool operator==(const PickedPart&) const = default;
};

/// Picks in pictures of one size. The scene must not change while this object lives.
class ORVANE_API ScenePicker
{
public:
    /// Throws Error when there is no OpenGL context or the scene cannot be picked. The context that
    /// was current before is not current afterwards; see KeptContext.
    /// \param view must be attached to a scene and have the size of the picture; it is copied
    explicit ScenePicker(const ViewObject& view);
    ~ScenePicker();
    ScenePicker(const ScenePicker&) = delete;
    ScenePicker& operator=(const ScenePicker&) = delete;

    /// Finds everything that lies under a pixel, nearest first. The pixel's centre decides. If
    /// nothing lies there, anything that touches the pixel is reported. If nothing touches the
    /// pixel and the view draws outlines, outlines up to two pixels away are reported.
    /// \param x, y in pixels from the left and the top, inside of the picture
    std::vector<PickedPart> Pick(int x, int y);

private:
    std::unique_ptr<ViewObject> view_;
};

}  // namespace orvane
