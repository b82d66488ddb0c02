// SPDX-License-Identifier: MIT
#include "platform/posix/Errors.h"

#include <utility>

namespace
{

thread_local DWORD lastNumber = ERROR_SUCCESS;
thread_local bool hasText = false;

std::string& OwnText()
{
    thread_local std::string text;
    return text;
}

const char* CommonText(DWORD error)
{
    switch (error)
    {
        case ERROR_SUCCESS:
            return "";
        case ERROR_INVALID_HANDLE:
            return "the handle names nothing of this kind";
        case ERROR_NOT_ENOUGH_MEMORY:
            return "there is not enough memory";
        case ERROR_INVALID_PARAMETER:
            return "an argument is outside its range";
        case ERROR_BUSY:
            return "it is in use on another thread";
        case ERROR_NOT_OWNER:
            return "the mutex is not owned by this thread";
        case ERROR_INVALID_PIXEL_FORMAT:
            return "the device context has no such pixel format";
        case ERROR_NO_RENDERING:
            return "there is no OpenGL";
        default:
            return nullptr;
    }
}

}  // namespace

DWORD GetLastError()
{
    return lastNumber;
}

void SetLastError(DWORD error)
{
    lastNumber = error;
    hasText = false;
}

std::string GetLastErrorText()
{
    if (hasText)
    {
        return OwnText();
    }
    const char* const text = CommonText(lastNumber);
    return text != nullptr ? text : "error " + std::to_string(lastNumber);
}

namespace posix
{

void SetError(DWORD error, std::string text)
{
    lastNumber = error;
    OwnText() = std::move(text);
    hasText = true;
}

}  // namespace posix
