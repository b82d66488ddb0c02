// SPDX-License-Identifier: MIT
#include "scene/OrvFontString.h"

#include "extrude/FontDC.h"
#include "extrude/Library.h"
#include "extrude/OrvFontList.h"
#include "host/CFont.h"
#include "host/RecordVersion.h"
#include "scene/DrawingParameters.h"
#include "scene/FontObserver.h"
#include "scene/SolidDrawer.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string_view>

IMPLEMENT_SERIAL(OrvFontString, OrvString, 1 | VERSIONABLE_SCHEMA)

namespace
{
/// The scaled size, on one axis, of a text that is resized to an extent: the extent minus the
/// minimum size if the extent is positive, otherwise plus the minimum size. Results within 0.00001
/// units of 0 become 0.00001 with the sign of the extent.
double WithoutMinimum(double extent, double minimum)
{
    constexpr double smallest = 0.00001;
    const bool isPositive = extent > 0;
    const double left = isPositive ? extent - minimum : extent + minimum;
    if (std::fabs(left) < smallest)
    {
        return isPositive ? smallest : -smallest;
    }
    return left;
}

/// The old extent divided by the new extent; 1 when either extent is 0.
double Ratio(double oldExtent, double newExtent)
{
    return oldExtent == 0 || newExtent == 0 ? 1.0 : oldExtent / newExtent;
}

/// The full name of the installed face that the platform chooses for a description, or
/// \p substitute if the platform gives no metrics for the description. The description comes from a
/// file and may hold any bytes.
CString InstalledFaceName(LOGFONTA description, const CString& substitute)
{
    description.lfHeight = 20;
    description.lfWidth = 0;
    description.lfFaceName[LF_FACESIZE - 1] = 0;
    CFont installed;
    installed.CreateFontIndirect(&description);
    const OutlineMetricsBuffer metrics = ReadOutlineMetrics(installed);
    const OUTLINETEXTMETRICA* const record = metrics.Get();
    if (record == nullptr)
    {
        return substitute;
    }
    // The pointer field holds an offset from the start of the record, in bytes.
    const std::size_t offset = reinterpret_cast<std::size_t>(record->otmpFaceName);
    return CString(reinterpret_cast<const char*>(record) + offset);
}

/// The registered font with this name. If no registered font has the name, the first font of the
/// registry; null if the registry is empty.
OrvFont* RegisteredFont(const CString& name)
{
    const OrvFontList& fonts = *GetFontList();
    if (fonts.IsEmpty())
    {
        return nullptr;
    }
    const POSITION position = fonts.FindName(name);
    return fonts.GetAt(position != nullptr ? position : fonts.GetHeadPosition());
}

/// The record of a font; of no font if it is null.
orvane::FontRecord RecordOf(const OrvFont* font)
{
    return font != nullptr ? orvane::FontRecord{font->GetFullName(), *font->GetEnumLogFont()}
                           : orvane::FontRecord();
}
}  // namespace

OrvFontString::OrvFontString() = default;
OrvFontString::OrvFontString(const OrvFontString& other) = default;
OrvFontString::~OrvFontString() = default;
OrvFontString& OrvFontString::operator=(const OrvFontString& other) = default;

int OrvFontString::CalculateBounds()
{
    bounds.ResetLocalBounds();
    CalculateChildBounds();
    if (font != nullptr)
    {
        // The sizes are written straight into the details, because the setters would derive the
        // scale from them.
        DVector& scaledDimensions = EnsureDetails().scaledDimensions;
        MeasureText(&EnsureDetails().unscaledDimensions, &scaledDimensions);

        const double width = scaledDimensions.x;
        const double halfHeight = scaledDimensions.y / 2;
        double left = 0;
        if (ShouldCenterJustify())
        {
            left = -width / 2;
        }
        else if (ShouldRightJustify())
        {
            left = -width;
        }
        const Vector minimum(DVector(left, -halfHeight, -scaledDimensions.z));
        const Vector maximum(DVector(left + width, halfHeight, 0));
        Sphere sphere;
        sphere.CalculateSphere(minimum, maximum);
        bounds.AccumulateLocalBounds(minimum, maximum, sphere);
    }
    bounds.CalculateBounds(transform);
    CalculateMaximumBevelDepth();
    return 1;
}

void OrvFontString::MeasureText(DVector* unscaledSize, DVector* scaledSize)
{
    DVector unused;  // the third result is always zero
    font->CalculateStringExtents(this, unscaledSize, scaledSize, &unused);
}

int OrvFontString::DrawObject(DrawingParameters* parameters)
{
    if (ShouldTerminateDrawing(parameters))
    {
        return 0;
    }
    if (font == nullptr)
    {
        return 1;
    }
    if ((parameters->IsRender() || parameters->IsOutline()) && !DrawLetters(parameters))
    {
        return 0;
    }
    DrawingObject::DrawObject(parameters);
    return 1;
}

int OrvFontString::DrawLetters(DrawingParameters* parameters)
{
    orvane::SolidDrawer* const drawer = parameters->GetSolidDrawer();
    if (drawer != nullptr && parameters->IsRender() && !parameters->IsSelecting())
    {
        const orvane::SolidDrawing drawing = drawer->DrawLetters(*this, *parameters);
        if (drawing != orvane::SolidDrawing::NotDrawn)
        {
            return drawing == orvane::SolidDrawing::Drawn ? 1 : 0;
        }
    }
    return DrawLettersDirectly(parameters);
}

int OrvFontString::DrawLettersDirectly(DrawingParameters* parameters)
{
    return font->TextOutA(this, parameters);
}

int OrvFontString::Resize(const DVector& point, int handle)
{
    if (ShouldScaleBevels())
    {
        return DrawingObject::Resize(point, handle);
    }
    const HandleDrag drag = MeasureDrag(point, handle);
    EnsureDetails().scaledDimensions =
        DVector(WithoutMinimum(drag.extents.x, minimumSize.x),
                WithoutMinimum(drag.extents.y, minimumSize.y), drag.extents.z);
    DeriveScale();
    return KeepAnchorInPlace(drag);
}

int OrvFontString::ScaleToFitOldDimensions()
{
    const DVector old = GetUnscaledDimensions();
    CalculateBounds();
    const double x = Ratio(old.x, GetUnscaledDimensions().x);
    const double y = Ratio(old.y, GetUnscaledDimensions().y);
    if (!ShouldScaleBevels())
    {
        bevelDepth = static_cast<float>(GetAllowableBevelDepth() * std::min(x, y));
    }
    EnsureDetails().scale.x *= x;
    EnsureDetails().scale.y *= y;
    CalculateBounds();
    return 1;
}

int OrvFontString::RestoreFromUndo()
{
    return RestoreSavedCopy<OrvFontString>();
}

int OrvFontString::SaveToUndo()
{
    return SaveCopy(new OrvFontString(*this));
}

void OrvFontString::PlaceSolids(const std::function<void(const orvane::PlacedLetter&)>& visit)
{
    if (font != nullptr)
    {
        font->PlaceLetters(this, visit);
    }
}

void OrvFontString::RecordSolid(int glyphIndex, orvane::SurfaceRecorder& recorder)
{
    if (font != nullptr)
    {
        font->RecordGlyph(glyphIndex, *this, GetExtrusionData(), recorder);
    }
}

int OrvFontString::DrawNamedCharacters(DrawingParameters* parameters)
{
    return font != nullptr ? font->DrawNamedCharacters(this, parameters) : 1;
}

void OrvFontString::Serialize(CArchive& archive)
{
    OrvString::Serialize(archive);
    if (archive.IsLoading())
    {
        ReadRecordVersion(archive, RUNTIME_CLASS(OrvFontString));
        DeserializeVersion1(archive);
        return;
    }
    orvane::FontObserver* const observer = orvane::FontObserver::Current();
    const orvane::FontRecord* const kept = observer != nullptr ? observer->ToStore(*this) : nullptr;
    const orvane::FontRecord record = kept != nullptr ? *kept : RecordOf(font);
    WriteRecordVersion(archive, RUNTIME_CLASS(OrvFontString));
    archive << record.name;
    archive << DWORD{sizeof record.description};
    archive.Write(&record.description, sizeof record.description);
}

void OrvFontString::DeserializeVersion1(CArchive& archive)
{
    orvane::FontRecord record;
    DWORD length = 0;
    archive >> record.name;
    CString name = record.name;
    archive >> length;
    if (length == sizeof record.description)
    {
        // The description decides which font is used, not the stored name. A text without a font
        // has a description of zeros, and the platform chooses a font for this description too.
        // This is required; see the test ATextStoredWithoutAFontLoadsWithOne.
        archive.ReadExactly(&record.description, sizeof record.description);
        name = InstalledFaceName(record.description.elfLogFont, name);
    }
    else
    {
        archive.Skip(length);
    }
    font = RegisteredFont(name);
    if (orvane::FontObserver* const observer = orvane::FontObserver::Current())
    {
        observer->Loaded(*this, record);
    }
}

namespace orvane
{

FontObserver::FontObserver() : place_(*this) {}

FontObserver::~FontObserver() = default;

void FontObserver::Loaded(const OrvFontString&, const FontRecord&) {}

const FontRecord* FontObserver::ToStore(const OrvFontString&)
{
    return nullptr;
}

FontObserver* FontObserver::Current()
{
    return NewestOfThread<FontObserver>::Get();
}

}  // namespace orvane
