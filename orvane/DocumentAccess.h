// SPDX-License-Identifier: MIT
#pragma once

#include "orvane/orvane.h"
#include "platform/Export.h"

class DrawingObject;
class SceneObject;
class ViewObject;

namespace orvane
{

// The objects that a document is made of, for hosts that also use the classes of orvane/classes.h.
// The document owns them. Set the process's code page to that of the document (SetProcessCodePage)
// before using them, because texts and fonts are in it. Delete nodes and take them out of the scene
// only with Node::Remove; otherwise handles would still refer to them.

ORVANE_API SceneObject& SceneOf(const Document& document);
ORVANE_API ViewObject& ViewOf(const Document& document);
ORVANE_API unsigned CodePageOf(const Document& document);
/// Throws Error when the node was removed or its document has ended.
ORVANE_API DrawingObject& ObjectOf(const Node& node);
/// A handle for a node of the document's scene, which may have been added through SceneOf.
ORVANE_API Node HandleOf(const Document& document, DrawingObject& node);

}  // namespace orvane
