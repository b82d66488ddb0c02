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

/// One character of one font, ready to be drawn as a solid: its outline with all curves flattened
/// to straight segments, the triangles that fill the outline, and the character's metrics.
///
/// A font creates a glyph with the character's metrics and builds it once, with ConstructGlyph.
/// Drawing computes all points anew from the outline and never changes the glyph. It calls OpenGL
/// in immediate mode, in the letter's own space: one em is 1 before the scale of the ExtrusionData
/// is applied, y is up, and the front face lies at z = 0 and looks to +z. ExtrusionData describes
/// the levels in z.
///
/// At the face, the outline of a bevelled or rounded letter is the letter's own. From the face to
/// the wall, the outline moves outward by the width of the edge. When only one of the two faces has
/// such an edge, the wall reaches the other face further out than the letter's outline, and a flat
/// band in the plane of that face closes the gap. (In names of functions, "Edges" means the side
/// wall.)
///
/// Functions whose names begin with Render draw surfaces. They set glFrontFace so that the outside
/// of a letter is its front even when the scale mirrors it, and set GL_CCW before they return.
/// Functions whose names begin with Draw draw lines, and call neither glNormal nor glFrontFace. No
/// drawing function can fail; all return 1.
///
/// The contours of a copied glyph use the vertices of the original, so the original must live
/// longer than the copy. The triangles of the faces are copied.
class ORVANE_API OrvGlyph : public TTPolyGlyph
{
public:
    /// \param dataSize the size of the native outline in bytes; 0 for a character that has no
    /// outline.
    OrvGlyph(unsigned long dataSize, const GLYPHMETRICS& metrics);

    /// Builds the glyph from its outline while holding the process-wide glyph mutex. Returns 0 when
    /// the mutex cannot be taken or the outline is not marked as defined.
    /// \param resolution outline units per em.
    ///
    /// A glyph that is built already is refused with 0. The calling thread then keeps the mutex,
    /// which is required; see ASecondConstructionIsRefusedAndKeepsTheMutex.
    int ConstructGlyph(const TTGlyph& glyph, float resolution);

    /// Builds the glyph without taking the mutex. Returns 0 when neither the outline nor this glyph
    /// is marked as defined. When the outline cannot be filled with triangles (it crosses itself,
    /// for example), the glyph has sides but no faces, and the result is still 1.
    int FromTTGlyph(const TTGlyph& glyph, float resolution);

    void SetInvalid() { glyphFlags |= invalidFlag; }
    void ClearInvalid() { glyphFlags &= ~invalidFlag; }
    int IsInvalid() const { return static_cast<int>(glyphFlags & invalidFlag); }

    /// The distance from this character to the next one, in outline units; 0 for an invalid glyph.
    int GetAdvanceWidth() const { return IsInvalid() ? 0 : metrics.gmCellIncX; }
    unsigned long GetDataSize() const { return dataSize; }

    /// Bytes of this object alone.
    unsigned long SizeOf() const { return sizeof(OrvGlyph); }
    /// Bytes of the primitives that fill the faces.
    unsigned long SizeOfPolygons() const { return facePolygons.SizeOf(); }
    /// Bytes of the flattened outline, as TTPolyGlyph::SizeOf counts them.
    unsigned long SizeOfVerticies() const { return TTPolyGlyph::SizeOf(); }

    /// Draws the letter with square edges: both faces and the wall. The second argument is ignored.
    int Render(const ExtrusionData& data, int) const;
    /// Does nothing.
    int PrepareTransparencyPass(int) const { return 1; }

    // Faces (OrvGlyphSurfaces.cpp). They always fill the letter's own outline, whatever the edges.

    /// Draws one face at \p z, with \p normal as the normal of all its vertices.
    /// \param front 0 for the back face, which looks to -z; anything else for the front face.
    int RenderFace(float z, const Vector& normal, int front, const ExtrusionData& data) const;
    /// Draws the back face, then the front face.
    int RenderFaces(const ExtrusionData& data) const;

    // Walls and bevels (OrvGlyphSurfaces.cpp).

    /// Draws the side wall between two levels.
    /// \param bevelled 0 for a wall along the letter's own outline; anything else for a wall along
    /// the outline moved outward by the width of the edge.
    int RenderEdges(int bevelled, float zA, float zB, const ExtrusionData& data) const;
    // The wall of a letter. In this order: with no bevelled or rounded edge, with both edges, with
    // the front edge only, and with the back edge only.
    int RenderEdgesUnbevelled(const ExtrusionData& data) const;
    int RenderEdgesBevelled(const ExtrusionData& data) const;
    int RenderEdgesFrontBevelOnly(const ExtrusionData& data) const;
    int RenderEdgesBackBevelOnly(const ExtrusionData& data) const;

    // The flat band in the plane of a face without an edge, from the letter's own outline out to
    // the wall's.
    int RenderFrontBevelFlat(const ExtrusionData& data) const;
    int RenderBackBevelFlat(const ExtrusionData& data) const;

    // The edge cut off at 45 degrees.
    int RenderFrontBevelBevelled(const ExtrusionData& data) const;
    int RenderBackBevelBevelled(const ExtrusionData& data) const;
    /// Draws both faces and both bevels, without the wall.
    int RenderBevelled(const ExtrusionData& data) const;

    // Rounded edges (OrvGlyphSurfaces.cpp). Each consists of two bands that meet at 45 degrees on
    // the quarter circle; their normals make the edge look round.
    int RenderFrontRoundRounded(const ExtrusionData& data) const;
    int RenderBackRoundRounded(const ExtrusionData& data) const;
    /// Draws both faces, the wall and both rounded edges.
    int RenderRounded(const ExtrusionData& data) const;

    // Wireframes (OrvGlyphWireframe.cpp).

    /// Draws one closed line for each contour.
    /// \param kind 1 for the letter's own outline, 2 for the outline at the wall, 3 for the outline
    /// at the middle of a rounded edge. Any other number counts as 1.
    int DrawOutline(int kind, float z, const ExtrusionData& data) const;
    /// Draws the same outline at two levels.
    int DrawOutline(int kind, float z1, float z2, const ExtrusionData& data) const;

    // The wireframe of a letter with square edges, then of letters with bevelled edges and of
    // letters with rounded edges, on one face or on both.
    int Draw(const ExtrusionData& data) const;
    int DrawFrontFaceBevelled(const ExtrusionData& data) const;
    int DrawBackFaceBevelled(const ExtrusionData& data) const;
    int DrawBothFacesBevelled(const ExtrusionData& data) const;
    int DrawFrontFaceRounded(const ExtrusionData& data) const;
    int DrawBackFaceRounded(const ExtrusionData& data) const;
    int DrawBothFacesRounded(const ExtrusionData& data) const;

    DWORD dataSize;  ///< bytes of the native outline
    /// The triangles of the faces, as positions in the vertex pool. Their clockwise marks hold for
    /// a view from +z.
    VertexIndexPolygonArray facePolygons;
    DWORD glyphFlags = 0;
    GLYPHMETRICS metrics;

private:
    static constexpr DWORD invalidFlag = 0x1;

    friend class FaceCollector;

    /// Fills facePolygons. Returns 0 and leaves facePolygons empty when the outline has no
    /// vertices, when the tessellator reports an error (for example because the outline crosses
    /// itself), or when the outline has more than 65,535 vertices, which 16-bit indices cannot
    /// number.
    int CreateFacePolygons();
    /// Decides the winding of the primitive that the tessellator has just finished.
    int AddTessellationPolygon(FaceCollector& faces);

    /// A surface of a letter. An edge is bevelled or rounded; each wall lies between the edges that
    /// its name tells.
    enum class GlyphSurface
    {
        Faces,  ///< the back face, then the front face
        PlainWall,
        WallOfFrontEdge,
        WallOfBackEdge,
        WallOfBothEdges,
        FrontFlat,
        BackFlat,
        FrontBevel,
        BackBevel,
        FrontRound,
        BackRound
    };
    friend class OrvFont;  // chooses the surfaces of a letter

    /// Emits a surface into a sink (extrude/SurfaceSink.h).
    template <typename Sink>
    void EmitSurface(GlyphSurface surface, const ExtrusionData& data, Sink& sink) const;
    template <typename Sink>
    void EmitFace(float z, const Vector& normal, int isFront, const ExtrusionData& data,
                  Sink& sink) const;
    /// Emits a surface into OpenGL. Returns 1.
    int RenderSurface(GlyphSurface surface, const ExtrusionData& data) const;

    // The two functions below are inline, in extrude/OrvGlyphRings.h.

    /// Computes where \p vertex lies on the outlines of a draw. Returns 1.
    /// \param wantBevel whether to fill bevelPoint.
    /// \param wantRound whether to fill roundPoint.
    /// \param edges the edge along whose normal an interior corner is moved; other vertices are
    /// moved along the average of their two edges.
    int CalculateVertexPoints(const PointScales& scales, const Vertex* vertex,
                              tagVERTEXPOINTS* points, int wantBevel, int wantRound,
                              Vertex::Edges edges) const;
    /// Emits the quads between the two rings of a band, at the levels \p zA and \p zB.
    template <typename Band, typename Sink>
    void EmitBand(const ExtrusionData& data, float zA, float zB, Sink& sink) const;
};
