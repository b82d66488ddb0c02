// SPDX-License-Identifier: MIT
// A host in C++17. It includes the headers of X11 and GLFW first, because X11's macros (None,
// Always, Status) reach every header after them.
#include <GLFW/glfw3.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <orvane/orvane.h>

#include <cstdio>

// orvane/classes.h has classes of these names. orvane/orvane.h leaves the names to a host.
struct Point
{
    int x = 0;
};
struct Vector
{
    int x = 0;
};

int main(int argc, char** argv)
{
    orvane::Document document;
    document.AddText("installed");
    document.Save(argc > 1 ? argv[1] : "installed.orv");

    orvane::TextOptions look;
    look.profile = "chamfer 0.02";
    look.fusion = orvane::LetterFusion::Line;
    orvane::Document plate;
    plate.AddText("solid", look);
    orvane::MeshFileOptions options;
    options.solid = true;
    orvane::WriteMesh(plate, "installed.stl", options);
    std::printf("%s %zu\n", ORVANE_VERSION, document.Nodes().size());
}
