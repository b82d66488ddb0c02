// SPDX-License-Identifier: MIT
#include "pictures/TiffErrors.h"

#include "orvane/Error.h"

#include <tiffio.h>

#include <cstdarg>
#include <cstdio>
#include <utility>

namespace orvane
{

namespace
{

int KeepFirst(TIFF*, void* first, const char* /*module*/, const char* format, va_list values)
{
    std::string& text = *static_cast<std::string*>(first);
    if (text.empty())
    {
        char line[512];
        std::vsnprintf(line, sizeof line, format, values);
        text = line;
    }
    return 1;  // libtiff does not print it
}

int Ignore(TIFF*, void*, const char*, const char*, va_list)
{
    return 1;
}

}  // namespace

TiffErrors::TiffErrors(std::string place)
    : place_(std::move(place)), options_(TIFFOpenOptionsAlloc())
{
    if (options_ == nullptr)
    {
        throw Error(place_, "out of memory");
    }
    TIFFOpenOptionsSetErrorHandlerExtR(options_, KeepFirst, &first_);
    TIFFOpenOptionsSetWarningHandlerExtR(options_, Ignore, nullptr);
}

TiffErrors::~TiffErrors()
{
    TIFFOpenOptionsFree(options_);
}

void TiffErrors::Throw(const char* other) const
{
    throw Error(place_, first_.empty() ? other : first_);
}

}  // namespace orvane
