// SPDX-License-Identifier: MIT
// Imports any bytes as a 3D Studio file, and writes the meshes as text.
#include "fuzz/InputFile.h"
#include "orvane.h"

#include <sstream>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t count)
{
    static const InputFile input;
    ThreeDStudioObject node;
    node.CreateFromFile(input.Fill(bytes, count).c_str());
    const DrawingObjectList& meshes = *node.GetChildren();
    for (POSITION position = meshes.GetHeadPosition(); position != nullptr;)
    {
        std::ostringstream text;
        dynamic_cast<TriangularMeshObject&>(*meshes.GetNext(position)).WriteVertsAndFaces(text);
    }
    return 0;
}
