// SPDX-License-Identifier: MIT
#include "platform/posix/ErrorText.h"

#include "platform/Errors.h"

#include <utility>

namespace posix
{
namespace
{

// The number is a variable of its own, without a destructor, so that it can be used while the
// thread ends.
thread_local bool hasText = false;

std::string& TextOfThread()
{
    thread_local std::string text;
    return text;
}

}  // namespace

void SetError(DWORD error, std::string text)
{
    SetLastError(error);
    TextOfThread() = std::move(text);
    hasText = true;
}

const std::string* FindErrorText()
{
    return hasText ? &TextOfThread() : nullptr;
}

void ForgetErrorText()
{
    hasText = false;
}

}  // namespace posix
