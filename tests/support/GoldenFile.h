// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Comparing texts with golden files: the expected texts in tests/golden.

#include <gtest/gtest.h>

#include <string>

/// Whether \p text equals the content of a golden file. \p name is the file's path in tests/golden.
///
/// A failure names the first line that differs, and leaves the text that the test got in the folder
/// golden of the build, where tools/golden finds it. When the environment variable
/// ORVANE_UPDATE_GOLDEN is set, the text becomes the file's content instead, and the check
/// succeeds.
testing::AssertionResult IsGolden(const std::string& name, const std::string& text);
