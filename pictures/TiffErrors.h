// SPDX-License-Identifier: MIT
#pragma once

#include <string>

struct TIFFOpenOptions;

namespace orvane
{

/// Keeps the errors of libtiff, which would print them to standard error.
class TiffErrors
{
public:
    /// \param place begins the text of errors
    explicit TiffErrors(std::string place);
    ~TiffErrors();
    TiffErrors(const TiffErrors&) = delete;
    TiffErrors& operator=(const TiffErrors&) = delete;

    /// Options for opening a file whose errors this object keeps. Owned by this object.
    TIFFOpenOptions* Options() { return options_; }
    /// Throws Error with the first error of libtiff, or with \p other if there was none.
    [[noreturn]] void Throw(const char* other = "libtiff gives no reason") const;

private:
    std::string place_;
    std::string first_;
    TIFFOpenOptions* options_;
};

}  // namespace orvane
