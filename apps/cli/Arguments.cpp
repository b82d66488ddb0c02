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
