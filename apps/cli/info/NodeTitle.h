// SPDX-License-Identifier: MIT
#pragma once

#include <string>

class DrawingObject;

namespace orvane
{

/// The class of a node and, when it has one, its name in quotation marks.
std::string TitleOf(const DrawingObject& node);

}  // namespace orvane
