// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Small meshes for tests.

#include "import3ds/TriangularMeshObject.h"

#include <cmath>
#include <initializer_list>
#include <numbers>

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

/// A ball of radius 1 of triangles that are all different, with the materials 0 and 1.
inline void FillBall(TriangularMeshObject& mesh)
{
    constexpr int rows = 12;
    constexpr int columns = 20;
    for (int row = 0; row <= rows; ++row)
    {
        for (int column = 0; column < columns; ++column)
        {
            const double across = 2 * std::numbers::pi * column / columns;
            const double down = std::numbers::pi * row / rows;
            AddVertices(mesh, {Vector(static_cast<float>(std::sin(down) * std::cos(across)),
                                      static_cast<float>(std::sin(down) * std::sin(across)),
                                      static_cast<float>(std::cos(down)))});
        }
    }
    for (int row = 0; row < rows; ++row)
    {
        for (int column = 0; column < columns; ++column)
        {
            const auto at = [&](int r, int c) {
                return static_cast<WORD>(r * columns + c % columns);
            };
            const WORD material = row % 4 < 2 ? 0 : 1;
            AddFace(mesh, at(row, column), at(row + 1, column), at(row + 1, column + 1), material);
            AddFace(mesh, at(row, column), at(row + 1, column + 1), at(row, column + 1), material);
        }
    }
    mesh.CalculateFaceNormals();
    mesh.CalculateVertexNormals();
}
