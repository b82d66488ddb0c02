// SPDX-License-Identifier: MIT
#pragma once

#include "host/CFile.h"
#include "import3ds/Chunk3DS.h"
#include "material/NamedColorArray.h"
#include "scene/DrawingObject.h"

#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

class TriangularFace;
class TriangularMeshObject;

/// A node that imports a 3D Studio file: each triangle mesh becomes a child, a
/// TriangularMeshObject, turned from the file's z-up coordinates to y-up ones, and the materials
/// are kept here, shared by the meshes. Cameras, lights, texture maps, smoothing groups and key
/// frames are skipped, and so is the local axis matrix: vertices are in world coordinates.
///
/// The steps of the parsing are open to a host that reads parts of a file by itself: each takes the
/// file at its current position. They return 1, or 0 when what they read is cut short. Whatever the
/// bytes, they read inside the chunk that they are in, make no room for a count whose elements are
/// not there, and take what cannot be read for the file's end.
///
/// Its record is that of DrawingObject, with the meshes, the version, the reserved word and the
/// materials.
class ORVANE_API ThreeDStudioObject : public DrawingObject
{
    DECLARE_SERIAL(ThreeDStudioObject)

public:
    ThreeDStudioObject();
    /// Copies the materials, and neither the meshes nor the file.
    ThreeDStudioObject(const ThreeDStudioObject& other);
    ThreeDStudioObject& operator=(const ThreeDStudioObject& other);
    ~ThreeDStudioObject() override;

    /// Imports a file: its meshes become the last children, its materials are appended behind one
    /// named "Undefined". The file is closed afterwards. 0 for one that cannot be opened or that is
    /// no 3D Studio file, else 1, also when only a part could be read.
    int CreateFromFile(const CString& path);

    // The parsing steps. A chunk's header has been read, and the file stands behind it.

    int Parse3DS(Chunk3DS* chunk);
    int ParseMaterialData(Chunk3DS* chunk);
    int ParseMaterialEntry(Chunk3DS* chunk);
    /// An object named "Landscape" is refused, which ends what is around it: meant so, see
    /// LandscapeEndsTheImportOfItsEditorChunk.
    int ParseNamedObject(Chunk3DS* chunk);
    /// The mesh, owned by the caller, without normals or bounds; null when it is cut short.
    TriangularMeshObject* ParseTriangularMeshObject(Chunk3DS* chunk, const CString& name);
    int ParseVertexArray(TriangularMeshObject* mesh);
    int ParseFaceArray(Chunk3DS* chunk, TriangularMeshObject* mesh);
    int ParseMeshMaterialGroup(TriangularMeshObject* mesh);
    /// Reads the twelve floats and drops them.
    int ParseMeshMatrix(TriangularMeshObject* mesh);
    /// Reads the first colour among the chunks here, of floats or of bytes. Alpha stays; so does
    /// all of it when there is none.
    int ParseColor(ColorVector* color);
    int ParseFloatColor(ColorVector* color);
    int ParseColor24(ColorVector* color);
    /// The first percentage among the chunks here, 0 when there is none: a whole one as a fraction,
    /// a float one as it stands. That both differ is meant, see
    /// APercentageOfFloatsIsTakenAsItStands.
    float ParsePercentage();

    // The readers of values. 0 for a number that is not there.

    BYTE ReadBYTE();
    WORD ReadWORD();
    DWORD ReadDWORD();
    float ReadFloat();
    int ReadVector(Vector* vector);
    /// Leaves the material.
    int ReadFace(TriangularFace* face);
    /// Up to a zero byte, which it takes too, at most 80 bytes, or the end of the chunk.
    int ReadString(CString* text);

    /// Replaces a material by its index. Nothing for an index that none has.
    void SetSurfaceColor(const NamedColor& color, int material) override;

    int RestoreFromUndo() override;
    int SaveToUndo() override;

    void Serialize(CArchive& archive) override;
    void DeserializeVersion1(CArchive& archive);

    /// Why a part of a file is passed over.
    enum class Skip
    {
        notUsed,      ///< nothing here reads such a chunk where it is
        pastParent,   ///< it ends behind the chunk that it is in
        incomplete,   ///< it is shorter than what must be in it
        noHeader,     ///< no header that can be read begins there
        landscape,    ///< the object "Landscape"
        afterFailure  ///< it comes behind one of the four before
    };
    /// A chunk that is passed over, with its header, or the bytes from there to its parent's end.
    struct SkippedPart
    {
        WORD parent;  ///< the chunk that it is in
        WORD id;      ///< 0 for no chunk
        DWORD start;  ///< position in the file
        DWORD length;
        Skip why;
    };

    CFile file;  ///< open while it is being read
    /// The first one, once a file has been read, is "Undefined", for faces without a material.
    NamedColorArray materials;
    DWORD reservedWord = 0;  ///< kept for the record's sake

protected:
    /// Told of each part that is passed over, in the order of the file; for a host that wants to
    /// know.
    virtual void OnSkipped_(const SkippedPart& part);

private:
    /// While it lives, reading ends at a chunk's end.
    class ChunkLimit_
    {
    public:
        ChunkLimit_(ThreeDStudioObject& object, const Chunk3DS& chunk)
            : object_(object), previousLimit_(object.limit_), previousId_(object.innermostId_)
        {
            object.limit_ = chunk.end;
            object.innermostId_ = chunk.id;
        }
        ~ChunkLimit_()
        {
            object_.limit_ = previousLimit_;
            object_.innermostId_ = previousId_;
        }
        ChunkLimit_(const ChunkLimit_&) = delete;
        ChunkLimit_& operator=(const ChunkLimit_&) = delete;

    private:
        ThreeDStudioObject& object_;
        DWORD previousLimit_;
        WORD previousId_;
    };
    class Import_;

    UINT ReadBytes_(void* bytes, UINT count);
    void SkipBytes_(int count);
    bool HasReached_(DWORD position) const;
    DWORD BytesLeft_() const;
    bool ReadBlock_(DWORD count);
    bool ReadList_(int* count, DWORD bytesPerElement);
    template <typename Number>
    Number ReadNumber_();
    template <typename HandleChunk>
    int ForEachChunk_(const Chunk3DS& parent, HandleChunk handleChunk);
    template <typename HandleChunk>
    bool HandleChunk_(Chunk3DS& chunk, HandleChunk handleChunk);
    int Skip_(WORD parent, const Chunk3DS& chunk, Skip why);
    void SkipRest_(const Chunk3DS& parent, DWORD from, Skip why);
    bool EnterChunk_(Chunk3DS* chunk, WORD id, WORD otherId);
    WORD FindMaterial_(const CString& name);
    void AddMesh_(std::unique_ptr<TriangularMeshObject> mesh);

    static constexpr DWORD noLimit_ = 0xFFFFFFFF;
    DWORD limit_ = noLimit_;  // where the chunk that is being read ends
    WORD innermostId_ = 0;

    // While a file is imported: its length, and the index of the first material of each name among
    // the first namedMaterials_.
    std::optional<std::uint64_t> fileLength_;
    std::unordered_map<std::string, WORD> materialByName_;
    int namedMaterials_ = 0;
    int skippedParts_ = 0;
    std::vector<BYTE> block_;  // the list that is being read
};
