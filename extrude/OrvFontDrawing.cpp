// SPDX-License-Identifier: MIT
// OrvFont: drawing one glyph with the materials and the edge style of a text.
#include "extrude/EdgeStyle.h"
#include "extrude/ExtrusionData.h"
#include "extrude/LetterDrawing.h"
#include "extrude/OrvFont.h"
#include "extrude/OrvGlyph.h"
#include "geometry/SurfaceRecorder.h"
#include "material/ApplyMaterial.h"
#include "material/NamedColor.h"
#include "material/Unlit.h"
#include "platform/OpenGL.h"
#include "scene/DrawingParameters.h"
#include "scene/OrvString.h"

#include <type_traits>

using orvane::BevelSides;
using orvane::EdgeStyle;
using orvane::LetterDrawing;
using orvane::MeshPart;

namespace
{
// The tables of surfaces and wireframes have one column for each value of BevelSides: front, back,
// both. The tables rings and wireframes have two rows: one for bevelled and one for rounded edges.
// Square edges need no table.
constexpr int ringStyleCount = orvane::edgeStyleCount - 1;

using Routine = decltype(&OrvGlyph::RenderFaces);
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
}  // namespace

int OrvFont::SetMaterialColors(const NamedColor& material)
{
    ApplyBlendedMaterial(material);
    return 1;
}

template <typename Sink>
void OrvFont::EmitGlyph(const OrvGlyph& glyph, const OrvString& string,
                        const ExtrusionData& extrusion, Sink& sink)
{
    using Surface = OrvGlyph::GlyphSurface;
    struct Rings
    {
        Surface front;
        Surface back;
    };
    static constexpr Surface walls[orvane::bevelSidesCount] = {
        Surface::WallOfFrontEdge, Surface::WallOfBackEdge, Surface::WallOfBothEdges};
    static constexpr Rings rings[ringStyleCount][orvane::bevelSidesCount] = {
        {{Surface::FrontBevel, Surface::BackFlat},
         {Surface::FrontFlat, Surface::BackBevel},
         {Surface::FrontBevel, Surface::BackBevel}},
        {{Surface::FrontRound, Surface::BackFlat},
         {Surface::FrontFlat, Surface::BackRound},
         {Surface::FrontRound, Surface::BackRound}}};

    // Surfaces are compiled for the two sinks that SurfaceSink.h names.
    using SurfaceSink =
        std::conditional_t<std::is_base_of_v<orvane::OpenGLSink, Sink>, orvane::OpenGLSink, Sink>;
    const auto emit = [&](Surface surface) {
        glyph.EmitSurface(surface, extrusion, static_cast<SurfaceSink&>(sink));
    };
    const Edges edges(string);

    sink.UseMaterial(string.faceColor);
    sink.BeginPart(MeshPart::Face);
    emit(Surface::Faces);
    sink.EndPart();

    sink.BeginPart(MeshPart::Edge);
    if (edges.style == EdgeStyle::Square)
    {
        if (string.ShouldUseEdgeColor())
        {
            sink.UseMaterial(string.edgeColor);
        }
        emit(Surface::PlainWall);
        sink.EndPart();
        return;
    }
    if (!edges.IsRingStyle())
    {
        // An unknown style. The walls' name stays pushed, which is required; see
        // AnUnknownStyleDrawsTheFacesAndLeavesItsNamePushed.
        return;
    }
    bool edgeColorIsSet = false;
    if (edges.AreKnownSides() && !IsWallEmpty(edges.sides, extrusion))
    {
        if (string.ShouldUseEdgeColor())
        {
            sink.UseMaterial(string.edgeColor);
            edgeColorIsSet = true;
        }
        emit(walls[edges.column]);
    }
    sink.EndPart();

    sink.BeginPart(MeshPart::Bevel);
    if (string.ShouldUseBevelColor())
    {
        sink.UseMaterial(string.bevelColor);
    }
    else if (edgeColorIsSet)
    {
        sink.UseMaterial(string.faceColor);
    }
    if (edges.AreKnownSides())
    {
        const Rings& ring = rings[edges.Row()][edges.column];
        emit(ring.front);
        emit(ring.back);
    }
    sink.EndPart();
}

int OrvFont::RenderGlyph(int glyphIndex, OrvString* string, const ExtrusionData& extrusion,
                         DrawingParameters* parameters)
{
    const OrvGlyph* const glyph = ValidGlyph(glyphIndex);
    if (glyph == nullptr)
    {
        return 0;
    }
    LetterDrawing drawing(*parameters);
    EmitGlyph(*glyph, *string, extrusion, drawing);
    return 1;
}

void OrvFont::RecordGlyph(int glyphIndex, const OrvString& string, const ExtrusionData& extrusion,
                          orvane::SurfaceRecorder& recorder) const
{
    if (const OrvGlyph* const glyph = ValidGlyph(glyphIndex))
    {
        EmitGlyph(*glyph, string, extrusion, recorder);
    }
}

int OrvFont::DrawGlyph(int glyphIndex, OrvString* string, const ExtrusionData& extrusion,
                       DrawingParameters* parameters)
{
    OrvGlyph* const glyph = ValidGlyph(glyphIndex);
    if (glyph == nullptr)
    {
        return 0;
    }
    const Edges edges(*string);

    SetMaterialColors(string->GetExtentsBoxColor());
    const Unlit unlit;
    const LetterDrawing drawing(*parameters);
    drawing.BeginPart(MeshPart::Face);
    if (edges.style == EdgeStyle::Square)
    {
        glyph->Draw(extrusion);
    }
    else if (edges.IsRingStyle() && edges.AreKnownSides())
    {
        (glyph->*wireframes[edges.Row()][edges.column])(extrusion);
    }
    drawing.EndPart();
    glDisable(GL_COLOR_MATERIAL);
    return 1;
}
