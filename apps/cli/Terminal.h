// SPDX-License-Identifier: MIT
#pragma once

#include <string>

/// Whether standard error is a terminal. Progress appears only there.
bool IsErrorTerminal();

/// Replaces the progress line on the terminal; nothing when standard error is none.
void ShowProgress(const std::string& text);

/// Wipes the progress line.
void ClearProgress();
