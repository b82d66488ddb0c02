// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/Vector2D.h"
#include "host/CObject.h"
#include "host/CSize.h"

/// A page extent in inches, centimetres or pixels at a device resolution, with the whole pixels
/// that it covers. A new one is 3 by 3 inches at 100 pixels per inch.
///
/// Units other than the three leave the pixels as they are, and conversions from them are refused.
///
/// Its record is the version, extents, resolution, pixels and units; loading does not recompute the
/// pixels.
class ORVANE_API ExtentObject : public CObject
{
    DECLARE_SERIAL(ExtentObject)

public:
    enum Units : unsigned int
    {
        inches = 0,
        centimeters = 1,
        pixels = 2
    };

    ExtentObject() { CalculatePixelExtents(); }

    /// In the current units.
    Vector2D GetDefinedExtents() const { return definedExtents; }
    CSize GetPixelExtents() const { return pixelExtents; }
    unsigned int GetUnits() const { return units; }

    // Each recomputes the pixels; none converts the extents.
    void SetDefinedExtents(const Vector2D& extents);
    void SetDeviceResolution(const CSize& resolution);
    void SetUnits(unsigned int newUnits);

    /// Pixels from extents, resolution and units, truncated toward zero. Returns 1.
    int CalculatePixelExtents();

    // These express the extents in other units and recompute the pixels. 0 and no change when a
    // conversion from or to pixels meets a resolution of 0. To pixels it is refused even from
    // pixels.
    int ConvertUnitsToInches();
    int ConvertUnitsToCentimeters();
    int ConvertUnitsToPixels();

    // The extents in those units, the object unchanged; (0, 0) where the conversion is refused.
    Vector2D GetExtentsInInches() const;
    Vector2D GetExtentsInCentimeters() const;

    void Serialize(CArchive& archive) override;
    void DeserializeVersion1(CArchive& archive);

    CSize deviceResolution{100, 100};  ///< pixels per inch, horizontally and vertically

protected:
    Vector2D definedExtents{3.0f, 3.0f};
    CSize pixelExtents;
    DWORD units = inches;

private:
    bool HasResolution() const;
    bool CanBeLength() const;
    Vector2D ExtentsIn(Units target) const;
    int ConvertToLength(Units target);
};
