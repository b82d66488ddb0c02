// SPDX-License-Identifier: MIT
#include "tests/support/BmpFile.h"
#include "tests/support/ExposedDib.h"
#include "tests/support/FakeRendering.h"
#include "tests/support/TemporaryFile.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace
{

// A file of a few pages, of which another program cuts off all but a few bytes or to which it adds
// some, just when it has been mapped.
int StatusAfterResizing(std::uintmax_t newSize)
{
    BmpFile sample;
    sample.width = 64;
    sample.height = 64;
    sample.pixels = Bytes(12288, 5);
    const TemporaryFile file("resized.bmp", sample.File());
    afterMapViewOfFile = [&] { std::filesystem::resize_file(file.Path().Text(), newSize); };
    ExposedDib dib;
    const int status = dib.Open(file.Path());
    afterMapViewOfFile = nullptr;
    return status;
}

TEST(MemoryMappedDIB, AFileThatShrinksWhileItIsOpenedIsRefused)
{
    EXPECT_EQ(StatusAfterResizing(12342), 1);
    EXPECT_EQ(StatusAfterResizing(12341), 4);
    EXPECT_EQ(StatusAfterResizing(30), 4);
    EXPECT_EQ(StatusAfterResizing(1), 3);
    EXPECT_EQ(StatusAfterResizing(0), 3);
}

TEST(MemoryMappedDIB, AFileThatGrowsWhileItIsOpenedIsReadNoFurtherThanItsView)
{
    BmpFile sample;
    sample.width = 64;
    sample.height = 640;  // ten times the pixels that are there
    sample.pixels = Bytes(12288, 5);
    const TemporaryFile file("grown.bmp", sample.File());
    afterMapViewOfFile = [&] { std::filesystem::resize_file(file.Path().Text(), 1 << 20); };
    ExposedDib dib;
    const int status = dib.Open(file.Path());
    afterMapViewOfFile = nullptr;
    EXPECT_EQ(status, 4);
}

}  // namespace
