// SPDX-License-Identifier: MIT
#pragma once

#include "host/CObject.h"

/// An RGBA colour of four floats. Their usual range is 0 to 1; this class does not enforce that
/// range. The address of red can be passed to OpenGL as a GLfloat[4]. A new colour is opaque black.
///
/// Its record is the four floats, without a version.
class ORVANE_API ColorVector : public CObject
{
    DECLARE_SERIAL(ColorVector)

public:
    ColorVector() = default;
    ColorVector(float r, float g, float b, float a) : red(r), green(g), blue(b), alpha(a) {}

    /// Makes the colour opaque black.
    void Clear() { SetColorVector(0.0f, 0.0f, 0.0f, 1.0f); }

    void SetColorVector(float r, float g, float b, float a)
    {
        red = r;
        green = g;
        blue = b;
        alpha = a;
    }

    /// Sets red, green and blue from a COLORREF. Alpha does not change.
    ColorVector& operator=(unsigned long colorRef);

    /// The COLORREF nearest to the colour, without alpha. Components outside 0 to 1 wrap at 8 bits.
    unsigned long GetColorRef() const;

    // Arithmetic on all four components.
    ColorVector& operator+=(const ColorVector& other) { return *this = *this + other; }
    ColorVector& operator-=(const ColorVector& other) { return *this = *this - other; }
    ColorVector& operator*=(float factor) { return *this = *this * factor; }
    ColorVector& operator/=(float divisor) { return *this = *this / divisor; }

    ColorVector operator+(const ColorVector& other) const
    {
        return ColorVector(red + other.red, green + other.green, blue + other.blue,
                           alpha + other.alpha);
    }
    ColorVector operator-(const ColorVector& other) const
    {
        return ColorVector(red - other.red, green - other.green, blue - other.blue,
                           alpha - other.alpha);
    }
    ColorVector operator*(float factor) const
    {
        return ColorVector(red * factor, green * factor, blue * factor, alpha * factor);
    }
    ColorVector operator/(float divisor) const
    {
        return ColorVector(red / divisor, green / divisor, blue / divisor, alpha / divisor);
    }
    ColorVector operator-() const { return ColorVector(-red, -green, -blue, -alpha); }

    void Serialize(CArchive& archive) override;
    void DeserializeVersion1(CArchive& archive);

    float red = 0.0f;
    float green = 0.0f;
    float blue = 0.0f;
    float alpha = 1.0f;
};
