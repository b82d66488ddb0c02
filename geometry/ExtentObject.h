// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/Vector2D.h"
#include "host/CObject.h"
#include "host/CSize.h"

/// The width and height of a page in inches, centimetres or pixels, the resolution of the device,
/// and the number of whole pixels that the page covers. A new page is 3 by 3 inches at 100 pixels
/// per inch.
///
/// A program or a damaged record can set units that are not 0, 1 or 2. The pixels then do not
/// change, and conversions are refused.
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

    /// The extents in the current units.
    Vector2D GetDefinedExtents() const { return definedExtents; }
    CSize GetPixelExtents() const { return pixelExtents; }
    unsigned int GetUnits() const { return units; }

    // Each of these setters recomputes the pixels. Setters do not convert the extents to other
    // units.
    void SetDefinedExtents(const Vector2D& extents);
    void SetDeviceResolution(const CSize& resolution);
    void SetUnits(unsigned int newUnits);

    /// Computes the pixels from extents, resolution and units, truncated toward zero. Always
    /// returns 1.
    int CalculatePixelExtents();

    // These functions convert the extents to other units and recompute the pixels. They refuse to
    // convert from or to pixels while a component of the resolution is 0. If the extents are in
    // these units already, nothing changes, not even pixels that do not match the extents.
    int ConvertUnitsToInches();
    int ConvertUnitsToCentimeters();
    int ConvertUnitsToPixels();

    // The extents in other units. The object does not change. The result is (0, 0) when the
    // conversion is refused.
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
