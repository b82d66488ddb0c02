// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace orvane
{
class SceneDocument;
}

/// What is in the file of a scene, for people or as JSON. Throws orvane::Error when it cannot be
/// read.
std::string TellScene(const std::string& path, bool json);

/// One JSON object with a line break behind it.
std::string SceneToJson(const orvane::SceneDocument& document);
/// Lines in columns. Colours are diffuse ones.
std::string SceneToText(const orvane::SceneDocument& document);
