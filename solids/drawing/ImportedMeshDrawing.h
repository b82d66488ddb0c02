// SPDX-License-Identifier: MIT
#pragma once

#include "solids/drawing/RangedMeshDrawing.h"

class TriangularMeshObject;

namespace orvane
{

/// The triangles of an imported mesh, in the order of its faces.
///
/// The arrays of a mesh may be changed freely without notice, so each draw compares all of them
/// with copies.
class ImportedMeshDrawing final : public RangedMeshDrawing
{
public:
    using RangedMeshDrawing::RangedMeshDrawing;

    /// \param room the bytes that the triangles may take; a larger mesh is not drawn
    SolidDrawing Draw(TriangularMeshObject& mesh, DrawingParameters& parameters, std::size_t room);
    std::size_t Bytes() const override;

private:
    /// All that the triangles are made from.
    struct Inputs
    {
        /// Makes this the copy of what the mesh has. Returns whether something was different.
        bool Update(const TriangularMeshObject& mesh);

        std::vector<WORD> faces;     ///< three corners and a material for each face
        std::vector<float> vectors;  ///< vertices, face normals and vertex normals, x, y, z each
        std::size_t counts[4] = {};  ///< of faces, vertices, face normals and vertex normals
        float smoothingThreshold = 0;
        int materialCount = 0;
    };
    void Build(const TriangularMeshObject& mesh);

    Inputs inputs_;
};

}  // namespace orvane
