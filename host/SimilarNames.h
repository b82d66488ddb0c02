// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"

#include <cstddef>
#include <string>
#include <vector>

namespace orvane
{

/// The \p count names that are most similar to \p name, the most similar first; all names if there
/// are fewer.
ORVANE_API std::vector<std::string> SimilarNames(const std::string& name,
                                                 const std::vector<std::string>& names,
                                                 std::size_t count);

}  // namespace orvane
