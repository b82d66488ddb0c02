// SPDX-License-Identifier: MIT
#include "platform/Errors.h"

#include "platform/posix/ErrorText.h"

namespace
{

thread_local DWORD lastNumber = ERROR_SUCCESS;

/// Null for an error without a text.
const char* TextOf(DWORD error)
{
    switch (error)
    {
        case ERROR_SUCCESS:
            return "";
        case ERROR_INVALID_HANDLE:
            return "the handle names no object of the expected kind";
        case ERROR_NOT_ENOUGH_MEMORY:
            return "there is not enough memory";
        case ERROR_INVALID_PARAMETER:
            return "an argument is outside its range";
        case ERROR_BUSY:
            return "the object is in use";
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
    posix::ForgetErrorText();
}

std::string GetLastErrorText()
{
    if (const std::string* const text = posix::FindErrorText())
    {
        return *text;
    }
    const char* const text = TextOf(lastNumber);
    return text != nullptr ? text : "error " + std::to_string(lastNumber);
}
