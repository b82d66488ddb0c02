// SPDX-License-Identifier: MIT
#include "scene/LightObject.h"

#include "host/RecordVersion.h"
#include "scene/DrawingParameters.h"

IMPLEMENT_SERIAL(LightObject, DrawingObject, VERSIONABLE_SCHEMA | 1)

namespace
{

constexpr GLint slices = 16;

void SetFrontMaterial(GLenum part, const ColorVector& color)
{
    glMaterialfv(GL_FRONT, part, &color.red);
}

void SetLightColor(GLenum light, GLenum part, const ColorVector& color)
{
    glLightfv(light, part, &color.red);
}

void TranslateZ(double distance)
{
    glTranslated(0, 0, distance);
}

}  // namespace

// The quadric is made last, because the destructor does not run when a constructor throws.

LightObject::LightObject()
{
    // The flashlight is drawn as large as the scaled dimensions, so the dimensions must not stay 0.
    EnsureDetails().unscaledDimensions = EnsureDetails().scaledDimensions = DVector(1.0, 1.0, 1.0);
    Reset();
    LightObject::CalculateBounds();
    quadric = gluNewQuadric();
}

LightObject::LightObject(const LightObject& other)
    : DrawingObject(other),
      lightFlags(other.lightFlags),
      lightNumber(other.lightNumber),
      spotCutoffAngle(other.spotCutoffAngle),
      spotExponent(other.spotExponent),
      colors(other.colors)
{
    quadric = gluNewQuadric();
}

LightObject& LightObject::operator=(const LightObject& other)
{
    if (this != &other)
    {
        DrawingObject::operator=(other);
        colors = other.colors;
        lightFlags = other.lightFlags;
        lightNumber = other.lightNumber;
        spotCutoffAngle = other.spotCutoffAngle;
        spotExponent = other.spotExponent;
    }
    return *this;
}

void LightObject::CopyFromOtherPool(const LightObject& other)
{
    DrawingObject* const keptParent = parent;
    DrawingObjectStack*& stack = EnsureDetails().externalUndoStack;
    DrawingObjectStack* const keptStack = stack;
    // Assignment from a light with another external stack would remove this light from its present
    // stack. This light therefore has the other light's stack during the assignment.
    stack = other.GetExternalUndoStack();
    *this = other;
    stack = keptStack;
    parent = keptParent;
}

LightObject::~LightObject()
{
    gluDeleteQuadric(quadric);
}

void LightObject::Reset()
{
    colors.SetName("Default Light");
    colors.SetAmbientColor(ColorVector(0.0f, 0.0f, 0.0f, 1.0f));
    colors.SetDiffuseColor(ColorVector(0.6f, 0.6f, 0.6f, 1.0f));
    colors.SetSpecularColor(ColorVector(0.9f, 0.9f, 0.9f, 1.0f));
    spotCutoffAngle = 180.0;
    spotExponent = 128.0;
    SetEditable();
    SetActive();
}

int LightObject::CalculateBounds()
{
    const Vector minimum(-0.2f, -0.2f, 0.0f);
    const Vector maximum(0.2f, 0.2f, 0.95f);
    Sphere sphere;
    sphere.CalculateSphere(minimum, maximum);
    bounds.ResetLocalBounds();
    bounds.AccumulateLocalBounds(minimum, maximum, sphere);
    bounds.CalculateBounds(transform);
    return 1;
}

bool LightObject::ContextHasLight() const
{
    // Every context has at least eight lights, so OpenGL is asked only about higher numbers.
    constexpr DWORD always = 8;
    if (lightNumber < GL_LIGHT0)
    {
        return false;
    }
    const DWORD index = lightNumber - GL_LIGHT0;
    if (index < always)
    {
        return true;
    }
    GLint count = 0;
    glGetIntegerv(GL_MAX_LIGHTS, &count);
    return count > 0 && index < static_cast<DWORD>(count);
}

int LightObject::DrawObject(DrawingParameters* parameters)
{
    if (ShouldTerminateDrawing(parameters))
    {
        return 0;
    }
    if (!ContextHasLight())
    {
        return 1;
    }
    if (!IsInUse())
    {
        glDisable(lightNumber);
        return 1;
    }

    GLfloat position[4] = {0, 0, 0, 1};
    const GLfloat spotDirection[4] = {0, 0, -1, 0};
    const bool overParent = IsDirectional() && parent != nullptr;
    if (overParent)
    {
        position[2] = 1;
        position[3] = 0;
        Vector center = parent->GetBoundsLocalCenter();
        transform.UntransformVectors(&center, 1);
        glPushMatrix();
        glTranslated(center.x, center.y, center.z + parent->GetGlobalBoundsRadius());
    }
    if (parameters->ShouldShowLights())
    {
        DrawFlashLight(parameters);
    }
    if (overParent)
    {
        // The matrix is restored, because the light is programmed in its own coordinates, not at
        // the place of its flashlight.
        glPopMatrix();
    }
    if (!IsActive())
    {
        glDisable(lightNumber);
        return 1;
    }

    glEnable(lightNumber);
    SetLightColor(lightNumber, GL_AMBIENT, colors.GetAmbientColor());
    SetLightColor(lightNumber, GL_DIFFUSE, colors.GetDiffuseColor());
    SetLightColor(lightNumber, GL_SPECULAR, colors.GetSpecularColor());
    glLightfv(lightNumber, GL_POSITION, position);
    glLightfv(lightNumber, GL_SPOT_DIRECTION, spotDirection);
    glLightf(lightNumber, GL_SPOT_CUTOFF, static_cast<GLfloat>(spotCutoffAngle));
    glLightf(lightNumber, GL_SPOT_EXPONENT, static_cast<GLfloat>(spotExponent));
    return 1;
}

int LightObject::DrawFlashLight(DrawingParameters* /*parameters*/)
{
    const double width = CurrentDetails().scaledDimensions.x;
    const double depth = CurrentDetails().scaledDimensions.z;
    const ColorVector black(0.0f, 0.0f, 0.0f, 1.0f);

    gluQuadricOrientation(quadric, GLU_OUTSIDE);
    gluQuadricNormals(quadric, GLU_SMOOTH);
    glPushMatrix();
    gluQuadricDrawStyle(quadric, IsSelected() ? GLU_LINE : GLU_FILL);

    SetFrontMaterial(GL_EMISSION, black);
    SetFrontMaterial(GL_AMBIENT, colors.GetAmbientColor());
    SetFrontMaterial(GL_DIFFUSE, colors.GetDiffuseColor());
    SetFrontMaterial(GL_SPECULAR, colors.GetSpecularColor());
    glMaterialf(GL_FRONT, GL_SHININESS, 128);

    TranslateZ(0.8 * depth);  // the lens
    gluDisk(quadric, 0, 0.1 * width, slices, 1);
    TranslateZ(-0.5 * depth);  // the barrel
    gluCylinder(quadric, 0.1 * width, 0.1 * width, 0.5 * depth, slices, 1);
    TranslateZ(-0.05 * depth);  // the collar
    gluCylinder(quadric, 0.15 * width, 0.1 * width, 0.05 * depth, slices, 1);

    // The parts below glow if the light is switched on.
    const auto setGlow = [this](const ColorVector& lit, const ColorVector& dull) {
        if (IsActive())
        {
            SetFrontMaterial(GL_EMISSION, lit);
        }
        SetFrontMaterial(GL_AMBIENT_AND_DIFFUSE, IsActive() ? lit : dull);
    };
    setGlow(ColorVector(0.9f, 0.0f, 0.0f, 1.0f), ColorVector(0.3f, 0.0f, 0.0f, 1.0f));
    TranslateZ(-0.25 * depth);  // the handle
    gluCylinder(quadric, 0.18 * width, 0.15 * width, 0.25 * depth, slices, 1);

    setGlow(ColorVector(0.9f, 0.9f, 0.0f, 1.0f), ColorVector(0.3f, 0.3f, 0.0f, 1.0f));
    gluQuadricOrientation(quadric, GLU_INSIDE);  // the back cap
    gluDisk(quadric, 0, 0.18 * width, slices, 1);
    glPopMatrix();
    return 1;
}

int LightObject::DrawAtRadius(DrawingParameters* parameters, float radius)
{
    if (ShouldTerminateDrawing(parameters))
    {
        return 0;
    }
    glPushMatrix();
    glTranslated(0, 0, radius);
    DrawFlashLight(parameters);
    glPopMatrix();
    return 1;
}

int LightObject::SaveToUndo()
{
    return SaveCopy(new LightObject(*this));
}

int LightObject::RestoreFromUndo()
{
    return RestoreSavedCopy<LightObject>();
}

void LightObject::Serialize(CArchive& archive)
{
    DrawingObject::Serialize(archive);
    if (archive.IsLoading())
    {
        ReadRecordVersion(archive, RUNTIME_CLASS(LightObject));
        DeserializeVersion1(archive);
        return;
    }
    WriteRecordVersion(archive, RUNTIME_CLASS(LightObject));
    colors.Serialize(archive);
    archive << lightFlags;
    archive << lightNumber;
    archive << spotCutoffAngle;
    archive << spotExponent;
}

void LightObject::DeserializeVersion1(CArchive& archive)
{
    colors.Serialize(archive);
    archive >> lightFlags;
    archive >> lightNumber;
    archive >> spotCutoffAngle;
    archive >> spotExponent;
}
