// SPDX-License-Identifier: MIT
#pragma once

#include "material/ColorVector.h"

/// A material: ambient, diffuse, emitted and specular colour, and the specular exponent. The
/// diffuse alpha is its opacity. A new material is medium grey.
///
/// Its record is the version, the four colours and the shininess.
class ORVANE_API Color : public CObject
{
    DECLARE_SERIAL(Color)

public:
    Color() = default;
    Color(const Color& other) = default;
    Color& operator=(const Color& other) = default;

    ColorVector GetAmbientColor() const { return ambientColor; }
    ColorVector GetDiffuseColor() const { return diffuseColor; }
    ColorVector GetEmissionColor() const { return emissionColor; }
    ColorVector GetSpecularColor() const { return specularColor; }
    void SetAmbientColor(ColorVector color) { ambientColor = color; }
    void SetDiffuseColor(ColorVector color) { diffuseColor = color; }
    void SetEmissionColor(ColorVector color) { emissionColor = color; }
    void SetSpecularColor(ColorVector color) { specularColor = color; }

    /// The specular exponent; OpenGL takes 0 to 128.
    float GetShininess() const { return shininess; }
    void SetShininess(float newShininess) { shininess = newShininess; }

    /// Returns 1 when the diffuse alpha is below 1, otherwise 0.
    int IsTransparent() const { return diffuseColor.alpha < 1.0f ? 1 : 0; }

    /// Sets the initial values: medium grey, no emission, shininess 64.
    virtual void Reset();

    void Serialize(CArchive& archive) override;
    void DeserializeVersion1(CArchive& archive);

protected:
    ColorVector ambientColor{0.5f, 0.5f, 0.5f, 1.0f};
    ColorVector diffuseColor{0.5f, 0.5f, 0.5f, 1.0f};
    ColorVector emissionColor;
    ColorVector specularColor{0.5f, 0.5f, 0.5f, 1.0f};
    float shininess = 64.0f;
};
