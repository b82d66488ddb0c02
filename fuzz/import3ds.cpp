// SPDX-License-Identifier: MIT
// Imports the input as a 3D Studio file, writes the meshes as text, and uses them in a document.
#include "fuzz/DocumentUse.h"
#include "fuzz/InputFile.h"
#include "orvane.h"

#include <sstream>

namespace
{

void WriteMeshes(const std::string& path)
{
    ThreeDStudioObject node;
    node.CreateFromFile(path.c_str());
    const DrawingObjectList& meshes = *node.GetChildren();
    for (POSITION position = meshes.GetHeadPosition(); position != nullptr;)
    {
        std::ostringstream text;
        dynamic_cast<TriangularMeshObject&>(*meshes.GetNext(position)).WriteVertsAndFaces(text);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t count)
{
    static InputFile input("input.3ds");
    const std::string& path = input.Fill(bytes, count);
    WriteMeshes(path);

    orvane::Document document;
    orvane::MeshOptions options;
    options.warn = [](const std::string&) {};
    try
    {
        document.AddMesh(path, options);
    }
    catch (const orvane::Error&)
    {
        return 0;
    }
    UseDocument(document, input);
    return 0;
}
