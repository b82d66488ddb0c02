// SPDX-License-Identifier: MIT
#pragma once

#include "import3ds/ThreeDStudioObject.h"

#include <array>
#include <optional>
#include <string>

class SceneObject;

/// How the meshes of a 3D Studio file come into a scene.
struct ImportLook
{
    std::string file;
    std::optional<std::array<double, 3>> at;  ///< of the middle of their box
    double size = 2;                          ///< of its longest edge; 0 keeps the file's
    std::array<double, 3> turn = {0, 0, 0};   ///< degrees, about z, then y, then x
};

/// Imports a 3D Studio file. Throws Failure, naming the file and the reason, when it cannot be read
/// or is none.
void ImportMeshes(ThreeDStudioObject& node, const std::string& path);

/// The same into a scene, sized, turned about its middle and placed: without a place, to the right
/// of what is there. Throws Failure also when there is no mesh in the file. Of a damaged file it
/// takes what is whole.
/// \return what is wrong with such a file; empty when nothing is.
std::string AddImport(SceneObject& scene, const ImportLook& look);
