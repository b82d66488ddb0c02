// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"

class DrawingParameters;
class OrvFontString;
class TriangularMeshObject;

namespace orvane
{

class OrvOutlineShape;

/// How far a SolidDrawer came with a node.
enum class SolidDrawing
{
    Drawn,
    Stopped,  ///< the drawing was cancelled; the picture is incomplete
    NotDrawn  ///< the drawer cannot draw this node now; nothing has changed
};

/// Draws the solids of texts, outlines and imported meshes in their place. DrawingParameters name
/// the drawer of a draw; it is asked when solids are drawn, but not in a picking pass. A node that
/// the drawer does not draw draws itself.
class ORVANE_API SolidDrawer
{
public:
    virtual ~SolidDrawer() = default;

    /// Draws the text as it would draw itself in immediate mode. The text has a font.
    virtual SolidDrawing DrawLetters(OrvFontString& text, DrawingParameters& parameters) = 0;
    /// Draws the solids of outlines as the node would draw them in immediate mode. A drawer that
    /// does not know outlines lets them draw themselves.
    virtual SolidDrawing DrawOutlines(OrvOutlineShape& /*outlines*/,
                                      DrawingParameters& /*parameters*/)
    {
        return SolidDrawing::NotDrawn;
    }
    /// Draws what TriangularMeshObject::DrawRendered would draw.
    virtual SolidDrawing DrawSurface(TriangularMeshObject& mesh, DrawingParameters& parameters) = 0;
};

}  // namespace orvane
