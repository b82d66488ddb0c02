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

/// Glyphs are named by their index in the font. Not safe for use by several threads at a time.
class FaceOutlines
{
public:
    /// The result kept for a glyph; null when none was kept. Owned by this object.
    const ProvidedOutline* Find(std::uint32_t glyph) const;

    /// Keeps a result and returns the kept one. For a glyph whose own outline is handed over
    /// without a change, as nearly all are, only one bit is kept.
    const ProvidedOutline& Keep(std::uint32_t glyph, ProvidedOutline provided);

private:
    std::vector<bool> isUntouched_;  ///< by glyph index
    std::unordered_map<std::uint32_t, ProvidedOutline> others_;
};

}  // namespace orvane::contours
