// SPDX-License-Identifier: MIT
#pragma once

#include "host/CString.h"
#include "host/MadeWhenUsed.h"
#include "material/ColorVector.h"

/// A material: ambient, diffuse, emitted and specular colour, and the specular exponent. The
/// diffuse alpha is its opacity. A new one is medium grey and takes no memory for its colours, as
/// that of most nodes, until one is changed.
///
/// Its record is the version, the four colours and the shininess.
class ORVANE_API Color : public CObject
{
    DECLARE_SERIAL(Color)

public:
    Color() = default;
    Color(const Color& other) = default;
    Color& operator=(const Color& other);

    ColorVector GetAmbientColor() const { return body_.Read().ambient; }
    ColorVector GetDiffuseColor() const { return body_.Read().diffuse; }
    ColorVector GetEmissionColor() const { return body_.Read().emission; }
    ColorVector GetSpecularColor() const { return body_.Read().specular; }
    void SetAmbientColor(ColorVector color) { body_.Get().ambient = color; }
    void SetDiffuseColor(ColorVector color) { body_.Get().diffuse = color; }
    void SetEmissionColor(ColorVector color) { body_.Get().emission = color; }
    void SetSpecularColor(ColorVector color) { body_.Get().specular = color; }

    /// 0 to 128 for OpenGL.
    float GetShininess() const { return body_.Read().shininess; }
    void SetShininess(float newShininess) { body_.Get().shininess = newShininess; }

    /// 1 for a diffuse alpha below 1, else 0.
    int IsTransparent() const { return body_.Read().diffuse.alpha < 1.0f ? 1 : 0; }

    /// Medium grey, not emitting, shininess 64.
    virtual void Reset();

    void Serialize(CArchive& archive) override;
    void DeserializeVersion1(CArchive& archive);

protected:
    /// The name and the group are those of a NamedColor: a material is one block.
    struct Body_
    {
        ColorVector ambient{0.5f, 0.5f, 0.5f, 1.0f};
        ColorVector diffuse{0.5f, 0.5f, 0.5f, 1.0f};
        ColorVector emission;
        ColorVector specular{0.5f, 0.5f, 0.5f, 1.0f};
        float shininess = 64.0f;
        DWORD group = 0;
        CString name = "Medium Gray";
    };

    MadeWhenUsed<Body_> body_;

private:
    void CopyColors_(const Body_& other);
    static void SerializeColors_(CArchive& archive, Body_& body);
};
