// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <string>
#include <vector>

// What the values of options say. Each throws UsageError, naming the option and what was found.

double ParseNumber(const std::string& option, const std::string& text);
/// Both limits are included.
double ParseNumber(const std::string& option, const std::string& text, double least, double most);
int ParseInteger(const std::string& option, const std::string& text, int least, int most);

/// The parts between commas; "a,,b" has an empty one.
std::vector<std::string> SplitAtCommas(const std::string& text);
/// Exactly so many numbers. \p form says what was expected, as "two pixels as X,Y".
std::vector<double> ParseNumbers(const std::string& option, const std::string& text,
                                 std::size_t count, const std::string& form);

/// Two whole numbers from 0, of at most nine digits, with the sign between them. \p form says what
/// was expected.
std::array<int, 2> ParsePair(const std::string& option, const std::string& text, char sign,
                             const std::string& form);
/// What --size says: width and height in pixels, each from 1 to 100000.
std::array<int, 2> ParseSize(const std::string& text);

/// Whether a file's name ends so, in either letter case; the name alone does not count.
bool HasEnding(const std::string& path, const std::string& ending);

/// "a|b|c".
std::string Alternatives(const std::vector<std::string>& names);
/// The place of a name in a list that has it.
int IndexOf(const std::vector<std::string>& names, const std::string& name);
