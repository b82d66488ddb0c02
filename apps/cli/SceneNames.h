// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

class DrawingObject;

// What the numbers and strings in a scene are called when the tool tells of them.

/// Where a node is: the indices of children on the way down from the scene.
using NodePath = std::vector<int>;

/// As "0.2.1".
std::string PathText(const NodePath& path);

/// A text node's characters or a mesh's name, in UTF-8; empty for other nodes and for none.
std::string NameOfNode(const DrawingObject& node);

/// The class and, when it has one, the quoted name.
std::string TitleOf(const DrawingObject& node);

std::string StyleName(int bevelStyle);
std::string LocationName(int bevelLocation);
std::string SideName(int justification);
std::string QualityName(unsigned long quality);
std::string PlacementName(unsigned long placement);
std::string DrawingModeName(int index);
