// SPDX-License-Identifier: MIT
#pragma once

#include "apps/cli/info/InfoText.h"

#include <string>

namespace orvane
{

class SceneDocument;

/// Describes the scene in a file. Throws Error if the file cannot be read.
std::string DescribeScene(const std::string& path, InfoFormat format);

/// One JSON object and a line break.
std::string SceneToJson(const SceneDocument& document);
/// Lines in columns, for people. A light is shown in its diffuse colour.
std::string SceneToText(const SceneDocument& document);

}  // namespace orvane
