// SPDX-License-Identifier: MIT
#include "platform/posix/ErrorText.h"

#include "platform/Errors.h"

#include <utility>

namespace posix
{
namespace
{

// Apart from the text because it has no destructor, so that it can be used while the thread ends.
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
