// SPDX-License-Identifier: MIT
#pragma once

#include "orvane/orvane.h"
#include "platform/Export.h"

class DrawingObject;
class SceneObject;
class ViewObject;

namespace orvane
{

// The objects behind a document, for hosts that use the classes of orvane/classes.h too. They are
// owned by the document. Use them with the code page of the document as the process's
// (SetProcessCodePage), and do not delete nodes or take them out of the scene: handles would not
// know. The texts of the document are in that code page.

ORVANE_API SceneObject& SceneOf(const Document& document);
ORVANE_API ViewObject& ViewOf(const Document& document);
ORVANE_API unsigned CodePageOf(const Document& document);
/// Throws Error when the node was removed or its document has ended.
ORVANE_API DrawingObject& ObjectOf(const Node& node);
/// A handle for a node of the document's scene, which may have been added through SceneOf.
ORVANE_API Node HandleOf(const Document& document, DrawingObject& node);

}  // namespace orvane
