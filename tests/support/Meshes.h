// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Small meshes for tests.

#include "import3ds/TriangularMeshObject.h"

#include <initializer_list>

inline void AddVertices(TriangularMeshObject& mesh, std::initializer_list<Vector> vertices)
{
    for (const Vector& vertex : vertices)
    {
        mesh.GetVerticies()->Add(vertex);
    }
}

inline void AddFace(TriangularMeshObject& mesh, WORD a, WORD b, WORD c, WORD material = 0)
{
    TriangularFace face;
    face.a = a;
    face.b = b;
    face.c = c;
    face.material = material;
    mesh.GetFaces()->Add(face);
}

/// A square in the plane z = 0 with the corners (0, 0), (1, 0), (1, 1) and (0, 1). Its two faces
/// run counter-clockwise seen from +z.
inline void FillSquare(TriangularMeshObject& mesh)
{
    AddVertices(mesh, {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}});
    AddFace(mesh, 0, 1, 2);
    AddFace(mesh, 0, 2, 3);
}
