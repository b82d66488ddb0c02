// SPDX-License-Identifier: MIT
#pragma once

#include "document/SceneDocument.h"
#include "orvane/orvane.h"

#include <functional>
#include <map>
#include <memory>
#include <string>

class DrawingObject;

namespace orvane
{

/// The contents of a Document. Documents, and the handles of their nodes, point to it.
struct DocumentState : std::enable_shared_from_this<DocumentState>
{
    static DocumentState& Of(const Document& document) { return *document.state_; }

    /// The state of a handle's document. Throws Error when the document or the node is gone.
    static std::shared_ptr<DocumentState> Of(const Node& node);
    /// Throws Error when the document or the node is gone.
    static DrawingObject& NodeOf(const Node& node);

    /// A handle of a node in the scene.
    Node HandleOf(DrawingObject& node);
    /// Forgets the handles of a node and of everything below it.
    void ForgetHandles(const DrawingObject& node);

    /// The view as it shows a picture of that size: a copy, framed if the document never was.
    std::unique_ptr<ViewObject> ViewFor(const Size& size) const;

    SceneDocument scene;
    /// The nodes that there are handles of, by their numbers, which are never used again.
    std::map<unsigned, DrawingObject*> nodes;
    unsigned lastNumber = 0;
};

}  // namespace orvane
