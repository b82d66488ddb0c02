// SPDX-License-Identifier: MIT
// The class Node, and the document's list of the nodes that have handles.

#include "document/DocumentState.h"
#include "document/SceneFraming.h"
#include "document/SceneNames.h"
#include "document/TextEncoding.h"
#include "import3ds/TriangularMeshObject.h"
#include "orvane/DocumentAccess.h"
#include "orvane/orvane.h"
#include "scene/DescendentWalk.h"
#include "scene/OrvString.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"
#include "solids/OrvOutlineShape.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace orvane
{

namespace
{

DVector ToDVector(const Vector3& vector)
{
    return DVector(vector.x, vector.y, vector.z);
}

Vector3 ToVector3(const Vector& vector)
{
    return {vector.x, vector.y, vector.z};
}

/// The middle of a node's local box, in the coordinates of the node's parent.
DVector MiddleOf(const DrawingObject& node)
{
    DVector middle(node.GetBoundsLocalCenter());
    CoordinateTransform transform = *node.GetTransform();
    transform.TransformDVectors(&middle, 1);
    return middle;
}

void Translate(DrawingObject& node, const DVector& by)
{
    node.SetTranslation(node.GetTranslation() + by);
    node.CalculateBounds();
}

/// Changes the node's transform and moves the node back, so that its middle stays in its place.
template <typename Change>
void ChangeAboutMiddle(DrawingObject& node, Change change)
{
    node.CalculateBounds();
    const DVector before = MiddleOf(node);
    change();
    Translate(node, before - MiddleOf(node));
}

void CheckNumbers(const char* field, const Vector3& vector)
{
    if (!std::isfinite(vector.x) || !std::isfinite(vector.y) || !std::isfinite(vector.z))
    {
        throw OptionError(field, "finite numbers", "infinity or not-a-number");
    }
}

}  // namespace

// Handles ----------------------------------------------------------------------------------------

std::shared_ptr<DocumentState> DocumentState::Of(const Node& node)
{
    std::shared_ptr<DocumentState> state = node.state_.lock();
    if (state == nullptr || state->nodes.count(node.number_) == 0)
    {
        throw Error("node", state == nullptr
                                ? "the handle names no node, or its document no longer exists"
                                : "the node was removed from its document");
    }
    return state;
}

DrawingObject& DocumentState::NodeOf(const Node& node)
{
    return *Of(node)->nodes.at(node.number_);
}

Node DocumentState::HandleOf(DrawingObject& node)
{
    if (const auto known = numbers.find(&node); known != numbers.end())
    {
        return Node(shared_from_this(), known->second);
    }
    nodes.emplace(++lastNumber, &node);
    numbers.emplace(&node, lastNumber);
    return Node(shared_from_this(), lastNumber);
}

Node DocumentState::Add(std::unique_ptr<DrawingObject> node)
{
    // The handle comes first: when there is no memory for it, the scene is still as it was.
    const DrawingObject* const added = node.get();
    Node handle = HandleOf(*node);
    try
    {
        AddNode(*scene.scene, std::move(node));
    }
    catch (...)
    {
        nodes.erase(handle.number_);
        numbers.erase(added);
        throw;
    }
    return handle;
}

void DocumentState::ForgetHandles(const DrawingObject& node)
{
    const auto forget = [this](const DrawingObject& forgotten) {
        if (const auto entry = numbers.find(&forgotten); entry != numbers.end())
        {
            nodes.erase(entry->second);
            numbers.erase(entry);
        }
        return true;
    };
    forget(node);
    VisitDescendents(node, forget);
}

Node::Node() = default;
Node::~Node() = default;
Node::Node(const Node&) = default;
Node& Node::operator=(const Node&) = default;

Node::Node(const std::shared_ptr<DocumentState>& state, unsigned number)
    : state_(state), number_(number)
{}

bool Node::IsValid() const
{
    const std::shared_ptr<DocumentState> state = state_.lock();
    return state != nullptr && state->nodes.count(number_) != 0;
}

bool operator==(const Node& a, const Node& b)
{
    return a.number_ == b.number_ && !a.state_.owner_before(b.state_) &&
           !b.state_.owner_before(a.state_);
}

bool operator!=(const Node& a, const Node& b)
{
    return !(a == b);
}

// Questions --------------------------------------------------------------------------------------

NodeKind Node::Kind() const
{
    const DrawingObject& node = DocumentState::NodeOf(*this);
    return dynamic_cast<const OrvString*>(&node) != nullptr              ? NodeKind::Text
           : dynamic_cast<const TriangularMeshObject*>(&node) != nullptr ? NodeKind::Mesh
           : dynamic_cast<const OrvOutlineShape*>(&node) != nullptr      ? NodeKind::Outlines
           : node.HasChildren()                                          ? NodeKind::Group
                                                                         : NodeKind::Other;
}

std::string Node::Text() const
{
    const std::shared_ptr<DocumentState> state = DocumentState::Of(*this);
    const auto* const text = dynamic_cast<const OrvString*>(&DocumentState::NodeOf(*this));
    if (text == nullptr)
    {
        return {};
    }
    const CodePageScope scope(state->scene.codePage);
    const std::string utf8 = NameOfNode(*text);
    std::string lines;
    for (std::size_t i = 0; i < utf8.size(); ++i)
    {
        const bool isPair = utf8[i] == '\r' && i + 1 < utf8.size() && utf8[i + 1] == '\n';
        lines += utf8[i] == '\r' ? '\n' : utf8[i];
        i += isPair ? 1 : 0;
    }
    return lines;
}

std::string Node::Name() const
{
    const std::shared_ptr<DocumentState> state = DocumentState::Of(*this);
    const DrawingObject& node = DocumentState::NodeOf(*this);
    const CodePageScope scope(state->scene.codePage);
    return Kind() == NodeKind::Text ? std::string() : NameOfNode(node);
}

std::vector<int> Node::Path() const
{
    const std::shared_ptr<DocumentState> state = DocumentState::Of(*this);
    std::vector<int> path;
    DrawingObject* node = &DocumentState::NodeOf(*this);
    while (node != state->scene.scene.get() && node->GetParent() != nullptr)
    {
        path.insert(path.begin(), node->GetParent()->FindChildIndex(node));
        node = node->GetParent();
    }
    return path;
}

std::vector<Node> Node::Children() const
{
    const std::shared_ptr<DocumentState> state = DocumentState::Of(*this);
    const DrawingObject& node = DocumentState::NodeOf(*this);
    std::vector<Node> children;
    children.reserve(static_cast<std::size_t>(node.GetChildCount()));
    ForEachChild(node,
                 [&](DrawingObject& child, int) { children.push_back(state->HandleOf(child)); });
    return children;
}

Box Node::Bounds() const
{
    const std::shared_ptr<DocumentState> state = DocumentState::Of(*this);
    const CodePageScope scope(state->scene.codePage);
    DrawingObject& node = DocumentState::NodeOf(*this);
    node.CalculateBounds();
    return {ToVector3(node.GetBoundsGlobalMinimum()), ToVector3(node.GetBoundsGlobalMaximum())};
}

Vector3 Node::Position() const
{
    const Box box = Bounds();
    return {(box.minimum.x + box.maximum.x) / 2, (box.minimum.y + box.maximum.y) / 2,
            (box.minimum.z + box.maximum.z) / 2};
}

// Changes ----------------------------------------------------------------------------------------

void Node::MoveTo(const Vector3& place)
{
    const Vector3 from = Position();
    Move({place.x - from.x, place.y - from.y, place.z - from.z});
}

void Node::Move(const Vector3& by)
{
    const std::shared_ptr<DocumentState> state = DocumentState::Of(*this);
    CheckNumbers("by", by);
    const CodePageScope scope(state->scene.codePage);
    Translate(DocumentState::NodeOf(*this), ToDVector(by));
}

void Node::Turn(double degrees, const Vector3& axis)
{
    const std::shared_ptr<DocumentState> state = DocumentState::Of(*this);
    CheckNumbers("axis", axis);
    CheckNumbers("degrees", {degrees, 0, 0});
    if (axis.x == 0 && axis.y == 0 && axis.z == 0)
    {
        throw OptionError("axis", "a vector other than 0,0,0", "0,0,0");
    }
    const CodePageScope scope(state->scene.codePage);
    DrawingObject& node = DocumentState::NodeOf(*this);
    DVector direction = ToDVector(axis);
    direction.Normalize();
    ChangeAboutMiddle(node, [&] { node.Rotate(degrees, direction); });
}

void Node::Scale(double factor)
{
    const std::shared_ptr<DocumentState> state = DocumentState::Of(*this);
    if (!std::isfinite(factor) || factor == 0)
    {
        throw OptionError("factor", "a number other than 0", std::to_string(factor));
    }
    const CodePageScope scope(state->scene.codePage);
    DrawingObject& node = DocumentState::NodeOf(*this);
    ChangeAboutMiddle(node, [&] {
        CoordinateTransform& transform = *node.GetTransform();
        DVector scale = transform.GetScale();
        scale *= factor;
        transform.SetScale(scale);
    });
}

void Node::Remove()
{
    const std::shared_ptr<DocumentState> state = DocumentState::Of(*this);
    DrawingObject& node = DocumentState::NodeOf(*this);
    state->ForgetHandles(node);
    state->scene.ForgetFonts(node);
    node.GetParent()->RemoveChild(&node);
    delete &node;
}

}  // namespace orvane
