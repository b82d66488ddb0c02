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
/// in which y points up. The materials are kept in this node and shared by the meshes. docs/3ds.md
/// lists the chunks that are read.
///
/// A host can also call the parsing steps by itself: it opens `file`, and each step reads from the
/// file's current position. A step returns 1, or 0 if the bytes that it should read are cut short.
/// A step never reads past the end of its chunk, allocates no memory for a list whose elements are
/// not all in the file, and treats a failure to read as the end of the file.
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

    /// Imports a file and closes it. The meshes are added after the children that the node has
    /// already. The materials are added after a material named "Undefined", which is added first.
    /// Returns 0 if the file cannot be opened or is not a 3D Studio file, else 1, even if only a
    /// part could be read.
    int CreateFromFile(const CString& path);

    // The parsing steps. If a step takes a chunk, the chunk's header must have been read, and the
    // file must be at the first byte after the header.

    int Parse3DS(Chunk3DS* chunk);
    int ParseMaterialData(Chunk3DS* chunk);
    int ParseMaterialEntry(Chunk3DS* chunk);
    /// Returns 0 for an object named "Landscape", which ends the import of the editor data that
    /// contains the object. This is required; see the test LandscapeEndsTheImportOfItsEditorChunk.
    int ParseNamedObject(Chunk3DS* chunk);
    /// \return the mesh, without normals and bounds, owned by the caller; null if the chunk is cut
    /// short.
    TriangularMeshObject* ParseTriangularMeshObject(Chunk3DS* chunk, const CString& name);
    int ParseVertexArray(TriangularMeshObject* mesh);
    int ParseFaceArray(Chunk3DS* chunk, TriangularMeshObject* mesh);
    int ParseMeshMaterialGroup(TriangularMeshObject* mesh);
    /// Reads the matrix, twelve floats, and does nothing with it. Always returns 1.
    int ParseMeshMatrix(TriangularMeshObject* mesh);
    /// Reads chunks up to the first colour, whose components are floats or bytes. Alpha does not
    /// change. If there is no colour, returns 0 and changes nothing.
    int ParseColor(ColorVector* color);
    int ParseFloatColor(ColorVector* color);
    int ParseColor24(ColorVector* color);
    /// Reads chunks up to the first percentage and returns it; 0 if there is no percentage. A
    /// 16-bit percentage is divided by 100, a float percentage is not. The difference is required;
    /// see the test APercentageOfFloatsIsTakenAsItStands.
    float ParsePercentage();

    // The readers of values. A number that is cut short is read as 0.

    BYTE ReadBYTE();
    WORD ReadWORD();
    DWORD ReadDWORD();
    float ReadFloat();
    int ReadVector(Vector* vector);
    /// Reads the corners and the flags. The face's material does not change.
    int ReadFace(TriangularFace* face);
    /// Reads a text and its final zero byte. A text without a zero byte ends after 80 bytes.
    /// Returns 0 if the chunk ends before the zero byte and before 80 bytes.
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
        PastParent,   ///< the chunk ends past the end of its parent
        Incomplete,   ///< the chunk is too short for the values that it must contain
        NoHeader,     ///< the bytes are not the header of a chunk
        Landscape,    ///< the chunk is the object "Landscape"
        AfterFailure  ///< an earlier part ended the import of the parent
    };
    /// A part of a file that an import skips: a chunk with its header, or all bytes up to the end
    /// of the parent, which is the chunk that contains the part.
    struct SkippedPart
    {
        WORD parent;   ///< id of the chunk that contains the part
        WORD id;       ///< 0 if the part is not one chunk
        DWORD start;   ///< position in the file, in bytes
        DWORD length;  ///< in bytes
        SkipReason why;
        DWORD parentEnd = 0;  ///< for PastParent: position where the parent ends; else 0
    };

    CFile file;  ///< open during an import
    /// After the import of a file, the first material is "Undefined". Faces without a material use
    /// it.
    NamedColorArray materials;
    DWORD reservedWord = 0;  ///< stored in records, and used for nothing else

protected:
    /// Called for each part of a file that is skipped, in the order of the file. Does nothing; a
    /// derived class may collect the parts.
    virtual void OnSkipped(const SkippedPart& part);

private:
    friend class orvane::ThreeDStudioParser;
};
