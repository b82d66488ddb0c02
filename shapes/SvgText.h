// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The small languages in the attributes of SVG files: numbers, lengths, transforms, path data.

#include "contours/PlanePoint.h"
#include "shapes/Affine.h"
#include "shapes/Path.h"

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace orvane::shapes
{

/// An attribute is not what SVG allows there. The reader adds the file, the line and the attribute
/// to it and throws Error.
class SvgSyntaxError : public std::runtime_error
{
public:
    /// \param at the index of the character at which the mistake was found
    SvgSyntaxError(std::size_t at, const std::string& found, const std::string& expected);

    std::size_t At() const { return at_; }
    const std::string& Found() const { return found_; }
    const std::string& Expected() const { return expected_; }

private:
    std::size_t at_;
    std::string found_;
    std::string expected_;
};

/// Reads a text from left to right.
class SvgScanner
{
public:
    /// \param text borrowed
    explicit SvgScanner(std::string_view text) : text_(text) {}

    bool IsAtEnd() const { return at_ == text_.size(); }
    /// The next character; 0 at the end.
    char Peek() const { return IsAtEnd() ? '\0' : text_[at_]; }
    std::string_view Rest() const { return text_.substr(at_); }
    void SkipSpace();
    /// Skips white space and one comma.
    void SkipComma();
    /// Reads the next character if it is \p c.
    bool Take(char c);
    /// Reads a run of letters; empty when there is none.
    std::string_view TakeWord();
    /// Reads a finite number; empty when there is none. Throws SvgSyntaxError when it is too large.
    std::optional<double> TakeNumber();
    /// Reads a number after white space and a comma, or throws SvgSyntaxError.
    double ExpectNumber();
    /// Reads 0 or 1 after white space and a comma, or throws SvgSyntaxError.
    bool ExpectFlag();
    [[noreturn]] void Fail(const std::string& expected) const;

private:
    std::string_view text_;
    std::size_t at_ = 0;
};

/// The text without white space at its ends.
std::string_view Trimmed(std::string_view text);

/// What relative lengths are measured by, in user units.
struct SvgViewport
{
    double width = 100;
    double height = 100;

    /// What percentages of lengths that are neither horizontal nor vertical are of.
    double Diagonal() const;
};

/// A length in user units, of which an inch has 96. The sizes em and ex are those of letters of 16
/// units. Throws SvgSyntaxError.
/// \param whole what 100% is
double ParseLength(std::string_view text, double whole);

/// Numbers that are separated by white space or commas. Throws SvgSyntaxError.
std::vector<double> ParseNumbers(std::string_view text);

/// Lengths that are separated by white space or commas. Throws SvgSyntaxError.
std::vector<double> ParseLengths(std::string_view text, double whole);

/// The map that a list of transforms makes. Throws SvgSyntaxError.
Affine ParseTransforms(std::string_view text);

/// The path of an attribute d. Throws SvgSyntaxError.
/// \param limit counts the lines and curves
Path ParsePathData(std::string_view text, SegmentLimit& limit);

/// The map that preserveAspectRatio tells, from a viewBox to a viewport whose origin is 0, 0.
/// \param viewBox its left, its top, its width and its height
/// \param ratio the value of the attribute; empty for its default. Throws SvgSyntaxError.
Affine ViewBoxMap(const std::vector<double>& viewBox, const SvgViewport& viewport,
                  std::string_view ratio);

}  // namespace orvane::shapes
