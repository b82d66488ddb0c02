// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// 3D Studio files in tests, built chunk by chunk.

#include "import3ds/ThreeDStudioObject.h"
#include "import3ds/TriangularMeshObject.h"
#include "tests/support/ChunkBytes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <string>

/// A vertex list.
/// \param coordinates x, y and z of each vertex, z up.
inline RecordBytes VertexChunk(std::initializer_list<float> coordinates)
{
    return ChunkOf(0x4110, {RecordBytes().Word(static_cast<WORD>(coordinates.size() / 3)),
                            RecordBytes().Floats(coordinates)});
}

/// A face list.
/// \param words three corners and the flags of each face.
/// \param parts the chunks behind the faces.
inline RecordBytes FaceChunk(std::initializer_list<WORD> words,
                             std::initializer_list<RecordBytes> parts = {})
{
    return ChunkOf(0x4120, {RecordBytes().Word(static_cast<WORD>(words.size() / 4)), Words(words),
                            Joined(parts)});
}

inline RecordBytes MaterialGroup(const std::string& name, std::initializer_list<WORD> faces)
{
    return ChunkOf(0x4130, {ZeroTerminated(name),
                            RecordBytes().Word(static_cast<WORD>(faces.size())), Words(faces)});
}

/// A tetrahedron whose faces run counter-clockwise seen from outside.
/// \param faceParts the chunks behind the faces.
inline RecordBytes TetrahedronChunks(std::initializer_list<RecordBytes> faceParts = {})
{
    return Joined({VertexChunk({0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1}),
                   FaceChunk({0, 2, 1, 7, 0, 1, 3, 7, 0, 3, 2, 7, 1, 2, 3, 7}, faceParts)});
}

inline RecordBytes ObjectChunk(const std::string& name, std::initializer_list<RecordBytes> parts)
{
    return ChunkOf(0x4000, {ZeroTerminated(name), Joined(parts)});
}

/// An object with a tetrahedron as its mesh.
inline RecordBytes MeshObjectChunk(const std::string& name,
                                   std::initializer_list<RecordBytes> faceParts = {})
{
    return ObjectChunk(name, {ChunkOf(0x4100, {TetrahedronChunks(faceParts)})});
}

inline RecordBytes MaterialChunk(const std::string& name,
                                 std::initializer_list<RecordBytes> parts = {})
{
    return ChunkOf(0xAFFF, {ChunkOf(0xA000, {ZeroTerminated(name)}), Joined(parts)});
}

inline RecordBytes DiffuseColor(BYTE red, BYTE green, BYTE blue)
{
    return ChunkOf(0xA020, {ChunkOf(0x0011, {RecordBytes().Byte(red).Byte(green).Byte(blue)})});
}

inline RecordBytes FileOf(std::initializer_list<RecordBytes> editorParts)
{
    return ChunkOf(0x4D4D, {ChunkOf(0x3D3D, editorParts)});
}

/// A file on disk that is removed with this object. Its name has the name of the test in it, so
/// that tests can run at the same time.
class TemporaryFile
{
public:
    explicit TemporaryFile(const Bytes& bytes, const std::string& suffix = {})
        : path_(testing::TempDir() + "orvane-" + TestName() + suffix + ".3ds")
    {
        Write(bytes);
    }
    ~TemporaryFile()
    {
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const char* Path() const { return path_.c_str(); }
    void Write(const Bytes& bytes) const { Put(bytes, std::ios::out); }
    /// Replaces bytes from the file's start on. Faster than Write: a file that is emptied first may
    /// be written to the disk each time.
    void Overwrite(const Bytes& bytes) const { Put(bytes, std::ios::in | std::ios::out); }

private:
    void Put(const Bytes& bytes, std::ios::openmode mode) const
    {
        std::fstream out(path_, mode | std::ios::binary);
        out.write(reinterpret_cast<const char*>(bytes.data()),
                  static_cast<std::streamsize>(bytes.size()));
    }
    static std::string TestName()
    {
        const testing::TestInfo* const test = testing::UnitTest::GetInstance()->current_test_info();
        return std::string(test->test_suite_name()) + "-" + test->name();
    }

    std::string path_;
};

/// A node that has imported a file of the given bytes.
class Imported : public ThreeDStudioObject
{
public:
    explicit Imported(const Bytes& bytes)
    {
        const TemporaryFile source(bytes, "-imported");
        result = CreateFromFile(source.Path());
    }

    TriangularMeshObject& Mesh(int index = 0)
    {
        return dynamic_cast<TriangularMeshObject&>(*GetChildByIndex(index));
    }
    std::vector<std::string> MeshNames()
    {
        std::vector<std::string> names;
        for (int i = 0; i < GetChildCount(); ++i)
        {
            names.push_back(Mesh(i).name.Text());
        }
        return names;
    }
    std::vector<std::string> MaterialNames()
    {
        std::vector<std::string> names;
        for (int i = 0; i < materials.GetSize(); ++i)
        {
            names.emplace_back(materials.GetElement(i)->GetName());
        }
        return names;
    }

    int result = -1;  ///< of CreateFromFile
};

/// The index of each face's material.
inline std::vector<int> FaceMaterials(const TriangularMeshObject& mesh)
{
    std::vector<int> materials;
    for (int i = 0; i < mesh.GetFaces()->GetSize(); ++i)
    {
        materials.push_back(mesh.GetFaces()->GetElement(i)->material);
    }
    return materials;
}
