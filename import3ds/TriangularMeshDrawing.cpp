// SPDX-License-Identifier: MIT
#include "import3ds/TriangularMeshObject.h"
#include "material/NamedColorArray.h"
#include "material/Unlit.h"
#include "platform/OpenGL.h"
#include "scene/DrawingParameters.h"

#include <cmath>

namespace
{

// A drawing asks this often whether to stop.
constexpr int facesPerTerminationCheck = 50;

void EmitVertex(const Vector& vertex)
{
    glVertex3fv(&vertex.x);
}

}  // namespace

int TriangularMeshObject::DrawObject(DrawingParameters* parameters)
{
    if (ShouldTerminateDrawing(parameters))
    {
        return 0;
    }
    int drawn = 1;
    if (parameters->IsRender())
    {
        drawn = DrawRendered(parameters);
    }
    else if (parameters->IsOutline())
    {
        drawn = DrawOutline(parameters);
    }
    return drawn && DrawingObject::DrawObject(parameters) ? 1 : 0;
}

// Hands each face with its index to drawFace, until the drawing is to stop.
template <typename DrawFace>
void TriangularMeshObject::ForEachFace_(DrawingParameters* parameters, DrawFace drawFace) const
{
    const int count = vertices.GetSize() == 0 ? 0 : faces.GetSize();
    for (int i = 0; i < count; ++i)
    {
        if (i != 0 && i % facesPerTerminationCheck == 0 && ShouldTerminateDrawing(parameters))
        {
            return;
        }
        drawFace(i, *faces.GetElement(i));
    }
}

int TriangularMeshObject::DrawRendered(DrawingParameters* parameters)
{
    if (ShouldTerminateDrawing(parameters))
    {
        return 0;
    }
    if (!HasMaterials_())
    {
        return 1;
    }
    glDisable(GL_CULL_FACE);
    glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, 1);
    glFrontFace(GL_CW);
    int currentMaterial = -1;
    ForEachFace_(parameters, [&](int index, const TriangularFace& face) {
        glPushName(static_cast<GLuint>(index));
        glBegin(GL_TRIANGLES);
        if (face.material != currentMaterial)
        {
            currentMaterial = face.material;
            PrepareMaterialColors(Material_(face));
        }
        const Vector& faceNormal = At_(faceNormals, index);
        for (const WORD corner : {face.a, face.b, face.c})
        {
            const int vertex = CornerIndex_(corner);
            const Vector& vertexNormal = At_(vertexNormals, vertex);
            const bool smooth = std::fabs(vertexNormal.Dot(faceNormal)) >= smoothingThreshold;
            glNormal3fv(smooth ? &vertexNormal.x : &faceNormal.x);
            EmitVertex(At_(vertices, vertex));
        }
        glEnd();
        glPopName();
    });
    glFrontFace(GL_CCW);
    glEnable(GL_CULL_FACE);
    glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, 0);
    return 1;
}

int TriangularMeshObject::DrawOutline(DrawingParameters* parameters)
{
    if (ShouldTerminateDrawing(parameters))
    {
        return 0;
    }
    if (!HasMaterials_())
    {
        return 1;
    }
    const Unlit unlit;
    const bool picking = parameters->IsSelecting() != 0;
    ForEachFace_(parameters, [&](int index, const TriangularFace& face) {
        if (picking)
        {
            glPushName(static_cast<GLuint>(index));
        }
        PrepareMaterialColors(Material_(face));
        glBegin(GL_LINE_LOOP);
        for (const WORD corner : {face.a, face.b, face.c})
        {
            EmitVertex(At_(vertices, CornerIndex_(corner)));
        }
        glEnd();
        if (picking)
        {
            glPopName();
        }
    });
    return 1;
}
