// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"

#include <string>
#include <vector>

namespace orvane
{

class OrvOutlineShape;
class SceneDocument;
struct SolidMesh;

// Sentences without a full stop about solids that do not have the profile that their node asks for,
// such as: the letter "A" of the font "Lato Black" keeps square edges: PROBLEM. Only solids that
// were built are told, so ask after the scene was drawn or made into a mesh.

/// Those of a document's texts with profiles, each sentence once.
ORVANE_API std::vector<std::string> UncutTextsOf(const SceneDocument& document);
/// Those of a document's outlines, each sentence once.
ORVANE_API std::vector<std::string> UncutOutlinesOf(const SceneDocument& document);
/// Those of one node of outlines.
ORVANE_API std::vector<std::string> UncutAreasOf(OrvOutlineShape& outlines);
/// Those of texts whose edges MeshBuildOptions::closedTexts has replaced, each sentence once. The
/// process's code page must be that of the texts.
/// \param mesh its nodes are still those of a scene
ORVANE_API std::vector<std::string> UncutLettersOf(const SolidMesh& mesh);

}  // namespace orvane
