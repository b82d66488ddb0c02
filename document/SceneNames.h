// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"

#include <string>
#include <unordered_map>
#include <vector>

class DrawingObject;

namespace orvane
{

/// The way from the scene down to a node: the index of a child on each level. {0, 2, 1} is child 1
/// of child 2 of the scene's child 0.
using NodePath = std::vector<int>;

/// The path as "0.2.1".
ORVANE_API std::string PathText(const NodePath& path);

/// Finds nodes by their paths. The children of each node on a path are listed only once, so that
/// many paths through nodes with many children are found quickly. The tree must not change
/// meanwhile.
class ORVANE_API NodeFinder
{
public:
    /// \param root the node from which paths lead; borrowed
    explicit NodeFinder(DrawingObject& root) : root_(root) {}

    DrawingObject& NodeAt(const NodePath& path);
    /// \param index inside of the node's list of children
    DrawingObject& ChildAt(const DrawingObject& node, int index);

private:
    DrawingObject& root_;
    std::unordered_map<const DrawingObject*, std::vector<DrawingObject*>> children_;
};

/// The characters of a text node, the name of a mesh or the name of the file of outlines, in UTF-8;
/// empty for other nodes. The process's code page must be that of the text.
ORVANE_API std::string NameOfNode(const DrawingObject& node);

// Names for numbers from a scene's file. A number that has no name becomes its digits.

ORVANE_API std::string StyleName(int bevelStyle);
ORVANE_API std::string LocationName(int bevelLocation);
ORVANE_API std::string SideName(int justification);
ORVANE_API std::string QualityName(unsigned long quality);
/// Every number except those of Stretch and Tile means Center.
ORVANE_API std::string PlacementName(unsigned long placement);
ORVANE_API std::string DrawingModeName(int index);

}  // namespace orvane
