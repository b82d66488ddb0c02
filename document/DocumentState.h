// SPDX-License-Identifier: MIT
#pragma once

#include "document/SceneDocument.h"
#include "orvane/orvane.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>

class DrawingObject;

namespace orvane
{

/// The contents of a Document. The document owns it, and handles of its nodes refer to it.
struct DocumentState : std::enable_shared_from_this<DocumentState>
{
    static DocumentState& Of(const Document& document) { return *document.state_; }

    /// The state of a handle's document. Throws Error when the document or the node is gone.
    static std::shared_ptr<DocumentState> Of(const Node& node);
    /// Throws Error when the document or the node is gone.
    static DrawingObject& NodeOf(const Node& node);

    /// A handle of a node in the scene.
    Node HandleOf(DrawingObject& node);
    /// Adds a node to the scene. Returns its handle.
    Node Add(std::unique_ptr<DrawingObject> node);
    /// Forgets the handles of a node and of everything below it.
    void ForgetHandles(const DrawingObject& node);

    /// A copy of the view that is set up for a picture of that size. If the document was never
    /// framed, the copy is framed for the picture.
    std::unique_ptr<ViewObject> ViewFor(const Size& size) const;

    SceneDocument scene;
    /// The nodes that have handles, by the number in the handle. A number is never used twice, so a
    /// handle of a removed node never names another node.
    std::map<unsigned, DrawingObject*> nodes;
    std::unordered_map<const DrawingObject*, unsigned> numbers;  ///< the other way round
    unsigned lastNumber = 0;
};

}  // namespace orvane
