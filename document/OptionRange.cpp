// SPDX-License-Identifier: MIT
#include "document/OptionRange.h"

#include "orvane/Error.h"

#include <sstream>

namespace orvane
{

void CheckRange(const char* field, double value, double least, double most)
{
    if (value >= least && value <= most)
    {
        return;
    }
    std::ostringstream range;
    range << least << " to " << most;
    std::ostringstream found;
    found << value;
    throw OptionError(field, range.str(), found.str());
}

}  // namespace orvane
