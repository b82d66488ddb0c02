// SPDX-License-Identifier: MIT
#include "geometry/ExtentObject.h"

#include "geometry/Truncate.h"
#include "host/RecordVersion.h"

IMPLEMENT_SERIAL(ExtentObject, CObject, VERSIONABLE_SCHEMA | 1)

static constexpr double inchesPerCentimeter = 0.39370078;
static constexpr double centimetersPerInch = 2.54;

void ExtentObject::SetDefinedExtents(const Vector2D& extents)
{
    definedExtents = extents;
    CalculatePixelExtents();
}

void ExtentObject::SetDeviceResolution(const CSize& resolution)
{
    deviceResolution = resolution;
    CalculatePixelExtents();
}

void ExtentObject::SetUnits(unsigned int newUnits)
{
    units = newUnits;
    CalculatePixelExtents();
}

int ExtentObject::CalculatePixelExtents()
{
    // The product is computed in double: 100 times 2.9999999 gives 299 pixels. A product rounded to
    // float would give 300.
    const auto pixelExtent = [this](double resolution, double extent) {
        switch (units)
        {
            case inches:
                return resolution * extent;
            case centimeters:
                return resolution * (extent * inchesPerCentimeter);
            default:
                return extent;
        }
    };
    if (units <= pixels)
    {
        pixelExtents.cx = TruncateToLong(pixelExtent(deviceResolution.cx, definedExtents.x));
        pixelExtents.cy = TruncateToLong(pixelExtent(deviceResolution.cy, definedExtents.y));
    }
    return 1;
}

/// Converts the extent of one axis from its units to inches or centimetres, in double.
static double ToLength(double extent, DWORD from, ExtentObject::Units to, double resolution)
{
    if (from == to)
    {
        return extent;
    }
    if (to == ExtentObject::inches)
    {
        return from == ExtentObject::centimeters ? extent * inchesPerCentimeter
                                                 : extent / resolution;
    }
    return from == ExtentObject::inches ? extent * centimetersPerInch
                                        : extent * (centimetersPerInch / resolution);
}

Vector2D ExtentObject::ExtentsIn(Units target) const
{
    if (!CanBeLength())
    {
        return {};
    }
    return {static_cast<float>(ToLength(definedExtents.x, units, target, deviceResolution.cx)),
            static_cast<float>(ToLength(definedExtents.y, units, target, deviceResolution.cy))};
}

Vector2D ExtentObject::GetExtentsInInches() const
{
    return ExtentsIn(inches);
}

Vector2D ExtentObject::GetExtentsInCentimeters() const
{
    return ExtentsIn(centimeters);
}

int ExtentObject::ConvertUnitsToInches()
{
    return ConvertToLength(inches);
}

int ExtentObject::ConvertUnitsToCentimeters()
{
    return ConvertToLength(centimeters);
}

int ExtentObject::ConvertToLength(Units target)
{
    if (units == target)
    {
        return 1;
    }
    if (!CanBeLength())
    {
        return 0;
    }
    definedExtents = ExtentsIn(target);
    SetUnits(target);
    return 1;
}

int ExtentObject::ConvertUnitsToPixels()
{
    if (units > pixels || !HasResolution())
    {
        return 0;
    }
    if (units == pixels)
    {
        return 1;
    }
    const double perUnit = units == inches ? 1.0 : inchesPerCentimeter;
    definedExtents.SetVector(
        static_cast<float>(definedExtents.x * (deviceResolution.cx * perUnit)),
        static_cast<float>(definedExtents.y * (deviceResolution.cy * perUnit)));
    SetUnits(pixels);
    return 1;
}

bool ExtentObject::HasResolution() const
{
    return deviceResolution.cx != 0 && deviceResolution.cy != 0;
}

bool ExtentObject::CanBeLength() const
{
    return units < pixels || (units == pixels && HasResolution());
}

void ExtentObject::Serialize(CArchive& archive)
{
    if (archive.IsLoading())
    {
        ReadRecordVersion(archive, RUNTIME_CLASS(ExtentObject));
        DeserializeVersion1(archive);
        return;
    }
    WriteRecordVersion(archive, RUNTIME_CLASS(ExtentObject));
    archive << definedExtents.x;
    archive << definedExtents.y;
    archive << deviceResolution.cx;
    archive << deviceResolution.cy;
    archive << pixelExtents.cx;
    archive << pixelExtents.cy;
    archive << units;
}

void ExtentObject::DeserializeVersion1(CArchive& archive)
{
    archive >> definedExtents.x;
    archive >> definedExtents.y;
    archive >> deviceResolution.cx;
    archive >> deviceResolution.cy;
    archive >> pixelExtents.cx;
    archive >> pixelExtents.cy;
    archive >> units;
}
