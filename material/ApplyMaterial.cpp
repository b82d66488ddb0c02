// SPDX-License-Identifier: MIT
#include "material/ApplyMaterial.h"

#include <utility>

namespace
{
thread_local orvane::MaterialObserver* materialObserver = nullptr;
}

orvane::MaterialObserver* orvane::ObserveMaterials(MaterialObserver* observer)
{
    return std::exchange(materialObserver, observer);
}

void ApplyMaterial(GLenum face, const Color& material)
{
    const ColorVector ambient = material.GetAmbientColor();
    const ColorVector diffuse = material.GetDiffuseColor();
    const ColorVector emission = material.GetEmissionColor();
    const ColorVector specular = material.GetSpecularColor();

    // The alpha of the emission is ignored, because it is 1 in a new material, which emits no
    // light.
    const bool selfLit = emission.red != 0.0f || emission.green != 0.0f || emission.blue != 0.0f;
    if (!selfLit)
    {
        glMaterialfv(face, GL_AMBIENT, &ambient.red);
        glMaterialfv(face, GL_DIFFUSE, &diffuse.red);
    }
    glMaterialfv(face, GL_SPECULAR, &specular.red);
    glMaterialfv(face, GL_EMISSION, &emission.red);
    glMaterialf(face, GL_SHININESS, material.GetShininess());
    glColor4fv(selfLit ? &emission.red : &diffuse.red);
    if (materialObserver != nullptr)
    {
        materialObserver->UseMaterial(material);
    }
}

void ApplyBlendedMaterial(const Color& material)
{
    ApplyMaterial(GL_FRONT_AND_BACK, material);
    if (material.IsTransparent())
    {
        glEnable(GL_BLEND);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        glDepthMask(GL_FALSE);
    }
    else
    {
        glDisable(GL_BLEND);
        glDepthMask(GL_TRUE);
    }
}
