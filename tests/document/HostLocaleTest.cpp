// SPDX-License-Identifier: MIT
// A host may set a locale, in which letters and numbers follow other rules.

#include "document/PictureFormat.h"
#include "orvane/orvane.h"

#include <gtest/gtest.h>

#include <clocale>

namespace
{

/// Sets the locale of the process until the end of its life, if the system has the locale.
class LocaleInUse
{
public:
    explicit LocaleInUse(const char* name) : isSet_(std::setlocale(LC_ALL, name) != nullptr) {}
    ~LocaleInUse() { std::setlocale(LC_ALL, "C"); }
    LocaleInUse(const LocaleInUse&) = delete;
    LocaleInUse& operator=(const LocaleInUse&) = delete;

    bool IsSet() const { return isSet_; }

private:
    bool isSet_;
};

// The C library's tolower turns I into a letter without a dot in a Turkish locale of 8 bits.
TEST(HostLocale, UpperAndLowerCaseOfAToZDoNotDependOnIt)
{
    for (const char* const name : {"C", "C.UTF-8", "de_DE.UTF-8", "tr_TR.UTF-8", "tr_TR"})
    {
        const LocaleInUse locale(name);
        if (!locale.IsSet())
        {
            continue;
        }
        EXPECT_EQ(orvane::ColorText(orvane::ParseColor("WHITE")), "#ffffff") << name;
        EXPECT_EQ(orvane::FindFont("LIBERATION SERIF ITALIC").name, "Liberation Serif Italic")
            << name;
        EXPECT_TRUE(orvane::HasExtension("A.GIF", ".gif")) << name;
    }
}

}  // namespace
