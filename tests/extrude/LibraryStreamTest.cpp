// SPDX-License-Identifier: MIT
// This test program links the shared library, so it can look up the exported functions by name.
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
