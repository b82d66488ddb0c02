// SPDX-License-Identifier: MIT
#pragma once

#include "material/NamedColor.h"

#include <map>
#include <string>
#include <unordered_map>
#include <vector>

namespace orvane
{

/// The materials of a mesh, each once. Materials are the same when their names and all their
/// numbers are.
class MeshMaterials
{
public:
    /// The index of a material in the mesh. Adds the material when it is new. It must not change as
    /// long as this object lives, or until ForgetAddresses.
    int IndexOf(const NamedColor& material);
    /// From now on, the materials that IndexOf was called with may change or cease to exist.
    void ForgetAddresses() { byAddress_.clear(); }
    std::vector<NamedColor> Take() { return std::move(materials_); }

private:
    std::unordered_map<const NamedColor*, int> byAddress_;
    std::map<std::string, int> byValue_;
    std::vector<NamedColor> materials_;
};

}  // namespace orvane
