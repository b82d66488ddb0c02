// SPDX-License-Identifier: MIT
// A host without a window: it saves a document, loads it, and finds out what is under a pixel.
// usage: pick TEXT SCENE.orv X Y   (pixels of a picture of 640 by 360, from its upper left corner)
#include <orvane/orvane.h>

#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv)
{
    if (argc != 5)
    {
        std::fprintf(stderr, "usage: pick TEXT SCENE.orv X Y\n");
        return 2;
    }
    constexpr orvane::Size size{640, 360};
    try
    {
        orvane::Document document;
        document.AddText(argv[1]);
        document.Frame(size);
        document.Save(argv[2]);

        const orvane::Document loaded = orvane::Document::Open(argv[2]);
        const auto hits = loaded.Pick(size, std::atoi(argv[3]), std::atoi(argv[4]));
        if (hits.empty() || hits.front().kind != orvane::HitKind::Letter)
        {
            std::puts("no letter");
        }
        else
        {
            std::printf("letter \"%s\"\n", hits.front().letter.c_str());
        }
    }
    catch (const orvane::Error& error)
    {
        std::fprintf(stderr, "pick: %s\n", error.what());
        return 1;
    }
}
