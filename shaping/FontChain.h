// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ShapingFace.h"

#include <memory>
#include <vector>

namespace orvane
{

/// The fonts of a text. Each letter, with its marks, is set in the first that has it.
struct FontChain
{
    std::vector<std::shared_ptr<const ShapingFace>> faces;  ///< at least one
    /// Whether letters that no face of the chain has are set in the installed font that the machine
    /// prefers for their script and language, with the weight and slant of the first face.
    bool usesInstalledFonts = true;
};

}  // namespace orvane
