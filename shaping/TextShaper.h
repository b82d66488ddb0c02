// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"
#include "shaping/TextLayout.h"

#include <memory>
#include <string_view>

namespace orvane
{

/// Lays out texts of any language: finds the order, the faces, the glyphs and the lines.
///
/// It keeps what it has shaped, so that a text of which little has changed is laid out quickly, up
/// to mostCachedBytes. The result depends on the text, the options, the user's language and the
/// installed fonts alone. Installed fonts that it found for a letter stay those for the letter as
/// long as the object lives. Only one thread at a time may use an object.
class ORVANE_API TextShaper
{
public:
    /// Bytes: the most memory of runs that are kept, 4 MiB.
    static constexpr std::size_t mostCachedBytes = std::size_t{4} << 20;

    TextShaper();
    ~TextShaper();
    TextShaper(const TextShaper&) = delete;
    TextShaper& operator=(const TextShaper&) = delete;

    /// Lays out a text. Throws Error for a text that is not UTF-8, for a text or a font beyond a
    /// limit of platform/Limits.h, and OptionError, which names the field, for an option that makes
    /// no sense.
    /// \param utf8 lines end with LF, CR LF, CR, U+0085, U+2028 or U+2029, which separate them
    TextLayout LayOut(std::string_view utf8, const LayoutOptions& options);

    /// Lays out a text as large as a box allows: lines are broken so that the letters become as
    /// large as they can. LayoutOptions::width is not used. The height is that of the fonts, from
    /// the ascent of the first line to the descent of the last.
    /// \param width in any unit, more than 0; of the widest line
    /// \param height in the same unit, more than 0
    FittedText FitToBox(std::string_view utf8, const LayoutOptions& options, double width,
                        double height);

    /// The memory of the runs that are kept.
    std::size_t CachedBytes() const;

private:
    struct Parts;

    std::unique_ptr<Parts> parts_;
};

}  // namespace orvane
