// SPDX-License-Identifier: MIT
#pragma once

#include "host/CString.h"

#include <string>
#include <vector>

/// The lines of a text (UTF-8), ended by LF, CR LF or CR; the last one need not be. A tab becomes
/// four spaces, because fonts have no glyph for it.
std::vector<std::string> SplitLines(const std::string& text);

/// The lines of a file. Throws Failure when it cannot be read.
std::vector<std::string> ReadLines(const std::string& path);

/// Finds the code page that holds all characters of the lines (UTF-8), makes it the process's, and
/// returns the lines in it, separated by CR LF. Throws Failure, naming the first character that no
/// code page holds together with those before it.
CString ChooseCodePage(const std::vector<std::string>& lines);

/// A text of the process's code page as UTF-8.
std::string ToUtf8(const char* text);

/// A character (UTF-8) for a message: itself, when it can be seen, and its number.
std::string Describe(const std::string& character);
