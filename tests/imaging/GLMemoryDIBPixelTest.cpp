// SPDX-License-Identifier: MIT
#include "imaging/GLMemoryDIB.h"

#include "imaging/MemoryMappedDIB.h"
#include "material/ColorVector.h"
#include "platform/Errors.h"
#include "platform/OpenGL.h"
#include "scene/DrawingParameters.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

namespace
{

using Values = std::vector<int>;

ProjectionData PictureOf(double width, double height)
{
    ProjectionData projection;
    projection.SetScaledSize(width, height);
    return projection;
}

#define REQUIRE_CREATED(call)                                  \
    if (!(call))                                               \
    {                                                          \
        FAIL() << "no OpenGL context: " << GetLastErrorText(); \
    }                                                          \
    static_assert(true)

Values BytesOf(const GLMemoryDIB& dib, int first, int count)
{
    const BYTE* const bytes = static_cast<const BYTE*>(dib.GetDIBBits()) + first;
    return Values(bytes, bytes + count);
}

void Clear(float red, float green, float blue)
{
    glClearColor(red, green, blue, 1);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
}

TEST(GLMemoryDIB, ADrawingArrivesInTheBitmapsBits)
{
    GLMemoryDIB dib;
    REQUIRE_CREATED(dib.Create(PictureOf(4, 2), 24));
    EXPECT_TRUE(glIsEnabled(GL_CULL_FACE));
    Clear(1, 0, 0);
    GdiFlush();
    EXPECT_EQ(BytesOf(dib, 0, 6), (Values{0, 0, 255, 0, 0, 255}));
    EXPECT_EQ(dib.describedPixelFormat.cColorBits, 24);
    Clear(0, 0, 1);
    EXPECT_EQ(dib.Release(), 1);
    EXPECT_EQ(wglGetCurrentContext(), nullptr);
    EXPECT_EQ(BytesOf(dib, 0, 3), (Values{255, 0, 0}));
}

TEST(GLMemoryDIB, AfterResizingBackFacesAreNoLongerCulled)
{
    GLMemoryDIB dib;
    REQUIRE_CREATED(dib.Create(PictureOf(4, 2), 24));
    EXPECT_TRUE(glIsEnabled(GL_CULL_FACE));
    EXPECT_EQ(dib.Resize(8, 4), 1);
    EXPECT_FALSE(glIsEnabled(GL_CULL_FACE));
    EXPECT_TRUE(glIsEnabled(GL_DEPTH_TEST));
    GLint viewport[4];
    glGetIntegerv(GL_VIEWPORT, viewport);
    EXPECT_EQ(viewport[2], 8);
    EXPECT_EQ(viewport[3], 4);
    Clear(0, 1, 0);
    GdiFlush();
    EXPECT_EQ(BytesOf(dib, 24 * 3 + 21, 3), (Values{0, 255, 0}));
}

TEST(GLMemoryDIB, TheBackgroundColourIsLookedUpInTheTable)
{
    GLMemoryDIB dib;
    EXPECT_EQ(dib.LookupBackgroundColor(), 0UL);
    REQUIRE_CREATED(dib.Create(PictureOf(4, 2), 8));
    Clear(1, 0, 1.0f / 3);
    EXPECT_EQ(dib.LookupBackgroundColor(), 0x5500FFUL);
    EXPECT_EQ(BytesOf(dib, 0, 1), Values{7 | 1 << 6});
    GLMemoryDIB deep;
    REQUIRE_CREATED(deep.Create(PictureOf(4, 2), 24));
    Clear(1, 1, 1);
    EXPECT_EQ(deep.LookupBackgroundColor(), 0UL);
}

TEST(GLMemoryDIB, TheNearestColourIsTheLowestOfEqualOnes)
{
    GLMemoryDIB dib;
    REQUIRE_CREATED(dib.Create(PictureOf(4, 2), 4));
    ColorVector red(0.9f, 0.1f, 0.1f, 0.5f);
    EXPECT_EQ(dib.FindNearestColor(&red), 1);  // 9 is red, too
    EXPECT_EQ(red.GetColorRef(), 0x0000FFUL);
    EXPECT_EQ(red.alpha, 0.5f);
    GLMemoryDIB deep;
    REQUIRE_CREATED(deep.Create(PictureOf(4, 2), 24));
    ColorVector grey(0.3f, 0.3f, 0.3f, 1);
    const unsigned long rounded = grey.GetColorRef();
    EXPECT_EQ(deep.FindNearestColor(&grey), -1);
    EXPECT_EQ(grey.green, static_cast<float>(rounded >> 8 & 0xFF) * 0.003921569f);
}

// A slanted, shaded plane that covers all: every pixel differs from its neighbours.
void DrawPlane()
{
    glBegin(GL_QUADS);
    glColor3f(1, 0, 0);
    glVertex3f(-9, -7, -9);
    glColor3f(0, 1, 0);
    glVertex3f(9, -7, -6);
    glColor3f(0, 0, 1);
    glVertex3f(9, 7, -8);
    glColor3f(1, 1, 1);
    glVertex3f(-9, 7, -11);
    glEnd();
}

// Triangles in front of it, which leave gaps.
void DrawTriangles()
{
    glTranslatef(0, 0, -5);
    glBegin(GL_TRIANGLES);
    for (int i = 0; i < 12; ++i)
    {
        const float angle = static_cast<float>(i) * 0.55f;
        glColor3f(1, static_cast<float>(i) / 12, 0);
        glVertex3f(0.7f * std::cos(angle + 0.2f), 0.5f * std::sin(angle + 0.2f), 1);
        glVertex3f(1.8f * std::cos(angle), 1.2f * std::sin(angle), 0);
        glVertex3f(1.8f * std::cos(angle + 0.4f), 1.2f * std::sin(angle + 0.4f), 0);
    }
    glEnd();
}

// A picture of 230 by 150 pixels drawn in bands of that size, and copied together.
bool DrawInBands(int width, int height, bool hasEdges, MemoryMappedDIB& picture)
{
    GLMemoryDIB dib;
    dib.maximumBandWidth = width;
    dib.maximumBandHeight = height;
    if (!dib.Create(PictureOf(230, 150), 24) || !picture.Create(230, 150, 72, 72, 24, CString()))
    {
        return false;
    }
    DrawingParameters parameters;
    for (int row = 0; row < std::ceil(dib.GetBandingRows()); ++row)
    {
        for (int column = 0; column < std::ceil(dib.GetBandingColumns()); ++column)
        {
            dib.PrepareNextBand(row, column, &parameters);
            Clear(0, 0, 0);
            DrawPlane();
            if (hasEdges)
            {
                DrawTriangles();
            }
            EXPECT_EQ(dib.CopyBand(picture.memoryDC, 0, 0, row, column), 1);
        }
    }
    return true;
}

// The bytes that differ by more than a level.
int CountNotable(const MemoryMappedDIB& whole, const MemoryMappedDIB& banded)
{
    int count = 0;
    for (int i = 0; i < 692 * 150; ++i)
    {
        count += std::abs(static_cast<const BYTE*>(whole.GetDIBBits())[i] -
                          static_cast<const BYTE*>(banded.GetDIBBits())[i]) > 1;
    }
    return count;
}

TEST(GLMemoryDIB, BandsJoinToThePictureDrawnAtOnceWhereverTheyMeet)
{
    for (const bool hasEdges : {false, true})
    {
        MemoryMappedDIB whole;
        REQUIRE_CREATED(DrawInBands(230, 150, hasEdges, whole));
        for (const int width : {33, 61, 64, 115, 230})
        {
            for (const int height : {11, 37, 40, 75, 150})
            {
                SCOPED_TRACE(std::to_string(width) + " x " + std::to_string(height));
                MemoryMappedDIB banded;
                ASSERT_TRUE(DrawInBands(width, height, hasEdges, banded));
                // OpenGL puts corners on a fine grid, in each band anew: pixels on edges may
                // change sides.
                EXPECT_LE(CountNotable(whole, banded), hasEdges ? 6 : 0);
            }
        }
    }
}

TEST(GLMemoryDIB, TheDepthOfTheTargetMayBeAnother)
{
    GLMemoryDIB dib;
    REQUIRE_CREATED(dib.Create(PictureOf(4, 2), 32));
    dib.PrepareNextBand(0, 0, nullptr);
    Clear(1, 0, 1);
    for (const int bits : {4, 8, 16, 24, 32})
    {
        MemoryMappedDIB picture;
        ASSERT_EQ(picture.Create(6, 4, 72, 72, bits, CString()), 1);
        EXPECT_EQ(dib.CopyBand(picture.memoryDC, 1, 1, 0, 0), 1);
        const BYTE* const bytes = static_cast<const BYTE*>(picture.GetDIBBits());
        MemoryMappedDIB converted;
        ASSERT_EQ(converted.Create(6, 4, 72, 72, 24, CString()), 1);
        SetDIBits(nullptr, converted.dibSection, 0, 4, bytes, picture.GetDIBInfo(), DIB_RGB_COLORS);
        const BYTE* const rgb = static_cast<const BYTE*>(converted.GetDIBBits());
        EXPECT_EQ(Values(rgb + 20, rgb + 26), (Values{0, 0, 0, 255, 0, 255})) << bits;
        EXPECT_EQ(Values(rgb, rgb + 3), (Values{0, 0, 0}));
    }
}

}  // namespace
