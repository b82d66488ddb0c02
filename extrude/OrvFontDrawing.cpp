// SPDX-License-Identifier: MIT
// OrvFont: drawing one glyph with the materials and the edge style of a text.
#include "extrude/EdgeStyle.h"
#include "extrude/ExtrusionData.h"
#include "extrude/OrvFont.h"
#include "extrude/OrvGlyph.h"
#include "material/ApplyMaterial.h"
#include "material/NamedColor.h"
#include "material/Unlit.h"
#include "platform/OpenGL.h"
#include "scene/DrawingParameters.h"
#include "scene/OrvString.h"

using orvane::BevelSides;
using orvane::EdgeStyle;

namespace
{
// The names that a selection pass pushes for the parts of a glyph.
constexpr GLuint facesName = 0;
constexpr GLuint wallsName = 1;
constexpr GLuint bevelsName = 2;

using Routine = decltype(&OrvGlyph::RenderFaces);

// The tables below have one column for each value of BevelSides: front, back, both. The tables
// rings and wireframes have two rows: one for bevelled and one for rounded edges. Square edges need
// no table.
constexpr int ringStyleCount = orvane::edgeStyleCount - 1;

constexpr Routine walls[orvane::bevelSidesCount] = {&OrvGlyph::RenderEdgesFrontBevelOnly,
                                                    &OrvGlyph::RenderEdgesBackBevelOnly,
                                                    &OrvGlyph::RenderEdgesBevelled};

struct Rings
{
    Routine front;
    Routine back;
};
constexpr Rings rings[ringStyleCount][orvane::bevelSidesCount] = {
    {{&OrvGlyph::RenderFrontBevelBevelled, &OrvGlyph::RenderBackBevelFlat},
     {&OrvGlyph::RenderFrontBevelFlat, &OrvGlyph::RenderBackBevelBevelled},
     {&OrvGlyph::RenderFrontBevelBevelled, &OrvGlyph::RenderBackBevelBevelled}},
    {{&OrvGlyph::RenderFrontRoundRounded, &OrvGlyph::RenderBackBevelFlat},
     {&OrvGlyph::RenderFrontBevelFlat, &OrvGlyph::RenderBackRoundRounded},
     {&OrvGlyph::RenderFrontRoundRounded, &OrvGlyph::RenderBackRoundRounded}}};

constexpr Routine wireframes[ringStyleCount][orvane::bevelSidesCount] = {
    {&OrvGlyph::DrawFrontFaceBevelled, &OrvGlyph::DrawBackFaceBevelled,
     &OrvGlyph::DrawBothFacesBevelled},
    {&OrvGlyph::DrawFrontFaceRounded, &OrvGlyph::DrawBackFaceRounded,
     &OrvGlyph::DrawBothFacesRounded}};

/// The edge settings of a text. Each setting may be any number, because a record may hold any
/// number.
struct Edges
{
    explicit Edges(const OrvString& string)
        : style(static_cast<EdgeStyle>(string.GetBevelStyle())),
          sides(static_cast<BevelSides>(string.GetBevelLocation())),
          column(string.GetBevelLocation())
    {}

    bool IsRingStyle() const { return style == EdgeStyle::Bevel || style == EdgeStyle::Round; }
    bool AreKnownSides() const { return column >= 0 && column < orvane::bevelSidesCount; }

    /// The row of the tables. Call it only for a bevelled or rounded edge.
    int Row() const { return style == EdgeStyle::Bevel ? 0 : 1; }

    EdgeStyle style;
    BevelSides sides;
    int column;  ///< the column of the tables; valid only for known sides
};

/// Whether the edges of a letter take up its whole depth, so that no wall is left between them.
bool IsWallEmpty(BevelSides sides, const ExtrusionData& extrusion)
{
    const float back = sides == BevelSides::Front ? extrusion.backZ : extrusion.backBevelZ;
    const float front = sides == BevelSides::Back ? extrusion.frontZ : extrusion.frontBevelZ;
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
    const Edges edges(*string);
    const auto setMaterial = [&](const NamedColor& material) {
        SetMaterialColors(material);
        if (material.IsTransparent() && parameters->ShouldKeepTransparentDepth())
        {
            glDepthMask(GL_TRUE);
        }
    };

    setMaterial(string->faceColor);
    PushName(naming, facesName);
    glyph->RenderFaces(extrusion);
    PopName(naming);

    PushName(naming, wallsName);
    if (edges.style == EdgeStyle::Square)
    {
        if (string->ShouldUseEdgeColor())
        {
            setMaterial(string->edgeColor);
        }
        glyph->RenderEdgesUnbevelled(extrusion);
        PopName(naming);
        return 1;
    }
    if (!edges.IsRingStyle())
    {
        // An unknown style. The walls' name stays pushed, which is required; see
        // AnUnknownStyleDrawsTheFacesAndLeavesItsNamePushed.
        return 1;
    }
    bool edgeColorIsSet = false;
    if (edges.AreKnownSides() && !IsWallEmpty(edges.sides, extrusion))
    {
        if (string->ShouldUseEdgeColor())
        {
            setMaterial(string->edgeColor);
            edgeColorIsSet = true;
        }
        (glyph->*walls[edges.column])(extrusion);
    }
    PopName(naming);

    PushName(naming, bevelsName);
    if (string->ShouldUseBevelColor())
    {
        setMaterial(string->bevelColor);
    }
    else if (edgeColorIsSet)
    {
        setMaterial(string->faceColor);
    }
    if (edges.AreKnownSides())
    {
        const Rings& ring = rings[edges.Row()][edges.column];
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
    const Edges edges(*string);

    SetMaterialColors(string->GetExtentsBoxColor());
    const Unlit unlit;
    PushName(naming, facesName);
    if (edges.style == EdgeStyle::Square)
    {
        glyph->Draw(extrusion);
    }
    else if (edges.IsRingStyle() && edges.AreKnownSides())
    {
        (glyph->*wireframes[edges.Row()][edges.column])(extrusion);
    }
    PopName(naming);
    glDisable(GL_COLOR_MATERIAL);
    return 1;
}
