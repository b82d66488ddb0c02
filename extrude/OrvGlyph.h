// SPDX-License-Identifier: MIT
#pragma once

#include "outline/TTPolyGlyph.h"
#include "outline/Vertex.h"
#include "outline/VertexIndexPolygonArray.h"
#include "platform/Export.h"
#include "platform/Fonts.h"
#include "platform/Types.h"

class ExtrusionData;
class FaceCollector;
class PointScales;
class TTGlyph;
class Vector;
struct tagVERTEXPOINTS;

/// One character of one font, ready to be drawn as a solid: its flattened outline, the primitives
/// that fill it, and its metrics.
///
/// The font makes one with the character's metrics and builds it once. Drawing recomputes every
/// ring from the outline and never changes the glyph. All drawing is in immediate mode, in the
/// glyph's own space: one em is 1 before the scale of the ExtrusionData, the front face lies in
/// z = 0 facing +z. A letter is its outline at the faces and grows by the bevel's width towards the
/// wall.
///
/// What draws polygons sets glFrontFace for the scale's handedness, so that the outside of a
/// mirrored letter stays the front, and leaves GL_CCW behind. Drawing cannot fail and returns 1.
///
/// A copy's contours refer to the pool of the glyph it was copied from, which must outlive it; its
/// face primitives are its own.
class ORVANE_API OrvGlyph : public TTPolyGlyph
{
public:
    /// \param dataSize bytes of the native outline; 0 for a placeholder.
    OrvGlyph(unsigned long dataSize, const GLYPHMETRICS& metrics);

    /// Builds the glyph while holding the process-wide glyph mutex. \param resolution outline units
    /// per em. Returns 0 when the mutex is not to be had or the outline is not defined.
    ///
    /// A glyph that is defined already is refused with 0, and then the calling thread keeps the
    /// mutex: meant so, see ASecondConstructionIsRefusedAndKeepsTheMutex.
    int ConstructGlyph(const TTGlyph& glyph, float resolution);

    /// The same without the mutex. An outline that cannot be filled still gives a valid glyph, with
    /// sides but no faces.
    int FromTTGlyph(const TTGlyph& glyph, float resolution);

    void SetInvalid() { glyphFlags |= invalidFlag_; }
    void ClearInvalid() { glyphFlags &= ~invalidFlag_; }
    int IsInvalid() const { return static_cast<int>(glyphFlags & invalidFlag_); }

    /// Outline units to the next character; 0 for an invalid glyph.
    int GetAdvanceWidth() const { return IsInvalid() ? 0 : metrics.gmCellIncX; }
    unsigned long GetDataSize() const { return dataSize; }

    // Bytes: of the object itself, of the face primitives, of the outline.
    unsigned long SizeOf() const { return sizeof(OrvGlyph); }
    unsigned long SizeOfPolygons() const { return facePolygons.SizeOf(); }
    unsigned long SizeOfVerticies() const { return TTPolyGlyph::SizeOf(); }

    /// The plain solid: both faces and the wall. The second argument is ignored.
    int Render(const ExtrusionData& data, int) const;
    /// Does nothing.
    int PrepareTransparencyPass(int) const { return 1; }

    // Faces (OrvGlyphFaces.cpp). They fill the outline itself, also of bevelled letters.

    /// \param front 0 for the face that looks to -z.
    int RenderFace(float z, const Vector& normal, int front, const ExtrusionData& data) const;
    /// The back face, then the front face.
    int RenderFaces(const ExtrusionData& data) const;

    // Walls and bevels (OrvGlyphBevels.cpp).

    /// The side wall between two z, along the bevel's outline or the letter's own.
    int RenderEdges(int bevelled, float zA, float zB, const ExtrusionData& data) const;
    int RenderEdgesUnbevelled(const ExtrusionData& data) const;
    int RenderEdgesBevelled(const ExtrusionData& data) const;
    int RenderEdgesFrontBevelOnly(const ExtrusionData& data) const;
    int RenderEdgesBackBevelOnly(const ExtrusionData& data) const;

    // A flat ring in the plane of a face, from the outline out to the bevel's outline, for the side
    // that has no bevel.
    int RenderFrontBevelFlat(const ExtrusionData& data) const;
    int RenderBackBevelFlat(const ExtrusionData& data) const;

    // The 45 degree bevels.
    int RenderFrontBevelBevelled(const ExtrusionData& data) const;
    int RenderBackBevelBevelled(const ExtrusionData& data) const;
    /// Both faces and both bevels in one call, without the wall.
    int RenderBevelled(const ExtrusionData& data) const;

    // Rounded edges (OrvGlyphRounds.cpp): two bands each, through a ring at 45 degrees.
    int RenderFrontRoundRounded(const ExtrusionData& data) const;
    int RenderBackRoundRounded(const ExtrusionData& data) const;
    /// Both faces, the wall and both rounded edges in one call.
    int RenderRounded(const ExtrusionData& data) const;

    // Wireframes (OrvGlyphWireframe.cpp). They touch neither normals nor the front face.

    /// One closed line per contour. \param kind 1 the outline itself, 2 the bevel's, 3 that of the
    /// rounded edge's middle ring; others draw as 1.
    int DrawOutline(int kind, float z, const ExtrusionData& data) const;
    int DrawOutline(int kind, float z1, float z2, const ExtrusionData& data) const;
    int Draw(const ExtrusionData& data) const;
    int DrawFrontFaceBevelled(const ExtrusionData& data) const;
    int DrawBackFaceBevelled(const ExtrusionData& data) const;
    int DrawBothFacesBevelled(const ExtrusionData& data) const;
    int DrawFrontFaceRounded(const ExtrusionData& data) const;
    int DrawBackFaceRounded(const ExtrusionData& data) const;
    int DrawBothFacesRounded(const ExtrusionData& data) const;

    DWORD dataSize;  ///< bytes of the native outline
    VertexIndexPolygonArray
        facePolygons;  ///< indices into the pool, clockwise bits as seen from +z
    DWORD glyphFlags = 0;
    GLYPHMETRICS metrics;

private:
    static constexpr DWORD invalidFlag_ = 0x1;

    friend class FaceCollector;

    /// Fills facePolygons. 0, leaving it empty, when there is nothing to fill, the outline crosses
    /// itself, or it has more vertices than 16-bit indices reach.
    int CreateFacePolygons();
    /// Takes in the primitive that the tessellator has just ended, and decides its winding.
    int AddTessellationPolygon(FaceCollector& faces);

    // These two are inline, in extrude/OrvGlyphRings.h.

    /// Where \p vertex lies in the rings of a draw; its bevel and round points on request.
    /// \param edges whose normal the offsets follow.
    int CalculateVertexPoints(const PointScales& scales, const Vertex* vertex,
                              tagVERTEXPOINTS* points, int wantBevel, int wantRound,
                              Vertex::Edges edges) const;
    template <typename Band>
    void EmitRing_(const ExtrusionData& data, float zA, float zB) const;
};
