// SPDX-License-Identifier: MIT
#pragma once

#include "host/CObject.h"

#include <exception>
#include <string>

/// The base class of the exceptions that the host framework throws by value.
class ORVANE_API CException : public CObject, public std::exception
{
    DECLARE_DYNAMIC(CException)

public:
    explicit CException(std::string message = {});

    /// A message for users: the file, the place in the file, the value found and the values
    /// expected, as far as these are known.
    const char* what() const noexcept override;

private:
    std::string message_;
};
