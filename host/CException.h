// SPDX-License-Identifier: MIT
#pragma once

#include "host/CObject.h"

#include <exception>
#include <string>

/// The base class of the exceptions that the host framework throws. They are thrown by value.
class ORVANE_API CException : public CObject, public std::exception
{
    DECLARE_DYNAMIC(CException)

public:
    explicit CException(std::string message = {});

    /// A readable message: the file, the place in it, the value found and the values expected, as
    /// far as they are known.
    const char* what() const noexcept override;

private:
    std::string message_;
};
