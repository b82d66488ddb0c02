// SPDX-License-Identifier: MIT
// A 3D Studio file beside a text. usage: mesh FILE.3ds PICTURE.png
#include <orvane/orvane.h>

#include <cstdio>

int main(int argc, char** argv)
{
    if (argc != 3)
    {
        std::fprintf(stderr, "usage: mesh FILE.3ds PICTURE.png\n");
        return 2;
    }
    try
    {
        orvane::Document document;
        document.AddText("Rock");
        orvane::MeshOptions place;
        place.size = 1.2;  // of the longest edge, in ems
        place.turn = {0, 30, 0};
        const orvane::Node mesh = document.AddMesh(argv[1], place);
        const orvane::Box box = mesh.Bounds();
        std::printf("the mesh is %.2f by %.2f by %.2f ems\n", box.maximum.x - box.minimum.x,
                    box.maximum.y - box.minimum.y, box.maximum.z - box.minimum.z);
        orvane::WritePicture(document, argv[2]);
    }
    catch (const orvane::Error& error)
    {
        // A file that is damaged or not there: which one, where, and what was expected.
        std::fprintf(stderr, "mesh: %s\n", error.what());
        return 1;
    }
}
