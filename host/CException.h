// SPDX-License-Identifier: MIT
#pragma once

#include "host/CObject.h"

#include <exception>
#include <string>

/// Base of what the host framework throws, by value.
class ORVANE_API CException : public CObject, public std::exception
{
    DECLARE_DYNAMIC(CException)

public:
    explicit CException(std::string message = {});

    /// A readable account: subject, place, found and expected where they are known.
    const char* what() const noexcept override;

private:
    std::string message_;
};
