// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The results of ProvideOutline for the glyphs of one face (one style of one font), kept so that
/// each glyph is tried once.

#include "contours/ProvidedOutline.h"

#include <cstdint>
#include <unordered_map>
#include <vector>

namespace orvane::contours
{

/// Maps glyphs, given by their index in the font, to the results kept for them. Only one thread at
/// a time may use an object.
class FaceOutlines
{
public:
    /// The result kept for a glyph; null when none was kept. Owned by this object.
    const ProvidedOutline* Find(std::uint32_t glyph) const;

    /// Keeps a result and returns the kept one. For most glyphs the font's own outline is handed
    /// over without a change; such a result takes only one bit.
    const ProvidedOutline& Keep(std::uint32_t glyph, ProvidedOutline provided);

private:
    std::vector<bool> isUntouched_;  ///< by glyph index
    std::unordered_map<std::uint32_t, ProvidedOutline> others_;
};

}  // namespace orvane::contours
