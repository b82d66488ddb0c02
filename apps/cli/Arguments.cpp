// SPDX-License-Identifier: MIT
#include "apps/cli/Arguments.h"

#include "apps/cli/Errors.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <filesystem>
#include <sstream>

double ParseNumber(const std::string& option, const std::string& text)
{
    std::size_t used = 0;
    double value = 0;
    try
    {
        value = std::stod(text, &used);
    }
    catch (const std::exception&)
    {
        used = std::string::npos;
    }
    if (used != text.size() || !std::isfinite(value))
    {
        throw UsageError(option + ": \"" + text + "\" is not a number");
    }
    return value;
}

double ParseNumber(const std::string& option, const std::string& text, double least, double most)
{
    const double value = ParseNumber(option, text);
    if (value < least || value > most)
    {
        std::ostringstream message;
        message << option << ": expected a number from " << least << " to " << most << ", found "
                << text;
        throw UsageError(message.str());
    }
    return value;
}

int ParseInteger(const std::string& option, const std::string& text, int least, int most)
{
    const double value = ParseNumber(option, text);
    if (value < least || value > most || value != std::floor(value))
    {
        throw UsageError(option + ": expected a whole number from " + std::to_string(least) +
                         " to " + std::to_string(most) + ", found " + text);
    }
    return static_cast<int>(value);
}

std::array<int, 2> ParsePair(const std::string& option, const std::string& text, char sign,
                             const std::string& form)
{
    const auto isNumber = [](const std::string& digits) {
        constexpr std::size_t mostDigits = 9;
        return !digits.empty() && digits.size() <= mostDigits &&
               digits.find_first_not_of("0123456789") == std::string::npos;
    };
    const std::size_t middle = std::min(text.find(sign), text.size());
    const std::string first = text.substr(0, middle);
    const std::string second = text.substr(std::min(middle + 1, text.size()));
    if (!isNumber(first) || !isNumber(second))
    {
        throw UsageError(option + ": expected " + form + ", found \"" + text + "\"");
    }
    return {std::stoi(first), std::stoi(second)};
}

std::array<int, 2> ParseSize(const std::string& text)
{
    constexpr int largestSide = 100000;
    const std::string form = "WIDTHxHEIGHT, both at least 1";
    const std::array<int, 2> size = ParsePair("--size", text, 'x', form);
    if (size[0] < 1 || size[1] < 1)
    {
        throw UsageError("--size: expected " + form + ", found \"" + text + "\"");
    }
    if (size[0] > largestSide || size[1] > largestSide)
    {
        throw UsageError("--size: at most " + std::to_string(largestSide) +
                         " in each direction, found " + text);
    }
    return size;
}

std::vector<std::string> SplitAtCommas(const std::string& text)
{
    std::vector<std::string> parts(1);
    for (const char c : text)
    {
        if (c == ',')
        {
            parts.emplace_back();
        }
        else
        {
            parts.back() += c;
        }
    }
    return parts;
}

std::vector<double> ParseNumbers(const std::string& option, const std::string& text,
                                 std::size_t count, const std::string& form)
{
    const std::vector<std::string> parts = SplitAtCommas(text);
    if (parts.size() != count)
    {
        throw UsageError(option + ": expected " + form + ", found \"" + text + "\"");
    }
    std::vector<double> numbers;
    numbers.reserve(count);
    for (const std::string& part : parts)
    {
        numbers.push_back(ParseNumber(option, part));
    }
    return numbers;
}

bool HasEnding(const std::string& path, const std::string& ending)
{
    std::string found = std::filesystem::path(path).extension();
    std::transform(found.begin(), found.end(), found.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return found == ending;
}

std::string Alternatives(const std::vector<std::string>& names)
{
    std::string text;
    for (const std::string& name : names)
    {
        text += (text.empty() ? "" : "|") + name;
    }
    return text;
}

int IndexOf(const std::vector<std::string>& names, const std::string& name)
{
    return static_cast<int>(std::find(names.begin(), names.end(), name) - names.begin());
}
