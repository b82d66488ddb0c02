// SPDX-License-Identifier: MIT
#pragma once

namespace orvane
{

/// Throws OptionError when \p value is below \p least, above \p most, or NaN.
/// \param field the name of the option's field
void CheckRange(const char* field, double value, double least, double most);

}  // namespace orvane
