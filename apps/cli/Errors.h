// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>

/// Something that could not be done: exit status 1. what() names what and where.
class Failure : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// The command line makes no sense: exit status 2.
class UsageError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};
