// SPDX-License-Identifier: MIT
#include "shapedtext/OrvShapedString.h"

#include "document/Colors.h"
#include "extrude/ExtrusionData.h"
#include "geometry/SurfaceRecorder.h"
#include "orvane/Error.h"
#include "platform/OpenGL.h"
#include "platform/Utf8.h"
#include "scene/DrawingParameters.h"
#include "shapedtext/GlyphSlots.h"
#include "shapedtext/LaidText.h"
#include "shapedtext/LetterPlaces.h"
#include "shapedtext/SharedShaping.h"
#include "solids/SolidSurface.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

// Text, settings, bounds and drawing. Records are in OrvShapedStringArchive.cpp.

namespace orvane
{

namespace
{

ColorVector VectorOf(const ColorLayer& layer)
{
    return {static_cast<float>(layer.red), static_cast<float>(layer.green),
            static_cast<float>(layer.blue), static_cast<float>(layer.alpha)};
}

/// A name that no other colour has. That of the text's own colour is no colour.
std::string ColorNameOf(const ColorLayer& layer)
{
    return layer.usesTextColor ? "text" : ColorText(VectorOf(layer));
}

NamedColor MaterialOf(const ColorLayer& layer)
{
    return MakeMaterial(ColorNameOf(layer).c_str(), VectorOf(layer), 0.1f, 16);
}

}  // namespace

OrvShapedString::OrvShapedString()
    : shared_(SharedShaping::Get()),
      fonts_(std::make_shared<TextFonts>(OpenTextFonts({}))),
      slots_(std::make_shared<GlyphSlots>(shared_))
{
    bevelDepth = 0;
    bevelStyle = static_cast<int>(EdgeStyle::Square);
    font = slots_.get();
}

OrvShapedString::OrvShapedString(const OrvShapedString& other) = default;
OrvShapedString::~OrvShapedString() = default;
OrvShapedString& OrvShapedString::operator=(const OrvShapedString& other) = default;

// Text and settings ------------------------------------------------------------------------------

void OrvShapedString::SetText(std::string_view utf8, const ShapedTextSettings& settings)
{
    CheckSettings(settings);
    TextFonts fonts = OpenTextFonts(settings.fonts);
    ShapedTextSettings changed = settings;
    for (std::size_t i = 0; i < changed.fonts.size(); ++i)
    {
        changed.fonts[i].face = IdentityOf(*fonts.faces[i]);
    }
    SetText(utf8, std::move(changed), std::move(fonts));
}

void OrvShapedString::SetText(std::string_view utf8, ShapedTextSettings settings, TextFonts fonts)
{
    auto slots = std::make_shared<GlyphSlots>(shared_);
    auto laid = std::make_shared<LaidText>(
        LayOutText(utf8, settings, RoomOf(*this), fonts, shared_->shaper, *slots));
    const auto& first = fonts.faces.empty() ? fonts.standard : fonts.faces.front();
    slots->SetName(first != nullptr ? first->FullName() : std::string());
    fonts_ = std::make_shared<TextFonts>(std::move(fonts));
    textString = CString(std::string(utf8));
    settings_ = std::move(settings);
    laid_ = std::move(laid);
    slots_ = std::move(slots);
    font = slots_.get();
    paints_.clear();
    FindTransparency();
}

void OrvShapedString::SetText(std::string_view utf8)
{
    // A node whose text changes often does not keep the letters of all its texts.
    constexpr int mostSlots = 4'096;
    if (!settings_.spans.empty() || slots_->Count() > mostSlots)
    {
        ShapedTextSettings settings = settings_;
        settings.spans.clear();
        SetText(utf8, std::move(settings), TextFonts(*fonts_));
        return;
    }
    laid_ = std::make_shared<LaidText>(
        LayOutText(utf8, settings_, RoomOf(*this), *fonts_, shared_->shaper, *slots_));
    textString = CString(std::string(utf8));
}

const LaidText& OrvShapedString::CurrentLayout()
{
    const bool isOfText = laid_ != nullptr && laid_->text == textString.Text();
    if (isOfText && (!settings_.fit || laid_->room == RoomOf(*this)))
    {
        return *laid_;
    }
    if (laid_ != nullptr && !isOfText)
    {
        settings_.spans.clear();  // they belong to another text
    }
    auto laid = std::make_shared<LaidText>();
    try
    {
        *laid = LayOutText(ValidUtf8(textString.Text()), settings_, RoomOf(*this), *fonts_,
                           shared_->shaper, *slots_);
    }
    catch (const Error&)
    {
        *laid = {};
        laid->room = RoomOf(*this);
    }
    laid->text = textString.Text();
    laid_ = std::move(laid);
    return *laid_;
}

const TextLayout& OrvShapedString::GetLayout()
{
    return CurrentLayout().layout;
}

const std::vector<MissingCharacter>& OrvShapedString::GetMissingCharacters()
{
    return CurrentLayout().layout.missing;
}

std::vector<UnreadLetter> OrvShapedString::UnreadLetters()
{
    std::vector<UnreadLetter> unread;
    std::set<std::pair<std::string, std::string>> seen;
    const LaidText& laid = CurrentLayout();
    for (const LaidLetter& each : laid.letters)
    {
        if (slots_->GlyphAt(each.slot) == nullptr)
        {
            const PlacedGlyph& glyph = laid.layout.glyphs[each.glyph];
            UnreadLetter letter = {
                laid.text.substr(glyph.textBegin, glyph.textEnd - glyph.textBegin),
                laid.layout.faces[glyph.face]->FullName()};
            if (seen.emplace(letter.font, letter.letter).second)
            {
                unread.push_back(std::move(letter));
            }
        }
    }
    return unread;
}

std::size_t OrvShapedString::LetterEnd(std::size_t letter)
{
    const std::vector<PlacedGlyph>& glyphs = CurrentLayout().layout.glyphs;
    const auto found =
        std::find_if(glyphs.begin(), glyphs.end(),
                     [letter](const PlacedGlyph& glyph) { return glyph.textBegin == letter; });
    return found != glyphs.end() ? found->textEnd : letter + 1;
}

void OrvShapedString::SetHasProfile(bool hasProfile)
{
    hasProfile_ = hasProfile;
    if (hasProfile)
    {
        SetProfile(EdgeProfile(GetProfile()));
    }
}

std::unique_ptr<OrvProfileString> OrvShapedString::CopyWithProfile(const EdgeProfile& profile) const
{
    auto copy = std::make_unique<OrvShapedString>(*this);
    copy->hasProfile_ = true;
    copy->SetProfile(profile);
    return copy;
}

bool OrvShapedString::HasLetterColors() const
{
    return (laid_ != nullptr && laid_->hasAreas) ||
           std::any_of(settings_.spans.begin(), settings_.spans.end(),
                       [](const ShapedSpan& span) { return HasColors(span.style); });
}

void OrvShapedString::FindTransparency()
{
    SetTransparency();
    const auto isTransparent = [](const std::optional<NamedColor>& color) {
        return color && color->IsTransparent();
    };
    if ((laid_ != nullptr && laid_->hasTransparentAreas) ||
        std::any_of(settings_.spans.begin(), settings_.spans.end(), [&](const ShapedSpan& span) {
            return isTransparent(span.style.face) || isTransparent(span.style.edge) ||
                   isTransparent(span.style.bevel);
        }))
    {
        SetTransparent();
    }
}

// Bounds -----------------------------------------------------------------------------------------

void OrvShapedString::MeasureText(DVector* unscaledSize, DVector* scaledSize)
{
    const TextExtents extents = MeasureGlyphs(CurrentLayout(), *this, *slots_);
    *unscaledSize = extents.unscaled;
    *scaledSize = extents.scaled;
    pathLow_ = extents.low;
    pathHigh_ = extents.high;
    SetFirstLineOffset(static_cast<float>(extents.top));
}

int OrvShapedString::CalculateBounds()
{
    // Without a profile the text has the bounds of a text with square, bevelled or rounded edges.
    // NOLINTNEXTLINE(bugprone-parent-virtual-call)
    hasProfile_ ? OrvProfileString::CalculateBounds() : OrvFontString::CalculateBounds();
    FindTransparency();
    if (CurrentLayout().path != nullptr)
    {
        SetBoundsOnPath();
    }
    return 1;
}

// The base classes have set the bounds of a text with straight lines.
void OrvShapedString::SetBoundsOnPath()
{
    bounds.ResetLocalBounds();
    CalculateChildBounds();
    const double reach = hasProfile_ ? ReachOf(GetProfile()) : 0;
    const DVector scale = GetScale();
    const DVector margin = ShouldScaleBevels()
                               ? DVector(reach * std::fabs(scale.x), reach * std::fabs(scale.y), 0)
                               : DVector(reach, reach, 0);
    const Vector minimum(pathLow_ - margin);
    const Vector maximum(pathHigh_ + margin);
    Sphere sphere;
    sphere.CalculateSphere(minimum, maximum);
    bounds.AccumulateLocalBounds(minimum, maximum, sphere);
    bounds.CalculateBounds(transform);
}

// Solids and drawing -----------------------------------------------------------------------------

void OrvShapedString::PlaceLetters(const std::function<void(const PlacedLetter&)>& visit)
{
    PlaceGlyphs(CurrentLayout(), *this, GetExtrusionData(), *slots_, visit);
}

void OrvShapedString::PlaceSolids(const std::function<void(const PlacedLetter&)>& visit)
{
    if (hasProfile_)
    {
        OrvProfileString::PlaceSolids(visit);
        return;
    }
    PlaceLetters([&](const PlacedLetter& letter) {
        slots_->GlyphAt(letter.glyphIndex);
        visit(letter);
    });
}

PlaneRegion OrvShapedString::RegionOfLetter(int glyphIndex) const
{
    const OrvGlyph* const glyph = slots_->GlyphAt(glyphIndex);
    PlaneRegion region = glyph != nullptr ? RegionOf(*glyph) : PlaneRegion();
    const double size = slots_->ShapeAt(glyphIndex).size;
    for (std::vector<contours::DoublePoint>& contour : region.contours)
    {
        for (contours::DoublePoint& corner : contour)
        {
            corner = corner * size;
        }
    }
    return region;
}

SurfaceMaterials OrvShapedString::MaterialsOf(int solid) const
{
    const LetterPaint* const paint =
        GetFusion() == LetterFusion::Separate ? PaintOf(solid) : nullptr;
    return paint != nullptr ? SurfaceMaterials{paint->face, paint->edge, paint->bevel}
                            : OrvProfileString::MaterialsOf(solid);
}

ExtrusionData OrvShapedString::ExtrusionOf(int slot) const
{
    ExtrusionData extrusion = GetExtrusionData();
    const auto size = static_cast<float>(slots_->ShapeAt(slot).size);
    extrusion.scale.x *= size;
    extrusion.scale.y *= size;
    return extrusion;
}

void OrvShapedString::RecordSolid(int glyphIndex, SurfaceRecorder& recorder)
{
    if (hasProfile_)
    {
        OrvProfileString::RecordSolid(glyphIndex, recorder);
    }
    else if (slots_->GlyphAt(glyphIndex) != nullptr)
    {
        const LetterPaint* const paint = PaintOf(glyphIndex);
        slots_->RecordGlyph(glyphIndex, paint != nullptr ? paint->text : *this,
                            ExtrusionOf(glyphIndex), recorder);
    }
}

int OrvShapedString::DrawLettersDirectly(DrawingParameters* parameters)
{
    return hasProfile_ ? OrvProfileString::DrawLettersDirectly(parameters)
                       : DrawGlyphs(parameters, false);
}

int OrvShapedString::DrawNamedCharacters(DrawingParameters* parameters)
{
    if (!parameters->IsRender() && !parameters->IsOutline())
    {
        return 1;
    }
    return hasProfile_ ? OrvProfileString::DrawNamedCharacters(parameters)
                       : DrawGlyphs(parameters, true);
}

int OrvShapedString::DrawGlyphs(DrawingParameters* parameters, bool named)
{
    bool isCancelled = false;
    int line = -1;
    double x = 0;
    double y = 0;
    PlaceLetters([&](const PlacedLetter& letter) {
        isCancelled = isCancelled || ShouldTerminateDrawing(parameters);
        if (isCancelled)
        {
            return;
        }
        slots_->GlyphAt(letter.glyphIndex);
        // As the mesh cache places letters: those of one height one from another.
        if (letter.line != line || letter.y != y)
        {
            if (line >= 0)
            {
                glPopMatrix();
            }
            glPushMatrix();
            glTranslated(0, letter.y, 0);
            line = letter.line;
            x = 0;
            y = letter.y;
        }
        glTranslated(letter.x - x, 0, 0);
        x = letter.x;
        if (named)
        {
            glPushName(static_cast<GLuint>(letter.character));
        }
        DrawGlyph(letter.glyphIndex, parameters);
        if (named)
        {
            glPopName();
        }
    });
    if (line >= 0)
    {
        glPopMatrix();
    }
    return isCancelled ? 0 : 1;
}

void OrvShapedString::DrawGlyph(int slot, DrawingParameters* parameters)
{
    const LetterPaint* const paint = PaintOf(slot);
    // Drawing changes nothing of the text.
    auto* const text = paint != nullptr ? const_cast<OrvString*>(&paint->text) : this;
    if (parameters->IsRender())
    {
        slots_->RenderGlyph(slot, text, ExtrusionOf(slot), parameters);
    }
    else
    {
        slots_->DrawGlyph(slot, text, ExtrusionOf(slot), parameters);
    }
}

const OrvShapedString::LetterPaint* OrvShapedString::PaintOf(int slot) const
{
    const LetterShape& shape = slots_->ShapeAt(slot);
    const bool hasStyle = shape.span < settings_.spans.size();
    const std::optional<ColorLayer>& color = slots_->ColorAt(slot);
    if (!hasStyle && !color)
    {
        return nullptr;
    }
    std::shared_ptr<LetterPaint>& known = paints_[{shape.span, color ? ColorNameOf(*color) : ""}];
    if (known == nullptr)
    {
        known = std::make_shared<LetterPaint>();
    }
    LetterPaint& paint = *known;
    const SurfaceMaterials ofText = OrvProfileString::MaterialsOf(slot);
    paint.face = ofText.face;
    paint.edge = ofText.edge;
    paint.bevel = ofText.bevel;
    paint.text.extentsBoxColor = extentsBoxColor;
    if (hasStyle)
    {
        const ShapedStyle& style = settings_.spans[shape.span].style;
        paint.face = style.face.value_or(paint.face);
        paint.edge = style.edge.value_or(paint.edge);
        paint.bevel = style.bevel.value_or(paint.bevel);
        paint.text.extentsBoxColor = style.face.value_or(extentsBoxColor);
    }
    if (color)
    {
        // A part in the colour of the text has one material, too, as the other parts have.
        paint.face = color->usesTextColor ? paint.face : MaterialOf(*color);
        paint.edge = paint.face;
        paint.bevel = paint.face;
    }
    paint.text.SetFaceColor(paint.face);
    paint.text.SetEdgeColor(paint.edge);
    paint.text.SetBevelColor(paint.bevel);
    paint.text.SetBevelStyle(bevelStyle);
    paint.text.SetBevelLocation(bevelLocation);
    return &paint;
}

int OrvShapedString::SaveToUndo()
{
    return SaveCopy(new OrvShapedString(*this));
}

int OrvShapedString::RestoreFromUndo()
{
    return RestoreSavedCopy<OrvShapedString>();
}

}  // namespace orvane
