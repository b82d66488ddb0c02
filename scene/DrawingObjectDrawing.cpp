// SPDX-License-Identifier: MIT
#include "imaging/TextureOwnership.h"
#include "material/ApplyMaterial.h"
#include "material/Unlit.h"
#include "platform/OpenGL.h"
#include "scene/DrawingObject.h"
#include "scene/DrawingParameters.h"

#include <utility>

namespace
{

// Owns a node's texture from Enable on, while the node draws itself. The function Disable gives
// the ownership back. If the drawing ends without a call of Disable, the destructor does.
class AppliedTexture
{
public:
    explicit AppliedTexture(TextureMap& texture) : texture_(texture) {}
    ~AppliedTexture()
    {
        if (owned_)
        {
            texture_.ReleaseOwnership();
        }
    }
    AppliedTexture(const AppliedTexture&) = delete;
    AppliedTexture& operator=(const AppliedTexture&) = delete;

    void Enable() { owned_ = texture_.EnableTextureMap() != 0; }

    // Switches texturing off. Gives ownership back only if Enable took it.
    void Disable()
    {
        if (!owned_)
        {
            glDisable(GL_TEXTURE_2D);
            return;
        }
        owned_ = false;
        texture_.DisableTextureMap();
    }

private:
    TextureMap& texture_;
    bool owned_ = false;
};

// The corners of a box are in the order of the sizing handles: corners 0 to 3 lie around the front,
// and corner i + 4 lies behind corner i.
void EmitCorner(const DVector& corner)
{
    glVertex3dv(&corner.x);
}

void DrawWireBox(const DVector* corners)
{
    for (int side = 0; side < 8; side += 4)
    {
        glBegin(GL_LINE_LOOP);
        for (int i = 0; i < 4; ++i)
        {
            EmitCorner(corners[side + i]);
        }
        glEnd();
    }
    glBegin(GL_LINES);
    for (int i = 0; i < 4; ++i)
    {
        EmitCorner(corners[i]);
        EmitCorner(corners[i + 4]);
    }
    glEnd();
}

void DrawSolidBox(const DVector* corners)
{
    // The corners of each face, counter-clockwise seen from outside.
    constexpr int quads[24] = {3, 2, 1, 0, 4, 5, 6, 7, 0, 1, 5, 4,
                               1, 2, 6, 5, 2, 3, 7, 6, 3, 0, 4, 7};
    glBegin(GL_QUADS);
    for (const int corner : quads)
    {
        EmitCorner(corners[corner]);
    }
    glEnd();
}

// A cube that DrawWireBox and DrawSolidBox can draw.
struct Cube
{
    Cube(const Vector& center, float edge)
    {
        const double half = 0.5 * edge;
        constexpr int signs[4][2] = {{-1, -1}, {-1, 1}, {1, 1}, {1, -1}};
        for (int i = 0; i < 8; ++i)
        {
            corners[i] = DVector(center) + DVector(signs[i % 4][0] * half, signs[i % 4][1] * half,
                                                   i < 4 ? half : -half);
        }
    }

    DVector corners[8];
};

}  // namespace

int DrawingObject::ShouldTerminateDrawing(DrawingParameters* parameters) const
{
    void* const event = parameters->GetTerminationEvent();
    return event != nullptr && !parameters->IsNoTerminate() &&
           WaitForSingleObject(event, 0) == WAIT_OBJECT_0;
}

int DrawingObject::Draw(DrawingParameters* parameters)
{
    if (IsDeleted() || !parameters->ShouldDraw(*this))
    {
        return 1;
    }
    if (ShouldTerminateDrawing(parameters))
    {
        return 0;
    }
    GLint unusedDepth = 0;
    glGetIntegerv(GL_MAX_MODELVIEW_STACK_DEPTH, &unusedDepth);
    glPushMatrix();
    if (glGetError() == GL_STACK_OVERFLOW)
    {
        gluErrorString(GL_STACK_OVERFLOW);
        return 0;
    }
    glMultMatrixd(std::as_const(transform).GetCompositeMatrix());
    int drawn = 1;
    if (!parameters->ShouldShowSelectedOnly() || IsSelected())
    {
        if (parameters->ShouldShowObject())
        {
            drawn = DrawObjectWithTexture(parameters);
        }
        if (drawn && parameters->ShouldShowChildren())
        {
            drawn = DrawChildren(parameters);
        }
    }
    glPopMatrix();
    if (!drawn)
    {
        return 0;
    }
    glFlush();
    return 1;
}

int DrawingObject::DrawObjectWithTexture(DrawingParameters* parameters)
{
    TextureMap& texture = TextureOrNone();
    AppliedTexture applied(texture);
    parameters->CurrentTexture().DisableTextureMap();
    if (parameters->IsRender() && parameters->ShouldShowTextures() && !parameters->IsSelecting())
    {
        // This thread holds the texture's mutex from here on, because the application may change
        // the texture in another thread.
        const TextureOwnership ownership(texture);
        // Two textures of the same name count as the same texture: OpenGL then keeps the image and
        // the quality of the texture that was drawn before. This is required; see the test
        // ATextureOfTheCurrentNameIsTheCurrentOne.
        if (!(parameters->CurrentTexture() == &texture) && texture.GenerateTextureMaps())
        {
            parameters->SetCurrentTexture(texture);
        }
        texture.PrepareTextureMap();
        applied.Enable();
    }
    if (!DrawObject(parameters))
    {
        return 0;
    }
    if (parameters->IsRender() && parameters->ShouldShowTextures())
    {
        applied.Disable();
    }
    return 1;
}

int DrawingObject::DrawChildren(DrawingParameters* parameters)
{
    if (ShouldTerminateDrawing(parameters))
    {
        return 0;
    }
    if (!HasChildren())
    {
        return 1;
    }
    parameters->SetShowObject();
    GLuint name = 0;
    for (POSITION position = children.GetHeadPosition(); position != nullptr; ++name)
    {
        DrawingObject* const child = children.GetNext(position);
        if (parameters->IsSelecting())
        {
            glPushName(name);
        }
        if (!child->Draw(parameters))
        {
            return 0;
        }
        if (parameters->IsSelecting())
        {
            glPopName();
        }
    }
    return 1;
}

int DrawingObject::DrawObject(DrawingParameters* parameters)
{
    if (ShouldTerminateDrawing(parameters))
    {
        return 0;
    }
    const GLboolean textured = glIsEnabled(GL_TEXTURE_2D);
    glDisable(GL_TEXTURE_2D);
    DrawRequestedBoxes(parameters);
    if (textured != GL_FALSE)
    {
        glEnable(GL_TEXTURE_2D);
    }
    return 1;
}

// A node that is not Editable can draw its extents box twice: once for its own ShowExtentsBox bit,
// and once for the parameters' ExtentsBox bit or its own ShowScalingBox bit. This is required; see
// the test ANodeThatIsNotEditableCanDrawItsBoxTwice.
void DrawingObject::DrawRequestedBoxes(DrawingParameters* parameters)
{
    if (!IsEditable())
    {
        if (!ShouldShowExtentsBox() || !parameters->ShouldShowExtentsAndHandles())
        {
            return;
        }
        DrawExtentsBox(parameters);
    }
    if (parameters->IsExtentsBox())
    {
        DrawExtentsBox(parameters);
    }
    else if (ShouldShowScalingBox() && parameters->ShouldShowExtentsAndHandles())
    {
        DrawScalingBox(parameters);
    }
}

int DrawingObject::DrawExtentsBox(DrawingParameters*)
{
    const ColorVector color = GetExtentsBoxColor().GetDiffuseColor();
    glColor4fv(&color.red);
    const Unlit unlit;
    CalculateSizingHandles();
    DrawWireBox(localSizingHandles);
    return 1;
}

int DrawingObject::DrawScalingBox(DrawingParameters* parameters)
{
    DrawExtentsBox(parameters);
    return 1;
}

int DrawingObject::DrawSizingHandles(DrawingParameters* parameters)
{
    const Unlit unlit;
    CalculateSizingHandles();
    const float edge = static_cast<float>(handleSize);
    if (parameters->IsSelecting())
    {
        for (int handle = 0; handle < 4; ++handle)
        {
            glPushName(static_cast<GLuint>(GetChildCount() + handle));
            DrawClosedSizingHandle(localSizingHandles[handle], edge);
            glPopName();
        }
        return 1;
    }
    const ColorVector color = GetExtentsBoxColor().GetDiffuseColor();
    glColor4fv(&color.red);
    for (int handle = 4; handle < 8; ++handle)
    {
        DrawOpenSizingHandle(localSizingHandles[handle], edge);
    }
    for (int handle = 0; handle < 4; ++handle)
    {
        DrawClosedSizingHandle(localSizingHandles[handle], edge);
    }
    return 1;
}

void DrawingObject::DrawOpenSizingHandle(const Vector& center, const float& edge)
{
    DrawWireBox(Cube(center, edge).corners);
}

void DrawingObject::DrawClosedSizingHandle(const Vector& center, const float& edge)
{
    DrawSolidBox(Cube(center, edge).corners);
}

void DrawingObject::PrepareMaterialColors(const NamedColor& material)
{
    ApplyMaterial(GL_FRONT_AND_BACK, material);
}
