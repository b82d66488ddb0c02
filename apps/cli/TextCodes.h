// SPDX-License-Identifier: MIT
#pragma once

#include "host/CString.h"

#include <string>
#include <vector>

/// Finds the code page that holds all characters of the lines (UTF-8), makes it the process's, and
/// returns the lines in it, separated by CR LF. Throws Failure, naming the first character that no
/// code page holds together with those before it.
CString ChooseCodePage(const std::vector<std::string>& lines);

/// A text of the process's code page as UTF-8.
std::string ToUtf8(const char* text);
