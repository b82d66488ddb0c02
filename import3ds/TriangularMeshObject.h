// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/VectorArray.h"
#include "import3ds/TriangularFaceArray.h"
#include "scene/DrawingObject.h"

#include <iosfwd>

class NamedColorArray;

/// A mesh of triangles that was imported: vertices, faces with a material each, and normals of
/// both. It is drawn as lit triangles, or as outlines.
///
/// Face normals point into the solid where the faces run counter-clockwise seen from outside, as
/// files have them; the lit drawing takes clockwise for the front and lights both sides, and so
/// shows the outside lit.
///
/// The materials are those of the ThreeDStudioObject that imported the mesh: borrowed, shared by
/// its meshes, and needed for drawing only. Detach them (SetMaterialColors(nullptr)) from a mesh
/// that outlives its importer.
///
/// Faces, vertices and normals may be changed freely. What then does not fit together is drawn
/// with what is there: an index past the vertices means vertex 0, one past the materials material
/// 0, and a normal that is missing is zero.
class ORVANE_API TriangularMeshObject : public DrawingObject
{
    DECLARE_SERIAL(TriangularMeshObject)

public:
    TriangularMeshObject();
    TriangularMeshObject(const TriangularMeshObject& other);
    TriangularMeshObject& operator=(const TriangularMeshObject& other);
    ~TriangularMeshObject() override;

    /// One unit normal per face.
    VectorArray* GetFaceNormals() { return &faceNormals; }
    const VectorArray* GetFaceNormals() const { return &faceNormals; }
    TriangularFaceArray* GetFaces() { return &faces; }
    const TriangularFaceArray* GetFaces() const { return &faces; }
    /// One unit normal per vertex, zero for a vertex of no face.
    VectorArray* GetVertexNormals() { return &vertexNormals; }
    const VectorArray* GetVertexNormals() const { return &vertexNormals; }
    VectorArray* GetVerticies() { return &vertices; }
    const VectorArray* GetVerticies() const { return &vertices; }

    /// \param colors borrowed, may be null: then nothing is drawn.
    void SetMaterialColors(NamedColorArray* colors) { materialColors = colors; }
    void SetName(const CString& newName) { name = newName; }

    ORVANE_FLAG(meshFlags, Hidden, IsHidden, 0x01);  ///< in the program that made the file
    ORVANE_FLAG(meshFlags, Shadow, IsShadow, 0x02);
    ORVANE_FLAG(meshFlags, BoundsCalculated, IsBoundsCalculated, 0x04);
    ORVANE_FLAG(meshFlags, FaceNormalsCalculated, AreFaceNormalsCalculated, 0x08);
    ORVANE_FLAG(meshFlags, VertexNormalsCalculated, AreVertexNormalsCalculated, 0x10);

    /// Makes every corner that names no vertex vertex 0; without any vertices it drops the faces.
    /// 0 when there are no faces, or none any more.
    int ValidateFaces();
    /// 1 at once when they have been calculated, 0 without faces.
    int CalculateFaceNormals();
    /// The mean of the normals of the faces at each vertex. 1 at once when they have been
    /// calculated, 0 without faces. Needs the face normals.
    int CalculateVertexNormals();

    /// Measures the vertices once, and the children with them; the global bounds follow the
    /// transform every time. Always 1.
    int CalculateBounds() override;

    /// Returns 0 when drawing is cancelled.
    int DrawObject(DrawingParameters* parameters) override;
    /// Lit triangles, each named by its index. 0 when drawing was cancelled before it began.
    int DrawRendered(DrawingParameters* parameters);
    /// A loop of lines per face, named by its index when picking. 0 as DrawRendered.
    int DrawOutline(DrawingParameters* parameters);

    /// Replaces the material that a face uses, for every face of every mesh that uses it. Nothing
    /// for an index that no face has.
    void SetSurfaceColor(const NamedColor& color, int faceIndex) override;

    /// Writes vertices and faces as text into the file "d:\Verts\<name>"; where there is no such
    /// directory, nothing is written. Always 1.
    int OutputVertsAndFaces() const;
    /// The same text.
    void WriteVertsAndFaces(std::ostream& out) const;

    void Serialize(CArchive& archive) override;
    void DeserializeVersion1(CArchive& archive);
    void DeserializeVersion2(CArchive& archive);

protected:
    VectorArray faceNormals;
    TriangularFaceArray faces;

    // A file may bring many meshes: two arrays leave their padding to the word behind them.
    [[no_unique_address]] VectorArray vertexNormals;

public:
    DWORD meshFlags = 0;

protected:
    [[no_unique_address]] VectorArray vertices;

public:
    /// The smallest |vertex normal . face normal| at which a corner is drawn with the vertex
    /// normal. At 1 a mesh looks flat wherever it is not; that is meant, see
    /// AFreshMeshIsFlatShaded.
    float smoothingThreshold = 1.0f;
    NamedColorArray* materialColors = nullptr;
    CString name;  ///< of the object in the file

private:
    /// The vertex that a corner means, whatever index it has.
    int CornerIndex_(WORD corner) const { return corner < vertices.GetSize() ? corner : 0; }
    /// Zero past the end.
    static const Vector& At_(const VectorArray& vectors, int index);
    bool HasMaterials_() const;
    NamedColor& Material_(const TriangularFace& face) const;
    template <typename DrawFace>
    void ForEachFace_(DrawingParameters* parameters, DrawFace drawFace) const;
};
