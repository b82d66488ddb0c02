// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// A fixture that installs fonts made by the test.

#include "tests/support/FontFile.h"
#include "tests/support/PrivateFonts.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using Names = std::vector<std::string>;

/// A face that a test makes from the font of edge cases.
struct Made
{
    std::string family;
    std::string style;
    std::string full;
    int weight = 400;
    bool italic = false;
    int width = 5;
    std::string postScript = "";
};

inline FontFile Make(const Made& face)
{
    FontFile file = FontFile::EdgeTest();
    const std::string postScript = face.postScript.empty() ? face.full : face.postScript;
    file.Names(face.family, face.style, face.full, postScript)
        .Weight(face.weight)
        .Width(face.width)
        .BoldAndItalic(face.weight >= 700, face.italic);
    return file;
}

/// A test with fonts of its own alone. Installs them for its duration.
class Fonts : public testing::Test
{
protected:
    ~Fonts() override { SetProcessCodePage(1252); }

    void Install(const std::vector<Made>& faces)
    {
        for (const Made& face : faces)
        {
            InstallFile(Make(face));
        }
    }

    std::string InstallFile(const FontFile& font)
    {
        const std::string file = NewFile(".ttf");
        font.Write(file);
        fonts_.Install(file);
        return file;
    }

    std::string NewFile(const std::string& extension)
    {
        return fonts_.Folder() + '/' + std::to_string(++files_) + extension;
    }

    PrivateFonts fonts_{{}};

private:
    int files_ = 0;
};

/// The full name of the face that a record's description selects.
inline std::string SelectedBy(const EnumeratedFont& font)
{
    LOGFONTA description = font.record.elfLogFont;
    description.lfHeight = -1000;
    description.lfWidth = 0;
    return SelectedFont(description).Full();
}

inline void ExpectEveryRecordSelectsItsFace(const std::vector<EnumeratedFont>& fonts)
{
    for (const EnumeratedFont& font : fonts)
    {
        EXPECT_EQ(SelectedBy(font), font.Full());
    }
}

/// A family as most fonts have it, of four faces.
inline const std::vector<Made> usualFamily = {
    {"Lato", "Bold Italic", "Lato Bold Italic", 700, true},
    {"Lato", "Regular", "Lato Regular"},
    {"Lato", "Italic", "Lato Italic", 400, true},
    {"Lato", "Bold", "Lato Bold", 700},
};
