// SPDX-License-Identifier: MIT
// OrvFont: laying out and measuring a text, line by line and character by character.
#include "extrude/EdgeStyle.h"
#include "extrude/ExtrusionData.h"
#include "extrude/OrvFont.h"
#include "extrude/OrvGlyph.h"
#include "geometry/DVector.h"
#include "platform/OpenGL.h"
#include "scene/DrawingParameters.h"
#include "scene/OrvString.h"

#include <algorithm>
#include <string_view>

namespace
{
constexpr char carriageReturn = 13;
constexpr char lineFeed = 10;

/// A line's characters: from index first up to but not including index end. At index end lies a
/// carriage return or the end of the text.
struct TextLine
{
    std::size_t first;
    std::size_t end;
};

TextLine LineFrom(std::string_view text, std::size_t first)
{
    return {first, std::min(text.find(carriageReturn, first), text.size())};
}

TextLine LineAfter(std::string_view text, const TextLine& line)
{
    std::size_t first = line.end + 1;
    if (first < text.size() && text[first] == lineFeed)
    {
        ++first;
    }
    return LineFrom(text, first);
}

double SignOf(double value)
{
    return value < 0 ? -1.0 : 1.0;
}

/// A range of positions, in object units, that grows to include further positions.
struct Span
{
    double minimum;
    double maximum;

    void Include(double value)
    {
        minimum = std::min(minimum, value);
        maximum = std::max(maximum, value);
    }
    double Length() const { return std::max(maximum - minimum, 0.0); }
};

/// The settings of a text that are needed to place its lines and characters.
struct Layout
{
    explicit Layout(const OrvString& string, const ExtrusionData& extrusion)
        : scaleX(extrusion.scale.x),
          scaleY(extrusion.scale.y),
          signX(SignOf(scaleX)),
          signY(SignOf(scaleY)),
          bevel(extrusion.bevelDepth),
          allowance(bevel * (string.ShouldScaleBevels() ? scaleX : signX)),
          characterSpacing(string.GetInterCharacterSpacing()),
          lineSpacing(string.GetInterLineSpacing()),
          adjusts(string.ShouldAdjustSpacingForBevels() != 0),
          scalesBevels(extrusion.ShouldScaleBevels() != 0)
    {}

    /// How far the pen moves on after a character, in object units. This includes the character
    /// spacing, also after the last character of a line. (Measuring a line adds the spacing only
    /// between its characters.)
    /// \param advance the character's own width, in ems.
    double Step(double advance) const
    {
        if (!adjusts)
        {
            return scaleX * advance + signX * characterSpacing;
        }
        return scalesBevels ? (2 * bevel + advance) * scaleX + signX * characterSpacing
                            : scaleX * advance + (2 * bevel + characterSpacing) * signX;
    }

    /// How far the next line lies below this line, in object units.
    double LineStep() const
    {
        if (!adjusts)
        {
            return signY * lineSpacing + scaleY;
        }
        return scalesBevels ? signY * lineSpacing + (2 * bevel + 1) * scaleY
                            : (2 * bevel + lineSpacing) * signY + scaleY;
    }

    double scaleX, scaleY;
    double signX, signY;
    double bevel;      ///< the width of the edge, before any scale
    double allowance;  ///< the room that the edge takes on one side of a character, in object units
    double characterSpacing, lineSpacing;
    bool adjusts;       ///< whether characters and lines move apart by the width of their edges
    bool scalesBevels;  ///< whether the edges are scaled with the text
};

/// How far a line is moved along x for its alignment, in object units. A value that has no name in
/// Alignment counts as Left.
double AlignmentOffset(orvane::Alignment alignment, const Span& line)
{
    switch (alignment)
    {
        case orvane::Alignment::Center:
            return -(line.minimum + line.maximum) / 2;
        case orvane::Alignment::Right:
            return -line.maximum;
        case orvane::Alignment::Left:
        default:
            return -line.minimum;
    }
}

/// The extents of a text at one scale, in object units. They grow with each character that is
/// added.
struct Extents
{
    double unitX, unitY;    ///< the length of one em: the scale or its sign
    double bevelX, bevelY;  ///< the width of the edge
    double x = 0;           ///< where the next character begins
    double y = 0;           ///< the baseline of the current line
    Span across = {0, 0};
    Span down = {1e7, -1e7};  // empty until the first character

    void AddCharacter(double advance, const OrvGlyph& glyph, bool adjusts)
    {
        x += advance * unitX;
        double top = y + unitY * glyph.GetYMax();
        double bottom = y + unitY * glyph.GetYMin();
        if (adjusts)
        {
            x += 2 * bevelX;
            top += bevelY;
            bottom -= bevelY;
        }
        across.Include(x);
        down.Include(top);
        down.Include(bottom);
    }

    DVector Size(double depth) const { return DVector(across.Length(), down.Length(), depth); }
};
}  // namespace

int OrvFont::TextOutA(OrvString* string, DrawingParameters* parameters)
{
    return DrawText(string, parameters, CharacterNames::None);
}

int OrvFont::DrawNamedCharacters(OrvString* string, DrawingParameters* parameters)
{
    return DrawText(string, parameters, CharacterNames::Indices);
}

template <typename Target>
int OrvFont::LayOut(OrvString* string, const ExtrusionData& extrusion, Target& target)
{
    const std::string_view text = string->textString.Text();
    if (text.empty())
    {
        return 1;
    }
    const Layout layout(*string, extrusion);
    const auto alignment = static_cast<orvane::Alignment>(string->GetJustification());
    double lineY = string->GetScaledDimensions().y / 2 - string->GetFirstLineOffset();

    for (TextLine line = LineFrom(text, 0); line.first < text.size(); line = LineAfter(text, line))
    {
        target.BeginLine(lineY);

        double x = -layout.allowance;
        Span width = {std::min(0.0, x), std::max(0.0, x)};
        for (std::size_t k = line.first; k < line.end; ++k)
        {
            const unsigned char character = text[k];
            x += layout.scaleX * AdvanceInEms(LookupGlyphIndex(character));
            if (layout.adjusts)
            {
                x += 2 * layout.allowance;
            }
            width.Include(x);
            if (k + 1 < line.end)
            {
                x += layout.signX * layout.characterSpacing;
                width.Include(x);
            }
        }
        target.MoveRight(AlignmentOffset(alignment, width));

        for (std::size_t k = line.first; k < line.end; ++k)
        {
            if (target.ShouldStop())
            {
                target.EndLine();
                return 0;
            }
            const int glyphIndex = LookupGlyphIndex(static_cast<unsigned char>(text[k]));
            target.Letter(k, glyphIndex);
            target.MoveRight(layout.Step(AdvanceInEms(glyphIndex)));
        }
        lineY -= layout.LineStep();
        target.EndLine();
    }
    return 1;
}

int OrvFont::DrawText(OrvString* string, DrawingParameters* parameters, CharacterNames names)
{
    struct Drawing
    {
        void BeginLine(double y) const
        {
            glPushMatrix();
            glTranslated(0, y, 0);
        }
        void MoveRight(double distance) const { glTranslated(distance, 0, 0); }
        bool ShouldStop() const { return string->ShouldTerminateDrawing(parameters) != 0; }
        void Letter(std::size_t character, int glyphIndex) const
        {
            if (named)
            {
                glPushName(static_cast<GLuint>(character));
            }
            if (solid)
            {
                font->RenderGlyph(glyphIndex, string, extrusion, parameters);
            }
            else if (wireframe)
            {
                font->DrawGlyph(glyphIndex, string, extrusion, parameters);
            }
            if (named)
            {
                glPopName();
            }
        }
        void EndLine() const { glPopMatrix(); }

        OrvFont* font;
        OrvString* string;
        const ExtrusionData& extrusion;
        DrawingParameters* parameters;
        bool named;
        bool solid;
        bool wireframe;
    };
    const ExtrusionData extrusion = string->GetExtrusionData();
    const Drawing drawing = {this,
                             string,
                             extrusion,
                             parameters,
                             names == CharacterNames::Indices,
                             parameters->IsRender() != 0,
                             parameters->IsOutline() != 0};
    return LayOut(string, extrusion, drawing);
}

void OrvFont::PlaceLetters(OrvString* string,
                           const std::function<void(const orvane::PlacedLetter&)>& visit)
{
    struct Pen
    {
        void BeginLine(double y) { letter = {0, letter.line + 1, 0, 0, y}; }
        void MoveRight(double distance) { letter.x += distance; }
        bool ShouldStop() const { return false; }
        void Letter(std::size_t character, int glyphIndex)
        {
            letter.character = character;
            letter.glyphIndex = glyphIndex;
            visit(letter);
        }
        void EndLine() const {}

        const std::function<void(const orvane::PlacedLetter&)>& visit;
        orvane::PlacedLetter letter = {0, -1, 0, 0, 0};
    };
    Pen pen = {visit};
    LayOut(string, string->GetExtrusionData(), pen);
}

void OrvFont::CalculateStringExtents(OrvString* string, DVector* unscaledSize, DVector* scaledSize,
                                     DVector* third)
{
    *unscaledSize = *scaledSize = *third = DVector(0, 0, 0);
    const std::string_view text = string->textString.Text();
    if (text.empty())
    {
        return;
    }
    const double bevel = string->GetAllowableBevelDepth();
    const DVector scale = string->GetScale();
    const double signX = SignOf(scale.x);
    const double signY = SignOf(scale.y);
    const double characterSpacing = string->GetInterCharacterSpacing();
    const double lineSpacing = string->GetInterLineSpacing();
    const bool adjusts = string->ShouldAdjustSpacingForBevels() != 0;
    const bool scalesBevels = string->ShouldScaleBevels() != 0;

    Extents unscaled = {signX, signY, bevel * signX, bevel * signY};
    Extents scaled = {scale.x, scale.y, bevel * (scalesBevels ? scale.x : signX),
                      bevel * (scalesBevels ? scale.y : signY)};

    for (TextLine line = LineFrom(text, 0); line.first < text.size(); line = LineAfter(text, line))
    {
        // Required: measuring starts each line at this x, although drawing starts each line one
        // edge width to the left of 0.
        unscaled.x = adjusts ? 0 : 2 * unscaled.bevelX;
        scaled.x = adjusts ? 0 : 2 * scaled.bevelX;
        for (std::size_t k = line.first; k < line.end; ++k)
        {
            const int glyphIndex = LookupGlyphIndex(static_cast<unsigned char>(text[k]));
            const double advance = AdvanceInEms(glyphIndex);
            const OrvGlyph* const glyph = ValidGlyph(glyphIndex);
            if (glyph == nullptr)
            {
                continue;
            }
            unscaled.AddCharacter(advance, *glyph, adjusts);
            scaled.AddCharacter(advance, *glyph, adjusts);
            if (k + 1 < line.end)
            {
                unscaled.x += characterSpacing * signX;
                scaled.x += characterSpacing * signX;
            }
        }
        if (!adjusts)
        {
            unscaled.y -= signY + signY * lineSpacing;
            scaled.y -= scale.y + signY * lineSpacing;
        }
        else
        {
            unscaled.y -= signY * (2 * bevel + 1) + signY * lineSpacing;
            scaled.y -= scalesBevels ? scale.y * (2 * bevel + 1) + signY * lineSpacing
                                     : signY * 2 * bevel + scale.y + signY * lineSpacing;
        }
    }
    string->SetFirstLineOffset(static_cast<float>(scaled.down.maximum));
    *unscaledSize = unscaled.Size(1.0);
    *scaledSize = scaled.Size(scale.z);
}
