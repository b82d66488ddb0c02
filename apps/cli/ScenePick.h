// SPDX-License-Identifier: MIT
#pragma once

#include "apps/cli/SceneNames.h"

#include <memory>
#include <string>
#include <vector>

class GLMemoryDIB;
class SceneDocument;

/// Something that lies under a pixel.
struct PickedPart
{
    enum Kind
    {
        node,       ///< with nothing to tell apart in it, as a box
        character,  ///< of a text
        triangle,   ///< of a mesh
        light       ///< of the scene's pool; drawn as a flashlight
    };

    Kind kind = node;
    NodePath path;     ///< of the node; empty for a light
    int index = 0;     ///< of the character in the string, the triangle in the mesh, or the light
    std::string part;  ///< of a character: face, edge, bevel or outline
    double depth = 0;  ///< of its foremost point there: 0 at the near clipping plane, 1 at the far

    bool operator==(const PickedPart&) const = default;
};

/// Picks in pictures of one size of a document, which stays as it is meanwhile.
class ScenePicker
{
public:
    /// Gives the document's view that size. Throws Failure when there is no OpenGL context or the
    /// scene cannot be picked.
    ScenePicker(SceneDocument& document, int width, int height);
    ~ScenePicker();
    ScenePicker(const ScenePicker&) = delete;
    ScenePicker& operator=(const ScenePicker&) = delete;

    /// What lies under a pixel, nearest first: under its middle, or, when nothing does, anywhere in
    /// it. Wires are also found two pixels beside it.
    /// \param x, y from the left and the top, inside the picture
    std::vector<PickedPart> Pick(int x, int y);

private:
    SceneDocument& document_;
    std::unique_ptr<GLMemoryDIB> target_;
};
