// SPDX-License-Identifier: MIT
// Drawing one glyph with a text's materials and edge style.
#include "extrude/ExtrusionData.h"
#include "extrude/OrvFont.h"
#include "extrude/OrvGlyph.h"
#include "material/ApplyMaterial.h"
#include "material/NamedColor.h"
#include "material/Unlit.h"
#include "platform/OpenGL.h"
#include "scene/DrawingParameters.h"
#include "scene/OrvString.h"

namespace
{
// Edge styles, and where they go: the indices of the tables below.
constexpr int square = 0;
constexpr int styles = 3;
constexpr int frontOnly = 0;
constexpr int backOnly = 1;
constexpr int locations = 3;

// Names on selection passes.
constexpr GLuint facesName = 0;
constexpr GLuint wallsName = 1;
constexpr GLuint bevelsName = 2;

using Routine = decltype(&OrvGlyph::RenderFaces);

constexpr Routine walls[locations] = {&OrvGlyph::RenderEdgesFrontBevelOnly,
                                      &OrvGlyph::RenderEdgesBackBevelOnly,
                                      &OrvGlyph::RenderEdgesBevelled};

struct Rings
{
    Routine front;
    Routine back;
};
constexpr Rings rings[styles - 1][locations] = {
    {{&OrvGlyph::RenderFrontBevelBevelled, &OrvGlyph::RenderBackBevelFlat},
     {&OrvGlyph::RenderFrontBevelFlat, &OrvGlyph::RenderBackBevelBevelled},
     {&OrvGlyph::RenderFrontBevelBevelled, &OrvGlyph::RenderBackBevelBevelled}},
    {{&OrvGlyph::RenderFrontRoundRounded, &OrvGlyph::RenderBackBevelFlat},
     {&OrvGlyph::RenderFrontBevelFlat, &OrvGlyph::RenderBackRoundRounded},
     {&OrvGlyph::RenderFrontRoundRounded, &OrvGlyph::RenderBackRoundRounded}}};

constexpr Routine bevelOutlines[styles - 1][locations] = {
    {&OrvGlyph::DrawFrontFaceBevelled, &OrvGlyph::DrawBackFaceBevelled,
     &OrvGlyph::DrawBothFacesBevelled},
    {&OrvGlyph::DrawFrontFaceRounded, &OrvGlyph::DrawBackFaceRounded,
     &OrvGlyph::DrawBothFacesRounded}};

bool IsLocation(int location)
{
    return location >= 0 && location < locations;
}

/// Whether the bevels leave no wall between them.
bool IsWallEmpty(int location, const ExtrusionData& extrusion)
{
    const float back = location == frontOnly ? extrusion.backZ : extrusion.backBevelZ;
    const float front = location == backOnly ? extrusion.frontZ : extrusion.frontBevelZ;
    return back == front;
}

void PushName(bool naming, GLuint name)
{
    if (naming)
    {
        glPushName(name);
    }
}

void PopName(bool naming)
{
    if (naming)
    {
        glPopName();
    }
}
}  // namespace

int OrvFont::SetMaterialColors(const NamedColor& material)
{
    ApplyMaterial(GL_FRONT_AND_BACK, material);
    if (material.IsTransparent())
    {
        glEnable(GL_BLEND);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        glDepthMask(GL_FALSE);
    }
    else
    {
        glDisable(GL_BLEND);
        glDepthMask(GL_TRUE);
    }
    return 1;
}

int OrvFont::RenderGlyph(int glyphIndex, OrvString* string, const ExtrusionData& extrusion,
                         DrawingParameters* parameters)
{
    OrvGlyph* const glyph = ValidGlyph(glyphIndex);
    if (glyph == nullptr)
    {
        return 0;
    }
    const bool naming = parameters->IsSelecting() != 0;
    const int style = string->GetBevelStyle();
    const int location = string->GetBevelLocation();

    SetMaterialColors(string->faceColor);
    PushName(naming, facesName);
    glyph->RenderFaces(extrusion);
    PopName(naming);

    PushName(naming, wallsName);
    if (style == square)
    {
        if (string->ShouldUseEdgeColor())
        {
            SetMaterialColors(string->edgeColor);
        }
        glyph->RenderEdgesUnbevelled(extrusion);
        PopName(naming);
        return 1;
    }
    if (style < 0 || style >= styles)
    {
        // The name stays pushed. Meant; see AnUnknownStyleDrawsTheFacesAndLeavesItsNamePushed.
        return 1;
    }
    bool edgeColorIsSet = false;
    if (IsLocation(location) && !IsWallEmpty(location, extrusion))
    {
        if (string->ShouldUseEdgeColor())
        {
            SetMaterialColors(string->edgeColor);
            edgeColorIsSet = true;
        }
        (glyph->*walls[location])(extrusion);
    }
    PopName(naming);

    PushName(naming, bevelsName);
    if (string->ShouldUseBevelColor())
    {
        SetMaterialColors(string->bevelColor);
    }
    else if (edgeColorIsSet)
    {
        SetMaterialColors(string->faceColor);
    }
    if (IsLocation(location))
    {
        const Rings& ring = rings[style - 1][location];
        (glyph->*ring.front)(extrusion);
        (glyph->*ring.back)(extrusion);
    }
    PopName(naming);
    return 1;
}

int OrvFont::DrawGlyph(int glyphIndex, OrvString* string, const ExtrusionData& extrusion,
                       DrawingParameters* parameters)
{
    OrvGlyph* const glyph = ValidGlyph(glyphIndex);
    if (glyph == nullptr)
    {
        return 0;
    }
    const bool naming = parameters->IsSelecting() != 0;
    const int style = string->GetBevelStyle();
    const int location = string->GetBevelLocation();

    SetMaterialColors(string->GetExtentsBoxColor());
    const Unlit unlit;
    PushName(naming, facesName);
    if (style == square)
    {
        glyph->Draw(extrusion);
    }
    else if (style > square && style < styles && IsLocation(location))
    {
        (glyph->*bevelOutlines[style - 1][location])(extrusion);
    }
    PopName(naming);
    glDisable(GL_COLOR_MATERIAL);
    return 1;
}
