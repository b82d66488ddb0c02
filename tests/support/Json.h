// SPDX-License-Identifier: MIT
#pragma once

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

/// A JSON value whose objects keep the order of their members. Json::parse takes only what the
/// grammar allows, in UTF-8, and throws for anything else.
using Json = nlohmann::ordered_json;

/// The names of an object's members, in order.
inline std::vector<std::string> KeysOf(const Json& object)
{
    std::vector<std::string> keys;
    for (const auto& member : object.items())
    {
        keys.push_back(member.key());
    }
    return keys;
}
