// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/VectorArray.h"
#include "import3ds/TriangularFaceArray.h"
#include "scene/DrawingObject.h"

#include <iosfwd>

class NamedColorArray;

namespace orvane
{
class SurfaceRecorder;
}

/// An imported mesh: vertices, triangular faces with a material each, and the normals of both. It
/// is drawn as lit triangles or as outlines.
///
/// In files, the corners of a face run counter-clockwise seen from outside the solid. The face
/// normal that is calculated from them points into the solid. The lit drawing takes clockwise faces
/// for front faces and lights both sides, and so shows the outside lit.
///
/// The materials are those of the ThreeDStudioObject that imported the mesh: borrowed, shared by
/// its meshes, and needed only for drawing. If a mesh outlives its importer, detach them with
/// SetMaterialColors(nullptr).
///
/// Faces, vertices and normals may be changed freely. Drawing copes with indices past the ends of
/// the arrays: it draws vertex 0 for an index past the vertices, material 0 for an index past the
/// materials, and a zero normal where a normal is missing.
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
    /// One unit normal per vertex; zero for a vertex that no face uses.
    VectorArray* GetVertexNormals() { return &vertexNormals; }
    const VectorArray* GetVertexNormals() const { return &vertexNormals; }
    VectorArray* GetVerticies() { return &vertices; }
    const VectorArray* GetVerticies() const { return &vertices; }

    /// \param colors borrowed; if null, the mesh is not drawn.
    void SetMaterialColors(NamedColorArray* colors) { materialColors = colors; }
    void SetName(const CString& newName) { name = newName; }

    // Hidden and Shadow are kept from the file and change nothing here.
    ORVANE_FLAG(meshFlags, Hidden, IsHidden, 0x01);
    ORVANE_FLAG(meshFlags, Shadow, IsShadow, 0x02);
    ORVANE_FLAG(meshFlags, BoundsCalculated, IsBoundsCalculated, 0x04);
    ORVANE_FLAG(meshFlags, FaceNormalsCalculated, AreFaceNormalsCalculated, 0x08);
    ORVANE_FLAG(meshFlags, VertexNormalsCalculated, AreVertexNormalsCalculated, 0x10);

    /// Replaces every corner that is past the vertices by vertex 0. Without vertices, removes the
    /// faces. Returns 0 if no faces are left.
    int ValidateFaces();
    /// Returns 1 at once if the face normals are calculated already, and 0 without faces.
    int CalculateFaceNormals();
    /// Calculates each vertex's normal as the mean of the normals of its faces, which must be
    /// calculated before. Returns 1 at once if the vertex normals are calculated already, and 0
    /// without faces.
    int CalculateVertexNormals();

    /// Calculates the local bounds of the vertices and the children once, and the global bounds,
    /// which depend on the transform, every time. Always returns 1.
    int CalculateBounds() override;

    /// Returns 0 if the drawing is cancelled.
    int DrawObject(DrawingParameters* parameters) override;
    /// Draws lit triangles, each with its index as its OpenGL name. Returns 0 if the drawing was
    /// cancelled before it began.
    int DrawRendered(DrawingParameters* parameters);
    /// Records the triangles that DrawRendered draws, with normals that point out of the solid.
    void RecordSurface(orvane::SurfaceRecorder& recorder) const;
    /// Draws a line loop for each face. While picking, each loop has the face's index as its OpenGL
    /// name. Returns 0 if the drawing was cancelled before it began.
    int DrawOutline(DrawingParameters* parameters);

    /// Replaces the material that a face uses, which changes every face of every mesh that uses it.
    /// An index past the faces is ignored.
    void SetSurfaceColor(const NamedColor& color, int faceIndex) override;

    /// Writes vertices and faces as text into the file "d:\Verts\<name>". Writes nothing if that
    /// directory does not exist. Always returns 1.
    int OutputVertsAndFaces() const;
    /// Writes the same text to a stream.
    void WriteVertsAndFaces(std::ostream& out) const;

    void Serialize(CArchive& archive) override;
    void DeserializeVersion1(CArchive& archive);
    void DeserializeVersion2(CArchive& archive);

protected:
    VectorArray faceNormals;
    TriangularFaceArray faces;

public:
    NamedColorArray* materialColors = nullptr;
    DWORD meshFlags = 0;
    CString name;  ///< of the object in the file

protected:
    VectorArray vertexNormals;
    VectorArray vertices;

public:
    /// A corner is drawn with its vertex normal if |vertex normal . face normal| is at least this,
    /// and with the face normal otherwise. At the default of 1 almost every mesh looks flat. That
    /// is required; see the test AFreshMeshIsFlatShaded.
    float smoothingThreshold = 1.0f;

private:
    /// The vertex that is drawn for a corner: vertex 0 if the corner is past the vertices.
    int VertexOfCorner(WORD corner) const { return corner < vertices.GetSize() ? corner : 0; }
    /// The element, or a zero vector past the end.
    static const Vector& ElementOrZero(const VectorArray& vectors, int index);
    bool HasMaterials() const;
    /// The normal of a face's corner: that of the corner's vertex or of the face, as
    /// smoothingThreshold says.
    const Vector& CornerNormal(int faceIndex, int vertex) const;
    NamedColor& MaterialOf(const TriangularFace& face) const;
    template <typename DrawFace>
    void ForEachFace(DrawingParameters* parameters, DrawFace drawFace) const;
};
