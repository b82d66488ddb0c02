// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The outlines that are handed over for a face's glyphs: tried out, and put right where need be.

#include "platform/Export.h"
#include "platform/posix/fonts/GlyphOutline.h"

#include <optional>
#include <unordered_map>
#include <vector>

namespace posix
{

/// What became of one glyph's outline.
struct ProvidedOutline
{
    bool converted = false;  ///< from cubic curves
    bool turned = false;     ///< contours that ran the wrong way were reversed
    bool repaired = false;   ///< rebuilt as the border of what it fills
    bool failed = false;     ///< does not come out right, and could not be repaired

    /// What is handed over, at one whole unit for each unit of the design; nothing when that is
    /// the font's own outline, untouched.
    std::optional<NativeOutline> outline;
};

/// Tries an outline of one pixel per design unit and, if it does not come out right, repairs it.
/// \param converted whether it was made of cubic curves and so differs from the font's own already
ORVANE_API ProvidedOutline ProvideOutline(const NativeOutline& outline, bool converted,
                                          int unitsPerEm);

/// The outline at another size, in 1/64 pixels.
NativeOutline Scaled(const NativeOutline& outline, int pixelsPerEm, int unitsPerEm);

/// What became of each glyph that has been asked for, by its index.
class FaceOutlines
{
public:
    /// Null for a glyph that has not been asked for.
    ORVANE_API const ProvidedOutline* Find(FT_UInt glyph) const;
    const ProvidedOutline& Keep(FT_UInt glyph, ProvidedOutline provided);

private:
    std::vector<bool> untouched_;  ///< the fonts' own that come out right: nearly all
    std::unordered_map<FT_UInt, ProvidedOutline> others_;
};

}  // namespace posix
