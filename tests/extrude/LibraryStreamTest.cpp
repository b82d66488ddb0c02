// SPDX-License-Identifier: MIT
// In this program the library is the shared one, so its exports can be asked for.
#include "extrude/Library.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

namespace
{

TEST(Library, TheTwoFunctionsAreExportedUnderTheirPlainNames)
{
    EXPECT_EQ(dlsym(RTLD_DEFAULT, "CreateFontList"), reinterpret_cast<void*>(&CreateFontList));
    EXPECT_EQ(dlsym(RTLD_DEFAULT, "GetFontList"), reinterpret_cast<void*>(&GetFontList));
}

}  // namespace
