// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/SurfaceRecorder.h"
#include "platform/Fonts.h"
#include "solids/MeshDrawing.h"

#include <array>
#include <string>
#include <unordered_map>

class ExtrusionData;
class OrvFont;
class OrvFontString;
class OrvGlyph;

namespace orvane
{

/// The shapes of the different letters of a text, in one buffer, and the places of its letters. A
/// letter is drawn with the matrices of immediate mode, so that it covers the same pixels.
class TextMeshDrawing final : public MeshDrawing
{
public:
    using MeshDrawing::MeshDrawing;

    /// \param room the bytes that the shapes may take; a text with more is not drawn
    SolidDrawing Draw(OrvFontString& text, DrawingParameters& parameters, std::size_t room);
    std::size_t Bytes() const override;

private:
    /// The parts of a letter: Face, Edge and Bevel of MeshPart.
    static constexpr std::size_t partCount = 3;

    /// A letter with its origin at 0, 0.
    struct Shape
    {
        const OrvGlyph* glyph = nullptr;  ///< borrowed; null when the letter cannot be drawn
        std::size_t firstVertex = 0;
        std::size_t endVertex = 0;
        /// The parts follow each other in the indices. Part i begins at partBorders[i].
        std::array<std::size_t, partCount + 1> partBorders = {};
        MeshVertex lastVertex = {};  ///< the last one that immediate mode emits
    };
    struct Letter
    {
        const Shape* shape;
        double step;  ///< from the letter before, or from the beginning of the line, along x
    };
    struct Line
    {
        double y;
        std::size_t endLetter;
    };
    /// All that the shapes are made from, besides the glyphs.
    struct ShapeInputs
    {
        ShapeInputs(const OrvFontString& text, const ExtrusionData& extrusion);
        bool operator==(const ShapeInputs& other) const;

        const OrvFont* font;
        ENUMLOGFONTA fontRecord;
        std::array<float, 11> extrusionNumbers;
        DWORD extrusionFlags;
        int style;
        int location;
    };
    /// All that the places of letters are made from, besides the numbers of ShapeInputs.
    struct LayoutInputs
    {
        LayoutInputs() = default;
        explicit LayoutInputs(const OrvFontString& text);
        bool operator==(const LayoutInputs& other) const = default;

        std::string text;
        DWORD stringFlags = 0;
        int justification = 0;
        float firstLineOffset = 0;
        float characterSpacing = 0;
        float lineSpacing = 0;
        double height = 0;
    };
    struct Materials;

    void Update(OrvFontString& text, const ExtrusionData& extrusion);
    bool AreGlyphsKept(const OrvFont& font) const;
    const Shape& ShapeOf(OrvFontString& text, const ExtrusionData& extrusion, int glyphIndex);
    void AddShape(OrvFontString& text, const ExtrusionData& extrusion, int glyphIndex,
                  Shape& shape);
    SolidDrawing DrawLetters(OrvFontString& text, DrawingParameters& parameters,
                             const Materials& materials) const;
    /// The shape of the last letter that has vertices; null when no letter has.
    const Shape* LastShape() const;

    std::unique_ptr<ShapeInputs> shapeInputs_;  ///< null before the first draw
    LayoutInputs layoutInputs_;
    bool isTextured_ = false;
    SurfaceRecorder recorder_;
    std::unordered_map<int, Shape> shapes_;  ///< by glyph index
    std::vector<float> numbers_;             ///< of the vertices of all shapes
    std::vector<std::uint32_t> indices_;     ///< of all shapes
    bool areUploaded_ = false;               ///< all shapes are in the buffers
    bool hasDrawable_ = false;               ///< at least one letter can be drawn
    std::vector<Letter> letters_;
    std::vector<Line> lines_;
};

}  // namespace orvane
