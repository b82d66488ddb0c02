// SPDX-License-Identifier: MIT
#pragma once

#include "host/CFile.h"
#include "import3ds/Chunk3DS.h"
#include "material/NamedColorArray.h"
#include "scene/DrawingObject.h"

class TriangularFace;
class TriangularMeshObject;

namespace orvane
{
class ThreeDStudioParser;
}

/// A node that imports a 3D Studio file. Each triangle mesh of the file becomes a child node, a
/// TriangularMeshObject, turned from the file's coordinates, in which z points up, to coordinates
/// in which y does. The materials are kept in this node and shared by the meshes. docs/3ds.md lists
/// the chunks that are read.
///
/// A host can also call the parsing steps by itself: it opens `file`, and each step reads from the
/// file's current position. A step returns 1, or 0 if what it should read is cut short. A step
/// never reads past the end of its chunk, allocates nothing for a count whose elements are not in
/// the file, and treats a failure to read as the end of the file.
///
/// The archive record is the record of DrawingObject, which includes the meshes, then the version,
/// the reserved word and the materials.
class ORVANE_API ThreeDStudioObject : public DrawingObject
{
    DECLARE_SERIAL(ThreeDStudioObject)

public:
    ThreeDStudioObject();
    /// Copies the materials. The meshes and the file are not copied.
    ThreeDStudioObject(const ThreeDStudioObject& other);
    ThreeDStudioObject& operator=(const ThreeDStudioObject& other);
    ~ThreeDStudioObject() override;

    /// Imports a file and closes it. Its meshes are added behind the children that are there; its
    /// materials are added behind one named "Undefined", which is added first. Returns 0 if the
    /// file cannot be opened or is not a 3D Studio file, else 1, even if only a part could be read.
    int CreateFromFile(const CString& path);

    // The parsing steps. Where one takes a chunk, the chunk's header has been read and the file is
    // at the first byte behind it.

    int Parse3DS(Chunk3DS* chunk);
    int ParseMaterialData(Chunk3DS* chunk);
    int ParseMaterialEntry(Chunk3DS* chunk);
    /// Returns 0 for an object named "Landscape", which ends the import of the editor data it is
    /// in. This is required; see the test LandscapeEndsTheImportOfItsEditorChunk.
    int ParseNamedObject(Chunk3DS* chunk);
    /// \return the mesh, without normals and bounds, owned by the caller; null if it is cut short.
    TriangularMeshObject* ParseTriangularMeshObject(Chunk3DS* chunk, const CString& name);
    int ParseVertexArray(TriangularMeshObject* mesh);
    int ParseFaceArray(Chunk3DS* chunk, TriangularMeshObject* mesh);
    int ParseMeshMaterialGroup(TriangularMeshObject* mesh);
    /// Reads the matrix, twelve floats, and does nothing with it. Always returns 1.
    int ParseMeshMatrix(TriangularMeshObject* mesh);
    /// Reads chunks up to the first colour, which is of floats or of bytes. Alpha does not change.
    /// If there is no colour, nothing changes.
    int ParseColor(ColorVector* color);
    int ParseFloatColor(ColorVector* color);
    int ParseColor24(ColorVector* color);
    /// Reads chunks up to the first percentage; 0 if there is none. A 16-bit percentage is divided
    /// by 100, a float percentage is not. The difference is required; see the test
    /// APercentageOfFloatsIsTakenAsItStands.
    float ParsePercentage();

    // The readers of values. A number that is cut short is read as 0.

    BYTE ReadBYTE();
    WORD ReadWORD();
    DWORD ReadDWORD();
    float ReadFloat();
    int ReadVector(Vector* vector);
    /// Reads the corners and the flags. The face's material does not change.
    int ReadFace(TriangularFace* face);
    /// Reads a text and its final zero byte. A text without one ends after 80 bytes, or where the
    /// chunk ends; the latter returns 0.
    int ReadString(CString* text);

    /// Replaces the material of that index. An index outside the array is ignored.
    void SetSurfaceColor(const NamedColor& color, int material) override;

    int RestoreFromUndo() override;
    int SaveToUndo() override;

    void Serialize(CArchive& archive) override;
    void DeserializeVersion1(CArchive& archive);

    /// Why an import skips a part of a file.
    enum class SkipReason
    {
        NotUsed,      ///< an import does not read such a chunk in this place
        PastParent,   ///< the chunk ends past the end of the chunk it is in
        Incomplete,   ///< the chunk ends before the values that must be in it do
        NoHeader,     ///< the bytes are not the header of a chunk
        Landscape,    ///< the chunk is the object "Landscape"
        AfterFailure  ///< the part follows another that ended the import of the chunk they are in
    };
    /// A part of a file that an import skips: a chunk with its header, or, if no chunk can be
    /// named, all bytes up to the end of the chunk they are in.
    struct SkippedPart
    {
        WORD parent;   ///< id of the chunk that the part is in
        WORD id;       ///< 0 if the part is not one chunk
        DWORD start;   ///< position in the file
        DWORD length;  ///< in bytes
        SkipReason why;
        DWORD parentEnd = 0;  ///< for PastParent: position where the parent ends; else 0
    };

    CFile file;  ///< open while it is imported
    /// Once a file has been imported, the first material is "Undefined", which faces without a
    /// material have.
    NamedColorArray materials;
    DWORD reservedWord = 0;  ///< archived, and used for nothing else

protected:
    /// Called for each part of a file that is skipped, in the order of the file. Does nothing; a
    /// derived class may collect the parts.
    virtual void OnSkipped(const SkippedPart& part);

private:
    friend class orvane::ThreeDStudioParser;
};
