// SPDX-License-Identifier: MIT
#include "tests/support/GoldenFile.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

namespace fs = std::filesystem;

namespace
{

void Write(const fs::path& path, const std::string& text)
{
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
}

/// The first line in which two texts differ, with what each of them has there.
std::string FirstDifference(const std::string& expected, const std::string& found)
{
    std::istringstream expectedLines(expected);
    std::istringstream foundLines(found);
    std::string section;
    for (int number = 1;; ++number)
    {
        std::string expectedLine = "the end of the text";
        std::string foundLine = expectedLine;
        std::getline(expectedLines, expectedLine);
        std::getline(foundLines, foundLine);
        if (expectedLine != foundLine || !expectedLines || !foundLines)
        {
            return "line " + std::to_string(number) + section + "\n  expected: " + expectedLine +
                   "\n  found:    " + foundLine;
        }
        if (expectedLine.starts_with('#'))
        {
            section = " (below \"" + expectedLine + "\")";
        }
    }
}

}  // namespace

testing::AssertionResult IsGolden(const std::string& name, const std::string& text)
{
    const fs::path path = fs::path(ORVANE_TEST_GOLDEN) / name;
    if (std::getenv("ORVANE_UPDATE_GOLDEN") != nullptr)
    {
        Write(path, text);
        return testing::AssertionSuccess();
    }
    std::ifstream file(path, std::ios::binary);
    const bool exists = file.good();
    const std::string expected{std::istreambuf_iterator<char>(file),
                               std::istreambuf_iterator<char>()};
    const fs::path found = fs::path(ORVANE_BINARY_DIR) / "golden" / name;
    if (exists && text == expected)
    {
        fs::remove(found);
        return testing::AssertionSuccess();
    }
    Write(found, text);
    return testing::AssertionFailure()
           << "tests/golden/" << name << ": "
           << (exists ? FirstDifference(expected, text) : "does not exist")
           << "\ntools/golden shows the whole difference.";
}
