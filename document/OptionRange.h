// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"

#include <string>

namespace orvane
{

/// Throws OptionError when \p value is below \p least, above \p most, or NaN.
/// \param field the name of the option's field
void CheckRange(const char* field, double value, double least, double most);

/// Throws OptionError when a name is longer than limits::maxNameBytes.
ORVANE_API void CheckName(const char* field, const std::string& name);

}  // namespace orvane
