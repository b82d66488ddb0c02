// SPDX-License-Identifier: MIT
#include "shapes/SvgText.h"

#include "platform/Utf8.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <numbers>

namespace orvane::shapes
{

namespace
{

constexpr std::string_view spaces = " \t\n\r\f";

bool IsSpace(char c)
{
    return spaces.find(c) != std::string_view::npos;
}

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool IsLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// User units in a unit of length; empty for an unknown unit.
std::optional<double> UnitsIn(std::string_view unit)
{
    struct Unit
    {
        std::string_view name;
        double units;
    };
    static constexpr std::array<Unit, 10> all = {{{"", 1},
                                                  {"px", 1},
                                                  {"in", 96},
                                                  {"cm", 96 / 2.54},
                                                  {"mm", 96 / 25.4},
                                                  {"Q", 96 / 101.6},
                                                  {"pt", 96 / 72.0},
                                                  {"pc", 16},
                                                  {"em", 16},
                                                  {"ex", 8}}};
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const Unit& known) { return known.name == unit; });
    return found == all.end() ? std::optional<double>() : found->units;
}

double TakeLength(SvgScanner& scanner, double whole)
{
    const std::optional<double> number = scanner.TakeNumber();
    if (!number)
    {
        scanner.Fail("a length");
    }
    if (scanner.Take('%'))
    {
        return *number / 100 * whole;
    }
    const SvgScanner before = scanner;
    const std::optional<double> units = UnitsIn(scanner.TakeWord());
    if (!units)
    {
        before.Fail("a unit of length");
    }
    return *number * *units;
}

/// The map of one transform with its arguments; empty when their number is wrong.
std::optional<Affine> TransformOf(std::string_view name, const std::vector<double>& n)
{
    constexpr double radian = std::numbers::pi / 180;
    if (name == "matrix" && n.size() == 6)
    {
        return Affine{n[0], n[1], n[2], n[3], n[4], n[5]};
    }
    if (name == "translate" && (n.size() == 1 || n.size() == 2))
    {
        return Affine::Translation(n[0], n.size() == 2 ? n[1] : 0);
    }
    if (name == "scale" && (n.size() == 1 || n.size() == 2))
    {
        return Affine::Scale(n[0], n.back());
    }
    if (name == "rotate" && (n.size() == 1 || n.size() == 3))
    {
        const double angle = n[0] * radian;
        const Affine turn = {
            std::cos(angle), std::sin(angle), -std::sin(angle), std::cos(angle), 0, 0};
        return n.size() == 1
                   ? turn
                   : Affine::Translation(n[1], n[2]) * turn * Affine::Translation(-n[1], -n[2]);
    }
    if (name == "skewX" && n.size() == 1)
    {
        return Affine{1, 0, std::tan(n[0] * radian), 1, 0, 0};
    }
    if (name == "skewY" && n.size() == 1)
    {
        return Affine{1, std::tan(n[0] * radian), 0, 1, 0, 0};
    }
    return {};
}

std::string Shown(std::string_view text)
{
    constexpr std::size_t shownLetters = 20;
    return text.empty() ? "the end" : "\"" + std::string(text.substr(0, shownLetters)) + "\"";
}

}  // namespace

SvgSyntaxError::SvgSyntaxError(std::size_t at, const std::string& found,
                               const std::string& expected)
    : std::runtime_error("found " + found + ", expected " + expected),
      at_(at),
      found_(found),
      expected_(expected)
{}

void SvgScanner::SkipSpace()
{
    while (IsSpace(Peek()))
    {
        ++at_;
    }
}

void SvgScanner::SkipComma()
{
    SkipSpace();
    if (Take(','))
    {
        SkipSpace();
    }
}

bool SvgScanner::Take(char c)
{
    const bool isThere = !IsAtEnd() && Peek() == c;
    at_ += isThere ? 1 : 0;
    return isThere;
}

std::string_view SvgScanner::TakeWord()
{
    const std::size_t first = at_;
    while (IsLetter(Peek()))
    {
        ++at_;
    }
    return text_.substr(first, at_ - first);
}

std::optional<double> SvgScanner::TakeNumber()
{
    const std::string_view rest = Rest();
    const std::size_t sign = rest.starts_with('+') || rest.starts_with('-') ? 1 : 0;
    const bool startsWithPoint = sign < rest.size() && rest[sign] == '.';
    const std::size_t digit = sign + (startsWithPoint ? 1 : 0);
    if (digit >= rest.size() || !IsDigit(rest[digit]))
    {
        return {};
    }
    // from_chars takes no plus sign.
    const char* const first = rest.data() + (rest[0] == '+' ? 1 : 0);
    double number = 0;
    const std::from_chars_result read = std::from_chars(first, rest.data() + rest.size(), number);
    const std::string_view text(first, static_cast<std::size_t>(read.ptr - first));
    if (read.ec == std::errc::result_out_of_range)
    {
        // A number too close to zero, such as 1e-999, is 0.
        const std::size_t exponent = text.find_first_of("eE");
        const bool isSmall = exponent == std::string_view::npos
                                 ? text.find_first_not_of("-0") == text.find('.')
                                 : text[exponent + 1] == '-';
        if (!isSmall)
        {
            Fail("a number below 1.8e308");
        }
        number = 0;
    }
    at_ += static_cast<std::size_t>(read.ptr - rest.data());
    return number;
}

double SvgScanner::ExpectNumber()
{
    SkipComma();
    const std::optional<double> number = TakeNumber();
    if (!number)
    {
        Fail("a number");
    }
    return *number;
}

bool SvgScanner::ExpectFlag()
{
    SkipComma();
    const bool isSet = Take('1');
    if (!isSet && !Take('0'))
    {
        Fail("0 or 1");
    }
    return isSet;
}

void SvgScanner::Fail(const std::string& expected) const
{
    throw SvgSyntaxError(at_, Shown(Rest()), expected);
}

std::string_view Trimmed(std::string_view text)
{
    return orvane::Trimmed(text, spaces);
}

double SvgViewport::Diagonal() const
{
    return std::hypot(width, height) / std::numbers::sqrt2;
}

double ParseLength(std::string_view text, double whole)
{
    SvgScanner scanner(text);
    scanner.SkipSpace();
    const double length = TakeLength(scanner, whole);
    scanner.SkipSpace();
    if (!scanner.IsAtEnd())
    {
        scanner.Fail("one length");
    }
    return length;
}

std::vector<double> ParseNumbers(std::string_view text)
{
    std::vector<double> numbers;
    SvgScanner scanner(text);
    for (scanner.SkipSpace(); !scanner.IsAtEnd(); scanner.SkipSpace())
    {
        numbers.push_back(scanner.ExpectNumber());
    }
    return numbers;
}

std::vector<double> ParseLengths(std::string_view text, double whole)
{
    std::vector<double> lengths;
    SvgScanner scanner(text);
    for (scanner.SkipSpace(); !scanner.IsAtEnd(); scanner.SkipComma())
    {
        lengths.push_back(TakeLength(scanner, whole));
    }
    return lengths;
}

Affine ParseTransforms(std::string_view text)
{
    Affine map;
    SvgScanner scanner(text);
    for (scanner.SkipSpace(); !scanner.IsAtEnd(); scanner.SkipComma())
    {
        const SvgScanner before = scanner;
        const std::string_view name = scanner.TakeWord();
        scanner.SkipSpace();
        if (!scanner.Take('('))
        {
            before.Fail("a transform such as scale(2)");
        }
        std::vector<double> numbers;
        for (scanner.SkipSpace(); !scanner.Take(')'); scanner.SkipSpace())
        {
            numbers.push_back(scanner.ExpectNumber());
        }
        const std::optional<Affine> transform = TransformOf(name, numbers);
        if (!transform)
        {
            before.Fail("a known transform with as many numbers as it takes");
        }
        map = map * *transform;
    }
    return map;
}

Affine ViewBoxMap(const std::vector<double>& viewBox, const SvgViewport& viewport,
                  std::string_view ratio)
{
    SvgScanner scanner(ratio);
    scanner.SkipSpace();
    const SvgScanner before = scanner;
    std::string_view align = scanner.TakeWord();
    scanner.SkipSpace();
    const std::string_view fit = scanner.TakeWord();
    if (align.empty())
    {
        align = "xMidYMid";
    }
    double xScale = viewport.width / viewBox[2];
    double yScale = viewport.height / viewBox[3];
    if (align == "none")
    {
        return Affine::Scale(xScale, yScale) * Affine::Translation(-viewBox[0], -viewBox[1]);
    }
    const auto shareOf = [&](std::string_view place) {
        static constexpr std::array<std::string_view, 3> names = {"Min", "Mid", "Max"};
        const auto found = std::find(names.begin(), names.end(), place);
        if (found == names.end())
        {
            before.Fail("an alignment such as xMidYMid");
        }
        return static_cast<double>(found - names.begin()) / 2;
    };
    if (align.size() != 8 || align[0] != 'x' || align[4] != 'Y')
    {
        before.Fail("an alignment such as xMidYMid");
    }
    xScale = yScale = fit == "slice" ? std::max(xScale, yScale) : std::min(xScale, yScale);
    const double x = shareOf(align.substr(1, 3)) * (viewport.width - viewBox[2] * xScale);
    const double y = shareOf(align.substr(5, 3)) * (viewport.height - viewBox[3] * yScale);
    return Affine::Translation(x, y) * Affine::Scale(xScale, yScale) *
           Affine::Translation(-viewBox[0], -viewBox[1]);
}

}  // namespace orvane::shapes
