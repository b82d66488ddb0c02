// SPDX-License-Identifier: MIT
#pragma once

#include "orvane/orvane.h"
#include "platform/Export.h"

class DrawingObject;
class SceneObject;
class ViewObject;

namespace orvane
{

// These functions give hosts that also use the classes of orvane/classes.h the objects that a
// document is made of. The document owns the objects. Before you use them, set the process's code
// page to that of the document (SetProcessCodePage), because the texts and the names of fonts are
// encoded in it. Delete nodes or take them out of the scene only with Node::Remove, which also
// makes their handles invalid.

ORVANE_API SceneObject& SceneOf(const Document& document);
ORVANE_API ViewObject& ViewOf(const Document& document);
ORVANE_API unsigned CodePageOf(const Document& document);
/// Throws Error when the node was removed or its document no longer exists.
ORVANE_API DrawingObject& ObjectOf(const Node& node);
/// Returns a handle for a node of the document's scene. The node may have been added through
/// SceneOf.
ORVANE_API Node HandleOf(const Document& document, DrawingObject& node);

}  // namespace orvane
