// SPDX-License-Identifier: MIT
#include "host/CException.h"

#include <utility>

IMPLEMENT_DYNAMIC(CException, CObject)

CException::CException(std::string message) : message_(std::move(message)) {}

const char* CException::what() const noexcept
{
    return message_.c_str();
}
