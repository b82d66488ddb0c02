// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Opens the font that a user means: by its names and looks, or by its file.

#include "platform/Export.h"
#include "platform/FontMatching.h"
#include "platform/ShapingFace.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane
{

/// Which font is wanted. Exactly one of \c name, \c pattern and \c file is not empty.
struct FontQuery
{
    /// A family ("Inter"), a family with words of its style ("Inter Semi Bold Italic"), a full
    /// name, or a PostScript name. Case does not count.
    std::string name;
    /// A pattern of the machine's font configuration, such as "serif:bold:lang=fa".
    std::string pattern;
    std::string file;
    int index = 0;  ///< the number of the face in \c file, from 0

    /// Looks that count more than words of the style. For a file they move a variable font's axes.
    std::optional<int> weight;    ///< 1 to 1000; 400 is regular, 700 bold
    std::optional<double> width;  ///< percent of the normal width, 10 to 1000
    std::optional<bool> isItalic;

    std::string instance;         ///< the name of a named instance; may be empty
    std::vector<AxisValue> axes;  ///< values on axes, which count more than everything else
};

struct ChosenFont
{
    std::shared_ptr<const ShapingFace> face;
    /// What is not as it was asked for: an axis that the font lacks or that was out of range, and
    /// looks that the family does not have.
    std::vector<std::string> notices;
};

/// Opens a font. Throws OptionError for a field that makes no sense, and Error when there is no
/// such font or it cannot be opened.
ORVANE_API ChosenFont OpenFont(const FontQuery& query);

/// Changes looks by words of a style, such as "Semi Bold Italic" or "condensed". Returns false, and
/// changes nothing, when there is an unknown word or none.
ORVANE_API bool ReadStyleWords(std::string_view words, FontLooks* looks);

}  // namespace orvane
