// SPDX-License-Identifier: MIT
#pragma once

#include "solids/drawing/MeshDrawing.h"

class TriangularMeshObject;

namespace orvane
{

/// The triangles of an imported mesh, in the order of its faces.
///
/// The arrays of a mesh may be changed freely without notice, so each draw compares all of them
/// with copies.
class ImportedMeshDrawing final : public MeshDrawing
{
public:
    using MeshDrawing::MeshDrawing;

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
    /// Consecutive triangles of one material.
    struct Range
    {
        int material;  ///< an index of the mesh's materials
        std::size_t firstIndex;
        std::size_t indexCount;
    };
    void Build(const TriangularMeshObject& mesh);
    SolidDrawing DrawRanges(TriangularMeshObject& mesh, DrawingParameters& parameters) const;

    Inputs inputs_;
    std::vector<Range> ranges_;
    MeshVertex lastVertex_ = {};  ///< the last one that immediate mode emits
};

}  // namespace orvane
