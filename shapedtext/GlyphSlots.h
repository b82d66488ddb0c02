// SPDX-License-Identifier: MIT
#pragma once

#include "extrude/OrvFont.h"
#include "platform/ShapingFace.h"
#include "shapedtext/ColorGlyphs.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <tuple>
#include <vector>

namespace orvane
{

class SharedShaping;

/// The value of LetterShape::area for a letter of one colour.
constexpr std::size_t wholeGlyph = static_cast<std::size_t>(-1);

/// A letter of a text, or a part of a letter in one colour, as it is drawn wherever it stands.
struct LetterShape
{
    std::shared_ptr<const ShapingFace> face;
    std::uint32_t glyph = 0;
    double size = 1;       ///< of the em square
    std::size_t span = 0;  ///< the span whose materials it has; noSpan for those of the text
    std::size_t area = wholeGlyph;  ///< of a coloured glyph, in SharedShaping::colors
    double angle = 0;               ///< radians by which the letter is turned, counter-clockwise
};

/// The different letters of a text, with numbers that take the part of glyph indices in an OrvFont.
/// A number always means the same letter. The glyphs are borrowed from the cache that all texts
/// share.
class GlyphSlots : public OrvFont
{
public:
    explicit GlyphSlots(std::shared_ptr<SharedShaping> shared);
    ~GlyphSlots() override;

    /// The number of a letter, a new one if it has none.
    int SlotOf(const LetterShape& shape);
    const LetterShape& ShapeAt(int slot) const { return shapes_[static_cast<std::size_t>(slot)]; }
    /// The colour of a part of a coloured glyph. No value for other letters.
    const std::optional<ColorLayer>& ColorAt(int slot) const
    {
        return colors_[static_cast<std::size_t>(slot)];
    }
    int Count() const { return static_cast<int>(shapes_.size()); }
    /// The letter's glyph, built if it is not there; null when its outline cannot be read. It may
    /// go with the next call for another letter.
    const OrvGlyph* GlyphAt(int slot);
    /// The parts of a coloured glyph, see ColorGlyphs::AreasOf.
    const std::vector<ColorArea>& ColorAreasOf(const std::shared_ptr<const ShapingFace>& face,
                                               std::uint32_t glyph);
    /// Called by the cache when a glyph goes.
    void Forget(int slot) { glyphs.SetAt(slot, nullptr); }

    /// The name that information about the text shows.
    void SetName(const std::string& name) { fullName = CString(name); }

private:
    using Key = std::tuple<std::uint64_t, std::uint32_t, double, std::size_t, std::size_t, double>;

    HFONT FontOf(const ShapingFace& face);

    std::shared_ptr<SharedShaping> shared_;
    std::vector<LetterShape> shapes_;
    std::vector<std::optional<ColorLayer>> colors_;  // of the shapes
    std::map<Key, int> slots_;
    std::map<std::uint64_t, HFONT> fonts_;  // of the faces; owned
};

}  // namespace orvane
