// SPDX-License-Identifier: MIT
#include "bench/OtherTexts.h"

#include "platform/OpenGL.h"

void TextView::Apply(double unitsPerEm) const
{
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    const double nearest = distance / 10;
    const double top = 0.45 * nearest;
    glFrustum(-top * aspect, top * aspect, -top, top, nearest, 3 * distance);
    glScaled(1 / unitsPerEm, 1 / unitsPerEm, 1 / unitsPerEm);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glTranslated(-centerX * unitsPerEm, -centerY * unitsPerEm, -distance * unitsPerEm);
}

std::vector<OtherLibrary> OtherLibraries()
{
    return
    {
#if defined(ORVANE_BENCH_FTGL)
        {"FTGL", &MakeFtglText},
#endif
#if defined(ORVANE_BENCH_OSG)
            {"OpenSceneGraph", &MakeOsgText},
#endif
#if defined(ORVANE_BENCH_COIN)
            {"Coin", &MakeCoinText},
#endif
    };
}

std::vector<std::string> MissingLibraries()
{
    return
    {
#if !defined(ORVANE_BENCH_FTGL)
        "FTGL",
#endif
#if !defined(ORVANE_BENCH_OSG)
            "OpenSceneGraph",
#endif
#if !defined(ORVANE_BENCH_COIN)
            "Coin",
#endif
    };
}
