// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>

namespace orvane
{

/// Thrown when the command line makes no sense. The tool then ends with exit status 2, as after an
/// OptionError or an error that CLI11 finds. After every other exception it ends with exit
/// status 1.
class UsageError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

}  // namespace orvane
