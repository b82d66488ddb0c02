// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>

/// The command line makes no sense: exit status 2. Every other exception is exit status 1.
class UsageError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};
