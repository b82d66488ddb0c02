// SPDX-License-Identifier: MIT
// Any bytes as a 3D Studio file.
#include "orvane.h"

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>

namespace
{

/// A file of its own for each process.
class InputFile
{
public:
    ~InputFile()
    {
        std::error_code ignored;
        std::filesystem::remove(path, ignored);
    }

    const std::string path = (std::filesystem::temp_directory_path() /
                              ("orvane-fuzz-" + std::to_string(std::random_device{}()) + ".3ds"))
                                 .string();
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t count)
{
    static const InputFile input;
    std::ofstream(input.path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes), static_cast<std::streamsize>(count));
    ThreeDStudioObject node;
    node.CreateFromFile(input.path.c_str());
    const DrawingObjectList& meshes = *node.GetChildren();
    for (POSITION position = meshes.GetHeadPosition(); position != nullptr;)
    {
        std::ostringstream text;
        dynamic_cast<TriangularMeshObject&>(*meshes.GetNext(position)).WriteVertsAndFaces(text);
    }
    return 0;
}
