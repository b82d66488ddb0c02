// SPDX-License-Identifier: MIT
#include "document/OptionRange.h"

#include "orvane/Error.h"
#include "platform/Limits.h"

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

void CheckName(const char* field, const std::string& name)
{
    if (name.size() > limits::maxNameBytes)
    {
        throw OptionError(field,
                          "a name of at most " + std::to_string(limits::maxNameBytes) + " bytes",
                          std::to_string(name.size()) + " bytes");
    }
}

}  // namespace orvane
