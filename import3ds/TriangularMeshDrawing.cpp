// SPDX-License-Identifier: MIT
#include "geometry/SurfaceRecorder.h"
#include "import3ds/TriangularMeshObject.h"
#include "material/NamedColorArray.h"
#include "material/Unlit.h"
#include "platform/OpenGL.h"
#include "scene/DrawingParameters.h"
#include "scene/SolidDrawer.h"

#include <cmath>

namespace
{

// The number of faces that are drawn between two checks for a cancelled drawing.
constexpr int facesPerTerminationCheck = 50;

void EmitVertex(const Vector& vertex)
{
    glVertex3fv(&vertex.x);
}

// Draws the mesh as a solid, with the drawer of the parameters when it draws the mesh.
int DrawSolid(TriangularMeshObject& mesh, DrawingParameters& parameters)
{
    orvane::SolidDrawer* const drawer = parameters.GetSolidDrawer();
    if (drawer != nullptr && !parameters.IsSelecting())
    {
        const orvane::SolidDrawing drawing = drawer->DrawSurface(mesh, parameters);
        if (drawing != orvane::SolidDrawing::NotDrawn)
        {
            return drawing == orvane::SolidDrawing::Drawn ? 1 : 0;
        }
    }
    return mesh.DrawRendered(&parameters);
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
        drawn = DrawSolid(*this, *parameters);
    }
    else if (parameters->IsOutline())
    {
        drawn = DrawOutline(parameters);
    }
    return drawn && DrawingObject::DrawObject(parameters) ? 1 : 0;
}

// Calls drawFace with each face and its index, until the drawing is cancelled.
template <typename DrawFace>
void TriangularMeshObject::ForEachFace(DrawingParameters* parameters, DrawFace drawFace) const
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
    if (!HasMaterials())
    {
        return 1;
    }
    glDisable(GL_CULL_FACE);
    glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, 1);
    glFrontFace(GL_CW);
    int currentMaterial = -1;
    ForEachFace(parameters, [&](int index, const TriangularFace& face) {
        glPushName(static_cast<GLuint>(index));
        glBegin(GL_TRIANGLES);
        if (face.material != currentMaterial)
        {
            currentMaterial = face.material;
            PrepareMaterialColors(MaterialOf(face));
        }
        for (const WORD corner : {face.a, face.b, face.c})
        {
            const int vertex = VertexOfCorner(corner);
            glNormal3fv(&CornerNormal(index, vertex).x);
            EmitVertex(ElementOrZero(vertices, vertex));
        }
        glEnd();
        glPopName();
    });
    glFrontFace(GL_CCW);
    glEnable(GL_CULL_FACE);
    glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, 0);
    return 1;
}

const Vector& TriangularMeshObject::CornerNormal(int faceIndex, int vertex) const
{
    const Vector& faceNormal = ElementOrZero(faceNormals, faceIndex);
    const Vector& vertexNormal = ElementOrZero(vertexNormals, vertex);
    const bool smooth = std::fabs(vertexNormal.Dot(faceNormal)) >= smoothingThreshold;
    return smooth ? vertexNormal : faceNormal;
}

void TriangularMeshObject::RecordSurface(orvane::SurfaceRecorder& recorder) const
{
    if (!HasMaterials() || vertices.GetSize() == 0)
    {
        return;
    }
    recorder.BeginPart(orvane::MeshPart::Surface);
    recorder.FrontFace(GL_CCW);
    recorder.Begin(GL_TRIANGLES);
    for (int i = 0; i < faces.GetSize(); ++i)
    {
        const TriangularFace& face = *faces.GetElement(i);
        recorder.UseMaterial(MaterialOf(face));
        for (const WORD corner : {face.a, face.b, face.c})
        {
            const int vertex = VertexOfCorner(corner);
            const Vector normal = -CornerNormal(i, vertex);
            recorder.Normal(normal.x, normal.y, normal.z);
            const Vector& place = ElementOrZero(vertices, vertex);
            recorder.Vertex(place.x, place.y, place.z);
        }
    }
    recorder.End();
}

int TriangularMeshObject::DrawOutline(DrawingParameters* parameters)
{
    if (ShouldTerminateDrawing(parameters))
    {
        return 0;
    }
    if (!HasMaterials())
    {
        return 1;
    }
    const Unlit unlit;
    const bool picking = parameters->IsSelecting() != 0;
    ForEachFace(parameters, [&](int index, const TriangularFace& face) {
        if (picking)
        {
            glPushName(static_cast<GLuint>(index));
        }
        PrepareMaterialColors(MaterialOf(face));
        glBegin(GL_LINE_LOOP);
        for (const WORD corner : {face.a, face.b, face.c})
        {
            EmitVertex(ElementOrZero(vertices, VertexOfCorner(corner)));
        }
        glEnd();
        if (picking)
        {
            glPopName();
        }
    });
    return 1;
}
