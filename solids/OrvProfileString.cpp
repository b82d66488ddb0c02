// SPDX-License-Identifier: MIT
#include "solids/OrvProfileString.h"

#include "extrude/ExtrusionData.h"
#include "extrude/LetterDrawing.h"
#include "extrude/OrvFont.h"
#include "extrude/OrvGlyph.h"
#include "geometry/SurfaceRecorder.h"
#include "host/RecordVersion.h"
#include "material/Unlit.h"
#include "orvane/Error.h"
#include "solids/ProfileTextSolids.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <string>

namespace orvane
{

IMPLEMENT_SERIAL(OrvProfileString, OrvFontString, 1 | VERSIONABLE_SCHEMA)

namespace
{

constexpr double firstWidth = 0.03;  // ems

}  // namespace

OrvProfileString::OrvProfileString()
    : profile_(NamedProfile("chamfer", firstWidth)), smoothAngle_(ProfileSolidOptions().smoothAngle)
{
    UseReachAsBevel();
}

OrvProfileString::OrvProfileString(const OrvProfileString& other) = default;
OrvProfileString::~OrvProfileString() = default;
OrvProfileString& OrvProfileString::operator=(const OrvProfileString& other) = default;

void OrvProfileString::SetProfile(const EdgeProfile& profile)
{
    CheckProfile(profile);
    profile_ = profile;
    UseReachAsBevel();
}

// The font lays out and measures letters whose bevels are as wide as the profile reaches.
void OrvProfileString::UseReachAsBevel()
{
    if (!HasProfile())
    {
        return;
    }
    const double reach = ReachOf(profile_);
    bevelDepth = static_cast<float>(reach);
    bevelStyle = static_cast<int>(reach > 0 ? EdgeStyle::Bevel : EdgeStyle::Square);
}

ProfileTextSettings OrvProfileString::CurrentSettings() const
{
    const ProfileSides sides = IsFrontFaceOnly()  ? ProfileSides::Front
                               : IsBackFaceOnly() ? ProfileSides::Back
                                                  : ProfileSides::Both;
    const ProfileScaling scaling =
        ShouldScaleBevels() ? ProfileScaling::WithNode : ProfileScaling::Fixed;
    return {font, font != nullptr ? *font->GetEnumLogFont() : ENUMLOGFONTA{}, fusion_,
            SettingsFor(GetScale(), profile_, sides, smoothAngle_, scaling)};
}

ProfileTextSolids& OrvProfileString::CurrentSolids()
{
    std::vector<PlacedLetter> letters;
    if (fusion_ != LetterFusion::Separate)
    {
        PlaceLetters([&](const PlacedLetter& letter) { letters.push_back(letter); });
    }
    const ProfileTextSettings settings = CurrentSettings();
    if (solids_ == nullptr || !solids_->AreOf(settings, letters))
    {
        solids_ = std::make_unique<ProfileTextSolids>(
            settings, std::move(letters), [this](int letter) { return RegionOfLetter(letter); });
    }
    return *solids_;
}

void OrvProfileString::PlaceLetters(const std::function<void(const PlacedLetter&)>& visit)
{
    font->PlaceLetters(this, visit);
}

PlaneRegion OrvProfileString::RegionOfLetter(int glyphIndex) const
{
    const OrvGlyph* const glyph = glyphIndex >= 0 && glyphIndex < font->glyphs.GetSize()
                                      ? font->glyphs.GetAt(glyphIndex)
                                      : nullptr;
    return glyph != nullptr && !glyph->IsInvalid() ? RegionOf(*glyph) : PlaneRegion();
}

SurfaceMaterials OrvProfileString::MaterialsOf(int) const
{
    return {faceColor, ShouldUseEdgeColor() ? edgeColor : faceColor,
            ShouldUseBevelColor() ? bevelColor : faceColor};
}

template <typename Sink>
void OrvProfileString::EmitSolid(int solid, const SolidSurface& surface, Sink& sink) const
{
    const DVector scale = GetScale();
    EmitSurface(surface, MaterialsOf(solid), SurfaceTexture(CurrentDetails().texture, scale), scale,
                sink);
}

void OrvProfileString::PlaceSolids(const std::function<void(const PlacedLetter&)>& visit)
{
    if (font == nullptr)
    {
        return;
    }
    const ProfileTextSolids& solids = CurrentSolids();
    if (fusion_ == LetterFusion::Separate)
    {
        PlaceLetters(visit);
        return;
    }
    int previous = -1;
    for (const PlacedLetter& letter : solids.Letters())
    {
        const int number = fusion_ == LetterFusion::Line ? letter.line : 0;
        if (number != previous)
        {
            visit({letter.character, letter.line, number, 0, 0});
        }
        previous = number;
    }
}

void OrvProfileString::RecordSolid(int glyphIndex, SurfaceRecorder& recorder)
{
    if (solids_ != nullptr)
    {
        EmitSolid(glyphIndex, solids_->Of(glyphIndex).surface, recorder);
    }
}

std::vector<UncutSolid> OrvProfileString::UncutSolids()
{
    std::vector<UncutSolid> uncut;
    std::set<int> seen;
    PlaceSolids([&](const PlacedLetter& letter) {
        const BuiltSolid* const solid = solids_->Known(letter.glyphIndex);
        if (solid != nullptr && solid->outcome != SolidOutcome::Profiled &&
            seen.insert(letter.glyphIndex).second)
        {
            uncut.push_back({letter.character, letter.line, solid->outcome == SolidOutcome::Missing,
                             solid->problem});
        }
    });
    return uncut;
}

int OrvProfileString::DrawSolids(DrawingParameters* parameters, bool named)
{
    LetterDrawing drawing(*parameters);
    const bool isRendered = parameters->IsRender() != 0;
    bool isCancelled = false;
    PlaceSolids([&](const PlacedLetter& letter) {
        isCancelled = isCancelled || ShouldTerminateDrawing(parameters);
        if (isCancelled)
        {
            return;
        }
        // Before anything is pushed, because there may be too little memory.
        const SolidSurface& solid = solids_->Of(letter.glyphIndex).surface;
        const SolidLines* const lines = isRendered ? nullptr : &solids_->LinesOf(letter.glyphIndex);
        if (named)
        {
            glPushName(static_cast<GLuint>(letter.character));
        }
        glPushMatrix();
        glTranslated(letter.x, letter.y, 0);
        if (lines != nullptr)
        {
            EmitLines(*lines, drawing);
        }
        else
        {
            EmitSolid(letter.glyphIndex, solid, drawing);
        }
        glPopMatrix();
        if (named)
        {
            glPopName();
        }
    });
    return isCancelled ? 0 : 1;
}

// Like OrvFont::DrawGlyph: unlit, in the colour of the text's box, under the name of the faces.
void OrvProfileString::EmitLines(const std::vector<std::array<float, 3>>& lines,
                                 const LetterDrawing& drawing)
{
    font->SetMaterialColors(extentsBoxColor);
    const Unlit unlit;
    drawing.BeginPart(MeshPart::Face);
    glBegin(GL_LINES);
    for (const std::array<float, 3>& end : lines)
    {
        glVertex3f(end[0], end[1], end[2]);
    }
    glEnd();
    drawing.EndPart();
    glDisable(GL_COLOR_MATERIAL);
}

int OrvProfileString::DrawLettersDirectly(DrawingParameters* parameters)
{
    return DrawSolids(parameters, false);
}

int OrvProfileString::DrawNamedCharacters(DrawingParameters* parameters)
{
    return font == nullptr || !(parameters->IsRender() || parameters->IsOutline())
               ? OrvFontString::DrawNamedCharacters(parameters)
               : DrawSolids(parameters, true);
}

int OrvProfileString::CalculateBounds()
{
    UseReachAsBevel();
    OrvFontString::CalculateBounds();
    // The bounds hold bevels only if letters move apart by them. The font measures with bevels that
    // are at most as wide as the letters are deep, or half as wide with profiles on both faces; the
    // profile may reach further.
    const double held = ShouldAdjustSpacingForBevels() ? GetAllowableBevelDepth() : 0.0f;
    const SolidSettings settings = CurrentSettings().solid;
    const double beyond = ReachOf(settings.profile) - held;
    if (font == nullptr || GetTextString()->IsEmpty() || beyond <= 0)
    {
        return 1;
    }
    const DVector margin(beyond * std::fabs(settings.stretchX),
                         beyond * std::fabs(settings.stretchY), 0);
    const Vector minimum(DVector(bounds.GetLocalMinimum()) - margin);
    const Vector maximum(DVector(bounds.GetLocalMaximum()) + margin);
    Sphere sphere;
    sphere.CalculateSphere(minimum, maximum);
    bounds.AccumulateLocalBounds(minimum, maximum, sphere);
    bounds.CalculateBounds(transform);
    return 1;
}

std::unique_ptr<OrvProfileString> OrvProfileString::CopyWithProfile(
    const EdgeProfile& profile) const
{
    auto copy = std::make_unique<OrvProfileString>(*this);
    copy->SetProfile(profile);
    return copy;
}

int OrvProfileString::SaveToUndo()
{
    return SaveCopy(new OrvProfileString(*this));
}

int OrvProfileString::RestoreFromUndo()
{
    return RestoreSavedCopy<OrvProfileString>();
}

void OrvProfileString::Serialize(CArchive& archive)
{
    OrvFontString::Serialize(archive);
    if (archive.IsLoading())
    {
        ReadRecordVersion(archive, RUNTIME_CLASS(OrvProfileString));
        DeserializeVersion1(archive);
        return;
    }
    WriteRecordVersion(archive, RUNTIME_CLASS(OrvProfileString));
    StoreProfile(archive);
}

void OrvProfileString::StoreProfile(CArchive& archive) const
{
    archive << CString(ProfileText(profile_).c_str());
    archive << LONG{static_cast<int>(fusion_)};
    archive << smoothAngle_;
}

void OrvProfileString::DeserializeVersion1(CArchive& archive)
{
    CString text;
    LONG fusion = 0;
    archive >> text;
    archive >> fusion;
    archive >> smoothAngle_;
    try
    {
        SetProfile(ParseProfile(text.Text()));
    }
    catch (const Error& error)
    {
        AfxThrowArchiveException(CArchiveException::generic, error.what());
    }
    if (fusion < 0 || fusion >= letterFusionCount)
    {
        AfxThrowArchiveException(CArchiveException::generic,
                                 "the fusion of a text is " + std::to_string(fusion) +
                                     "; expected 0 to " + std::to_string(letterFusionCount - 1));
    }
    fusion_ = static_cast<LetterFusion>(fusion);
    if (!(smoothAngle_ >= 0 && smoothAngle_ <= 180))
    {
        AfxThrowArchiveException(CArchiveException::generic,
                                 "the smooth angle of a text is not 0 to 180 degrees");
    }
    solids_.reset();
}

}  // namespace orvane
