// SPDX-License-Identifier: MIT
#include "solids/drawing/TextMeshDrawing.h"

#include "extrude/ExtrusionData.h"
#include "extrude/LetterDrawing.h"
#include "extrude/OrvFont.h"
#include "extrude/OrvGlyph.h"
#include "scene/DrawingParameters.h"
#include "solids/OrvProfileString.h"
#include "solids/SolidSurface.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <typeinfo>
#include <utility>

namespace orvane
{

namespace
{

/// Whether the edges of a bevelled or rounded letter take up its whole depth, so that it has no
/// wall. True also for unknown sides, because such a letter has neither walls nor bevels.
bool IsWallEmpty(BevelSides sides, const ExtrusionData& extrusion)
{
    switch (sides)
    {
        case BevelSides::Front:
            return extrusion.backZ == extrusion.frontBevelZ;
        case BevelSides::Back:
            return extrusion.backBevelZ == extrusion.frontZ;
        case BevelSides::Both:
            return extrusion.backBevelZ == extrusion.frontBevelZ;
        default:
            return true;
    }
}

/// The glyph that a font draws for an index; null when there is none.
const OrvGlyph* DrawableGlyph(const OrvFont& font, int index)
{
    if (index < 0 || index >= font.glyphCount || index >= font.glyphs.GetSize())
    {
        return nullptr;
    }
    const OrvGlyph* const glyph = font.glyphs.GetAt(index);
    return glyph != nullptr && !glyph->IsInvalid() ? glyph : nullptr;
}

/// The text as one that may have profiles; null when it is another one.
const OrvProfileString* AsProfileString(const OrvFontString& text)
{
    // Comparing types spares most texts the search through base classes, which takes longer.
    return typeid(text) == typeid(OrvFontString) ? nullptr
                                                 : dynamic_cast<const OrvProfileString*>(&text);
}

/// The text as one with profiles; null when it is another one.
const OrvProfileString* Profiled(const OrvFontString& text)
{
    const OrvProfileString* const string = AsProfileString(text);
    return string != nullptr && string->HasProfile() ? string : nullptr;
}

}  // namespace

/// The parts that the letters of a text have, and their materials. Parts of equal materials have
/// the same pointer.
struct TextMeshDrawing::Materials
{
    Materials(const OrvFontString& text, const ExtrusionData& extrusion)
        : Materials(text, extrusion,
                    {text.GetFaceColor(),
                     text.ShouldUseEdgeColor() ? text.GetEdgeColor() : text.GetFaceColor(),
                     text.ShouldUseBevelColor() ? text.GetBevelColor() : text.GetFaceColor()})
    {}
    Materials(const OrvFontString& text, const ExtrusionData& extrusion,
              const SurfaceMaterials& materials)
        : face(materials.face), edge(materials.edge), bevel(materials.bevel)
    {
        if (Profiled(text) != nullptr)
        {
            partCount = 3;
            SetMaterials(true);
            return;
        }
        const auto style = static_cast<EdgeStyle>(text.GetBevelStyle());
        const bool isSquare = style == EdgeStyle::Square;
        const bool hasRings = style == EdgeStyle::Bevel || style == EdgeStyle::Round;
        partCount = isSquare ? 2 : hasRings ? 3 : 1;
        const auto sides = static_cast<BevelSides>(text.GetBevelLocation());
        SetMaterials(isSquare || !IsWallEmpty(sides, extrusion));
    }
    Materials(const Materials&) = delete;
    Materials& operator=(const Materials&) = delete;

    NamedColor face;
    NamedColor edge;
    NamedColor bevel;
    std::size_t partCount;
    const NamedColor* ofParts[3] = {&face, &face, &face};

private:
    void SetMaterials(bool usesEdge)
    {
        if (usesEdge && !AreSame(edge, face))
        {
            ofParts[1] = &edge;
        }
        if (!AreSame(bevel, face))
        {
            ofParts[2] = AreSame(bevel, edge) ? &edge : &bevel;
        }
    }
};

/// The materials of a text's letters.
struct TextMeshDrawing::LetterMaterials
{
    LetterMaterials(const OrvFontString& text, const ExtrusionData& extrusion)
        : ofText(text, extrusion)
    {}

    const Materials& Of(const Shape& shape) const
    {
        const auto found = ofShapes.find(&shape);
        return found != ofShapes.end() ? found->second : ofText;
    }

    Materials ofText;
    /// Of a text whose letters have materials of their own (OrvProfileString::HasLetterColors).
    std::unordered_map<const Shape*, Materials> ofShapes;
};

TextMeshDrawing::ShapeInputs::ShapeInputs(const OrvFontString& text, const ExtrusionData& extrusion)
    : font(text.GetFont()),
      fontRecord(*std::as_const(*text.GetFont()).GetEnumLogFont()),
      extrusionNumbers{extrusion.backBevelZ,  extrusion.backZ,        extrusion.backRoundZ,
                       extrusion.bevelDepth,  extrusion.frontBevelZ,  extrusion.frontZ,
                       extrusion.frontRoundZ, extrusion.scale.x,      extrusion.scale.y,
                       extrusion.scale.z,     extrusion.textureRepeat},
      extrusionFlags(extrusion.flags),
      style(text.GetBevelStyle()),
      location(text.GetBevelLocation())
{
    if (const auto* const profiled = Profiled(text))
    {
        profile = profiled->CurrentSettings();
    }
}

bool TextMeshDrawing::ShapeInputs::operator==(const ShapeInputs& other) const
{
    // Floats are compared bit by bit, so that a number that is no number is equal to itself.
    using NumberBits = std::array<std::uint32_t, std::tuple_size_v<decltype(extrusionNumbers)>>;
    return font == other.font && extrusionFlags == other.extrusionFlags && style == other.style &&
           location == other.location && profile == other.profile &&
           std::memcmp(&fontRecord, &other.fontRecord, sizeof fontRecord) == 0 &&
           std::bit_cast<NumberBits>(extrusionNumbers) ==
               std::bit_cast<NumberBits>(other.extrusionNumbers);
}

TextMeshDrawing::LayoutInputs::LayoutInputs(const OrvFontString& string)
    : text(string.GetTextString()->Text()),
      stringFlags(string.stringFlags),
      justification(string.GetJustification()),
      firstLineOffset(string.GetFirstLineOffset()),
      characterSpacing(string.GetInterCharacterSpacing()),
      lineSpacing(string.GetInterLineSpacing()),
      height(string.GetScaledDimensions().y)
{}

std::size_t TextMeshDrawing::Bytes() const
{
    return buffers.Bytes() + numbers_.size() * sizeof(float) +
           indices_.size() * sizeof(std::uint32_t) + shapes_.size() * sizeof(Shape) +
           letters_.size() * sizeof(Letter) + lines_.size() * sizeof(Line) +
           (layoutInputs_ ? layoutInputs_->text.size() : 0);
}

SolidDrawing TextMeshDrawing::Draw(OrvFontString& text, DrawingParameters& parameters,
                                   std::size_t room)
{
    const ExtrusionData extrusion = text.GetExtrusionData();
    Update(text, extrusion);
    if (!hasDrawable_)
    {
        return SolidDrawing::Drawn;
    }
    if (!areUploaded_)
    {
        // The shapes are in this object and in the buffers.
        if (2 * (numbers_.size() * sizeof(float) + indices_.size() * sizeof(std::uint32_t)) > room)
        {
            buffers.Free();
            return SolidDrawing::NotDrawn;
        }
        buffers.Set(numbers_, isTextured_, indices_);
        areUploaded_ = true;
    }
    LetterMaterials materials(text, extrusion);
    const OrvProfileString* const string = AsProfileString(text);
    if (string != nullptr && string->HasLetterColors())
    {
        for (const auto& [number, shape] : shapes_)
        {
            materials.ofShapes.try_emplace(&shape, text, extrusion, string->MaterialsOf(number));
        }
    }
    const SolidDrawing result = DrawLetters(text, parameters, materials);
    if (const Shape* const last = LastShape())
    {
        SetCurrentAttributes(last->lastVertex, isTextured_);
    }
    return result;
}

void TextMeshDrawing::Update(OrvFontString& text, const ExtrusionData& extrusion)
{
    const ShapeInputs shapeInputs(text, extrusion);
    LayoutInputs layoutInputs(text);
    const bool isFused =
        shapeInputs.profile && shapeInputs.profile->fusion != LetterFusion::Separate;
    const bool isLayoutKept = layoutInputs_ == layoutInputs;
    const bool areShapesKept = shapeInputs_ != nullptr && shapeInputs == *shapeInputs_ &&
                               AreGlyphsKept(*text.GetFont()) && (isLayoutKept || !isFused);
    if (areShapesKept && isLayoutKept)
    {
        return;
    }
    layoutInputs_.reset();  // in case there is too little memory for what follows
    if (!areShapesKept)
    {
        shapeInputs_ = std::make_unique<ShapeInputs>(shapeInputs);
        shapes_.clear();
        numbers_.clear();
        indices_.clear();
        areUploaded_ = false;
        isTextured_ = extrusion.ShouldTexture() != 0;
    }
    PlaceLetters(text);
    layoutInputs_ = std::move(layoutInputs);
}

void TextMeshDrawing::PlaceLetters(OrvFontString& text)
{
    letters_.clear();
    lines_.clear();
    hasDrawable_ = false;
    const bool isProfiled = shapeInputs_->profile.has_value();
    int line = -1;
    double x = 0;
    text.PlaceSolids([&](const PlacedLetter& letter) {
        const Shape& shape = ShapeOf(text, letter.glyphIndex);
        if (isProfiled)
        {
            letters_.push_back({&shape, 0});
            lines_.push_back({letter.x, letter.y, letters_.size()});
        }
        else
        {
            // Marks may stand above or below the baseline.
            if (letter.line != line || letter.y != lines_.back().y)
            {
                line = letter.line;
                x = 0;
                lines_.push_back({0, letter.y, 0});
            }
            letters_.push_back({&shape, letter.x - x});
            lines_.back().endLetter = letters_.size();
            x = letter.x;
        }
        hasDrawable_ = hasDrawable_ || shape.isDrawn;
    });
}

bool TextMeshDrawing::AreGlyphsKept(const OrvFont& font) const
{
    return shapeInputs_->profile ||
           std::all_of(shapes_.begin(), shapes_.end(), [&font](const auto& each) {
               return each.second.glyph == DrawableGlyph(font, each.first);
           });
}

const TextMeshDrawing::Shape& TextMeshDrawing::ShapeOf(OrvFontString& text, int number)
{
    const auto found = shapes_.find(number);
    return found != shapes_.end() ? found->second
                                  : shapes_.emplace(number, MakeShape(text, number)).first->second;
}

TextMeshDrawing::Shape TextMeshDrawing::MakeShape(OrvFontString& text, int number)
{
    Shape shape;
    shape.isDrawn = shapeInputs_->profile.has_value();
    if (!shape.isDrawn)
    {
        shape.glyph = DrawableGlyph(*text.GetFont(), number);
        shape.isDrawn = shape.glyph != nullptr;
    }
    if (!shape.isDrawn)
    {
        return shape;
    }
    recorder_.Clear();
    text.RecordSolid(number, recorder_);
    if (recorder_.Vertices().empty())
    {
        return shape;
    }
    areUploaded_ = false;
    const std::size_t floats = MeshBuffers::FloatsPerVertex(isTextured_);
    // Vertices that a failure for want of memory left incomplete belong to no shape.
    numbers_.resize(numbers_.size() - numbers_.size() % floats);
    shape.firstVertex = numbers_.size() / floats;
    shape.endVertex = shape.firstVertex + recorder_.Vertices().size();
    for (const MeshVertex& vertex : recorder_.Vertices())
    {
        AppendVertex(vertex, isTextured_, numbers_);
    }
    const std::size_t first = indices_.size();
    for (const std::uint32_t vertex : recorder_.RenderedIndices())
    {
        indices_.push_back(static_cast<std::uint32_t>(shape.firstVertex) + vertex);
    }
    shape.partBorders.fill(first);
    for (const SurfaceRecorder::Run& run : recorder_.Runs())
    {
        for (auto part = static_cast<std::size_t>(run.part); part < partCount; ++part)
        {
            shape.partBorders[part + 1] = first + run.firstIndex + run.indexCount;
        }
    }
    shape.lastVertex = recorder_.Vertices()[recorder_.RenderedIndices().back()];
    return shape;
}

SolidDrawing TextMeshDrawing::DrawLetters(OrvFontString& text, DrawingParameters& parameters,
                                          const LetterMaterials& ofLetters) const
{
    const LetterDrawing state(parameters);
    const MeshBuffers::Binding binding(buffers);
    glFrontFace(GL_CCW);
    const NamedColor* current = nullptr;
    std::size_t next = 0;
    for (const Line& line : lines_)
    {
        glPushMatrix();
        glTranslated(line.x, line.y, 0);
        for (; next < line.endLetter; ++next)
        {
            if (text.ShouldTerminateDrawing(&parameters))
            {
                glPopMatrix();
                return SolidDrawing::Stopped;
            }
            const Letter& letter = letters_[next];
            if (letter.step != 0)
            {
                glTranslated(letter.step, 0, 0);
            }
            const Shape& shape = *letter.shape;
            if (!shape.isDrawn)
            {
                continue;
            }
            const Materials& materials = ofLetters.Of(shape);
            for (std::size_t part = 0; part < materials.partCount;)
            {
                const NamedColor* const material = materials.ofParts[part];
                const std::size_t first = shape.partBorders[part];
                while (part < materials.partCount && materials.ofParts[part] == material)
                {
                    ++part;
                }
                if (current != material)
                {
                    current = material;
                    state.UseMaterial(*material);
                }
                if (shape.partBorders[part] > first)
                {
                    binding.DrawTriangles(first, shape.partBorders[part] - first, shape.firstVertex,
                                          shape.endVertex - 1);
                }
            }
        }
        glPopMatrix();
    }
    return SolidDrawing::Drawn;
}

const TextMeshDrawing::Shape* TextMeshDrawing::LastShape() const
{
    const auto last = std::find_if(letters_.rbegin(), letters_.rend(), [](const Letter& letter) {
        return letter.shape->endVertex > letter.shape->firstVertex;
    });
    return last != letters_.rend() ? last->shape : nullptr;
}

}  // namespace orvane
