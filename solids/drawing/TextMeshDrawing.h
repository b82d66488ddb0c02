// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/SurfaceRecorder.h"
#include "platform/Fonts.h"
#include "solids/ProfileTextSolids.h"
#include "solids/drawing/MeshDrawing.h"

#include <array>
#include <optional>
#include <string>
#include <unordered_map>

class ExtrusionData;
class OrvFont;
class OrvFontString;
class OrvGlyph;

namespace orvane
{

/// The shapes of the different letters of a text, in one buffer, and the places of its letters. A
/// letter is drawn with the matrices of immediate mode, so that it covers the same pixels. In a
/// text with profiles (OrvProfileString) the solids take the part of letters.
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
        /// Borrowed; null when the letter cannot be drawn, and in a text with profiles.
        const OrvGlyph* glyph = nullptr;
        bool isDrawn = false;  ///< also without triangles, as a space of a text with profiles
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
    /// Letters of the same height that are placed one from another. In a text with profiles each
    /// solid is a line.
    struct Line
    {
        double x;
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
        std::optional<ProfileTextSettings> profile;  ///< of an OrvProfileString
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
    struct LetterMaterials;

    void Update(OrvFontString& text, const ExtrusionData& extrusion);
    void PlaceLetters(OrvFontString& text);
    bool AreGlyphsKept(const OrvFont& font) const;
    const Shape& ShapeOf(OrvFontString& text, int number);
    /// \param number a glyph's index, or what else RecordSolid takes
    Shape MakeShape(OrvFontString& text, int number);
    SolidDrawing DrawLetters(OrvFontString& text, DrawingParameters& parameters,
                             const LetterMaterials& ofLetters) const;
    /// The shape of the last letter that has vertices; null when no letter has.
    const Shape* LastShape() const;

    std::unique_ptr<ShapeInputs> shapeInputs_;  ///< null before the first draw
    std::optional<LayoutInputs> layoutInputs_;  ///< empty while letters are not placed
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
