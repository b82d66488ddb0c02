// SPDX-License-Identifier: MIT
#pragma once

#include "studio/Environment.h"

#include <functional>
#include <vector>

namespace orvane
{

/// An environment that no file is needed for.
struct BuiltInEnvironment
{
    const char* name;
    std::function<Light(const MeshPoint&)> light;  ///< from a direction, a unit vector
};

/// The default first.
const std::vector<BuiltInEnvironment>& BuiltInEnvironments();

}  // namespace orvane
