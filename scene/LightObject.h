// SPDX-License-Identifier: MIT
#pragma once

#include "material/NamedColor.h"
#include "platform/OpenGL.h"
#include "scene/DrawingObject.h"

/// One OpenGL light as a node of the scene: its colours, number, kind and state. A scene has a
/// fixed pool of lights and hands them out. The bit InUse means that the scene has handed the light
/// out. The bit Active means that the light is switched on.
///
/// The light is at the origin of its node's coordinates and shines along the negative z axis. The
/// node's transform moves and turns it. When the drawing parameters have ShowLights set, the light
/// also draws itself as a flashlight as large as its scaled dimensions say.
class ORVANE_API LightObject : public DrawingObject
{
    DECLARE_SERIAL(LightObject)

public:
    // The bits of lightFlags.
    static constexpr DWORD directionalBit = 0x1;
    static constexpr DWORD activeBit = 0x2;
    static constexpr DWORD inUseBit = 0x4;

    LightObject();
    /// A copy makes its own quadric.
    LightObject(const LightObject& other);
    LightObject& operator=(const LightObject& other);
    ~LightObject() override;

    /// Sets the default name and colours, no spot cone, the spot exponent 128, and the bits
    /// Editable and Active. The number, the bits Directional and InUse, emission and shininess do
    /// not change.
    void Reset();

    NamedColor GetColors() const { return colors; }
    void SetColors(const NamedColor& newColors) { colors = newColors; }
    /// OpenGL's number of the light: GL_LIGHT0 + n. If the rendering context has fewer lights, the
    /// light draws nothing.
    unsigned int GetLightNumber() const { return lightNumber; }
    void SetLightNumber(unsigned int number) { lightNumber = number; }

    /// The light shines in one direction, as from far away. Its flashlight is drawn one radius of
    /// the parent's bounding sphere away from the parent's centre, along the light's z axis.
    ORVANE_FLAG(lightFlags, Directional, IsDirectional, directionalBit);
    ORVANE_FLAG(lightFlags, Active, IsActive, activeBit);
    ORVANE_FLAG(lightFlags, InUse, IsInUse, inUseBit);

    /// Half the angle of the spot cone in degrees; 180 means no cone.
    double GetSpotCutoffAngle() const { return spotCutoffAngle; }
    void SetSpotCutoffAngle(double degrees) { spotCutoffAngle = degrees; }
    double GetSpotExponent() const { return spotExponent; }
    void SetSpotExponent(double exponent) { spotExponent = exponent; }

    /// Sets the bounds to a fixed box of 0.4 by 0.4 by 0.95 units, which encloses a flashlight
    /// whose scaled dimensions are 1. Scaled dimensions and children do not change the box. Always
    /// returns 1.
    int CalculateBounds() override;
    /// Sends the light to OpenGL under the current matrix, and draws the flashlight when the
    /// parameters show lights.
    int DrawObject(DrawingParameters* parameters) override;
    /// Draws the flashlight at the current matrix. The flashlight's material stays OpenGL's current
    /// material. Always returns 1.
    int DrawFlashLight(DrawingParameters* parameters);
    /// Draws the flashlight at a distance along the light's z axis. Returns 0 when the drawing is
    /// stopped.
    int DrawAtRadius(DrawingParameters* parameters, float radius);

    int SaveToUndo() override;
    int RestoreFromUndo() override;

    void Serialize(CArchive& archive) override;
    void DeserializeVersion1(CArchive& archive);

    GLUquadric* quadric = nullptr;  ///< owned
    DWORD lightFlags = 0;
    DWORD lightNumber = GL_LIGHT0;
    double spotCutoffAngle = 180.0;
    double spotExponent = 128.0;

protected:
    NamedColor colors;

private:
    friend class SceneObject;

    /// Assigns a light of another scene's pool. This light keeps its parent, its external undo
    /// stack and its entries on that stack.
    void CopyFromOtherPool(const LightObject& other);
    bool ContextHasLight() const;
};
