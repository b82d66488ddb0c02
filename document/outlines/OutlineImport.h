// SPDX-License-Identifier: MIT
#pragma once

#include "orvane/Options.h"
#include "platform/Export.h"
#include "shapes/SvgFile.h"

#include <memory>
#include <string>
#include <vector>

class SceneObject;

namespace orvane
{

class OrvOutlineShape;

/// Reads an SVG file. Nothing but this file is opened. Throws what ReadSvg throws, and Error when
/// the file cannot be opened or is too large.
ORVANE_API SvgDrawing ReadSvgFile(const std::string& path, const SvgOptions& options = {});

/// A node that is made of an SVG file.
struct OutlineImport
{
    std::unique_ptr<OrvOutlineShape> node;
    std::vector<std::string> notices;  ///< as AddedOutlines::notices
};

/// Makes a node of the areas of an SVG file, sized and placed for the scene, to which the caller
/// adds it with AddNode. Throws Error when the file cannot be read or draws nothing that is
/// supported, and OptionError for an option that is out of its range.
ORVANE_API OutlineImport MakeOutlines(SceneObject& scene, const std::string& path,
                                      const OutlineOptions& options);

}  // namespace orvane
