// SPDX-License-Identifier: MIT
#pragma once

#include "material/NamedColor.h"
#include "platform/OpenGL.h"
#include "scene/DrawingObject.h"

/// One OpenGL light as a node of the scene: its colours, number, kind and state. A scene makes a
/// fixed pool of these and hands them out; InUse says that a light is handed out, Active that it is
/// switched on.
///
/// The light sits at the origin of its node's coordinates and shines along their negative z axis;
/// it is moved and turned by the node's transform. When the drawing parameters ask for lights it
/// also draws itself as a flashlight, which fills the unit box of its scaled dimensions.
class ORVANE_API LightObject : public DrawingObject
{
    DECLARE_SERIAL(LightObject)

public:
    // The bits of lightFlags.
    static constexpr DWORD directionalBit = 0x1;
    static constexpr DWORD activeBit = 0x2;
    static constexpr DWORD inUseBit = 0x4;

    LightObject();
    /// A copy has a quadric of its own.
    LightObject(const LightObject& other);
    LightObject& operator=(const LightObject& other);
    ~LightObject() override;

    /// The default name and colours, no spot cone, Editable and Active. Number, kind, InUse,
    /// emission and shininess stay.
    void Reset();

    NamedColor GetColors() const { return colors; }
    void SetColors(const NamedColor& newColors) { colors = newColors; }
    /// GL_LIGHT0 + n. A number that the context does not have draws nothing.
    unsigned int GetLightNumber() const { return lightNumber; }
    void SetLightNumber(unsigned int number) { lightNumber = number; }

    /// Shines in one direction from afar, its glyph placed over the parent.
    ORVANE_FLAG(lightFlags, Directional, IsDirectional, directionalBit);
    ORVANE_FLAG(lightFlags, Active, IsActive, activeBit);
    ORVANE_FLAG(lightFlags, InUse, IsInUse, inUseBit);

    /// Degrees; 180 is no cone.
    double GetSpotCutoffAngle() const { return spotCutoffAngle; }
    void SetSpotCutoffAngle(double degrees) { spotCutoffAngle = degrees; }
    double GetSpotExponent() const { return spotExponent; }
    void SetSpotExponent(double exponent) { spotExponent = exponent; }

    /// The box of the glyph, whatever the children are. Always 1.
    int CalculateBounds() override;
    /// Programs the light under the current matrix and draws its glyph when lights are shown.
    int DrawObject(DrawingParameters* parameters) override;
    /// Draws the glyph at the current matrix and leaves the glyph's materials in force. Always 1.
    int DrawFlashLight(DrawingParameters* parameters);
    /// Draws the glyph at a distance along the light's z axis. 0 when the drawing is to stop.
    int DrawAtRadius(DrawingParameters* parameters, float radius);

    int SaveToUndo() override;
    int RestoreFromUndo() override;

    void Serialize(CArchive& archive) override;
    void DeserializeVersion1(CArchive& archive);

    GLUquadric* quadric;  ///< owned
    DWORD lightFlags = 0;
    DWORD lightNumber = GL_LIGHT0;
    double spotCutoffAngle = 180.0;
    double spotExponent = 128.0;

protected:
    NamedColor colors;

private:
    friend class SceneObject;

    /// Assigns a light of another pool: parent and external undo stack stay, and what this light
    /// has on that stack.
    void CopyFromOtherPool(const LightObject& other);
    bool ContextHasLight() const;
};
