// SPDX-License-Identifier: MIT
// orvane_import READER FILE: imports a 3D Studio file once and prints five numbers:
//   - the milliseconds that the import took
//   - the KiB by which the process's own memory grew at most
//   - the KiB of program code and tables that were mapped in meanwhile
//   - the KiB in vertices, faces and normals at the end
//   - the KiB in mesh nodes at the end
// READER is orvane, assimp, lib3ds, or bytes, which reads the file and does nothing with it. The
// exit status is 3 if the program was built without the reader.

#include "bench/Summary.h"
#include "import3ds/ThreeDStudioObject.h"
#include "import3ds/TriangularMeshObject.h"
#include "tests/support/MeshReaders.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>

namespace
{

/// A value of /proc/self/status in KiB, such as "VmRSS:"; 0 on a system without that file.
long MemoryKiB(const std::string& line)
{
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;)
    {
        if (word == line)
        {
            long value = 0;
            status >> value;
            return value;
        }
    }
    return 0;
}

void Require(bool isRead)
{
    if (!isRead)
    {
        std::fprintf(stderr, "orvane_import: the file could not be read\n");
        std::exit(1);
    }
}

template <typename Array>
std::size_t BytesOf(const Array* array)
{
    return static_cast<std::size_t>(array->GetSize()) * sizeof(*array->GetElement(0));
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 3)
    {
        std::fprintf(stderr, "usage: orvane_import READER FILE\n");
        return 2;
    }
    const std::string reader = argv[1];
    const char* const path = argv[2];
    ThreeDStudioObject node;
    std::vector<char> bytes;
    std::vector<std::unique_ptr<float[]>> normals;
    const long before = MemoryKiB("VmRSS:");
    const long programBefore = MemoryKiB("RssFile:");
    double seconds = 0.0;
    if (reader == "orvane")
    {
        seconds = Seconds([&] { Require(node.CreateFromFile(path) != 0); });
    }
    else if (reader == "bytes")
    {
        seconds = Seconds([&] {
            std::FILE* const file = std::fopen(path, "rb");
            Require(file != nullptr);
            bytes.resize(65536);
            while (std::fread(bytes.data(), 1, bytes.size(), file) == bytes.size())
            {}
            std::fclose(file);
        });
    }
#ifdef ORVANE_HAS_ASSIMP
    else if (reader == "assimp")
    {
        seconds = Seconds([&] { Require(aiImportFile(path, 0) != nullptr); });
    }
#endif
#ifdef ORVANE_HAS_LIB3DS
    else if (reader == "lib3ds")
    {
        seconds = Seconds([&] {
            Lib3dsFile* const file = lib3ds_file_load(path);
            Require(file != nullptr);
            for (Lib3dsMesh* mesh = file->meshes; mesh != nullptr; mesh = mesh->next)
            {
                // A normal for each corner. They are kept, as a program that draws would keep them.
                normals.push_back(std::make_unique_for_overwrite<float[]>(9 * mesh->faces));
                lib3ds_mesh_calculate_normals(
                    mesh, reinterpret_cast<Lib3dsVector*>(normals.back().get()));
            }
        });
    }
#endif
    else
    {
        return 3;
    }
    const long program = MemoryKiB("RssFile:") - programBefore;
    const long peak = MemoryKiB("VmHWM:") - before - program;
    std::size_t arrays = 0;
    std::size_t nodes = 0;
    const DrawingObjectList& meshes = *node.GetChildren();
    for (POSITION position = meshes.GetHeadPosition(); position != nullptr;)
    {
        const auto& mesh = dynamic_cast<const TriangularMeshObject&>(*meshes.GetNext(position));
        arrays += BytesOf(mesh.GetVerticies()) + BytesOf(mesh.GetFaces()) +
                  BytesOf(mesh.GetVertexNormals()) + BytesOf(mesh.GetFaceNormals());
        nodes += sizeof(TriangularMeshObject);
    }
    std::printf("%.3f %ld %ld %zu %zu\n", 1000.0 * seconds, peak, program, arrays / 1024,
                nodes / 1024);
    return 0;
}
