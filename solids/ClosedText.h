// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"
#include "profiles/EdgeProfile.h"

#include <memory>

class OrvFontString;

namespace orvane
{

class OrvProfileString;

/// Whether a text consists of closed solids already.
ORVANE_API bool IsClosedText(const OrvFontString& text);

/// The profile with the measures of a text's edges: none for square ones ("0,0"), a chamfer as wide
/// and as deep as a bevel, and a quarter of a circle with the radius of a rounding. Edges of an
/// unknown style, and those of a width that is 0 or no number, are square. Edges are at most as
/// wide as the text is deep. Throws Error when they are still wider than a profile can be.
/// \param text one of which IsClosedText is false
ORVANE_API EdgeProfile ClosedProfileOf(const OrvFontString& text);

/// A text of closed solids with the profile of ClosedProfileOf. It is otherwise a copy of the other
/// text, without children. Throws what ClosedProfileOf throws.
ORVANE_API std::unique_ptr<OrvProfileString> MakeClosedText(const OrvFontString& text);

}  // namespace orvane
