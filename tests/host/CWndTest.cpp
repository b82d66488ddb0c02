// SPDX-License-Identifier: MIT
#include "host/CWnd.h"

#include "host/CDynLinkLibrary.h"
#include "host/CFont.h"
#include "host/CSize.h"
#include "platform/DeviceContexts.h"

#include <gtest/gtest.h>

#include <cstring>

TEST(CWnd, KeepsItsTextAndHandle)
{
    CWnd window;
    EXPECT_EQ(window.GetSafeHwnd(), nullptr);
    window.SetWindowText("Arial (3 of 9)");
    EXPECT_EQ(window.GetWindowText(), "Arial (3 of 9)");
    const HWND handle = reinterpret_cast<HWND>(&window);
    EXPECT_EQ(CWnd(handle).GetSafeHwnd(), handle);
}

TEST(CFont, OwnsTheFontItCreates)
{
    LOGFONTA description{};
    std::strcpy(description.lfFaceName, "DejaVu Sans");
    CFont font;
    EXPECT_FALSE(font.DeleteObject());
    ASSERT_TRUE(font.CreateFontIndirect(&description));
    const HFONT first = font;
    ASSERT_NE(first, nullptr);
    ASSERT_TRUE(font.CreateFontIndirect(&description));
    EXPECT_FALSE(::DeleteObject(first));  // gone already
    const HFONT second = font;
    EXPECT_TRUE(font.DeleteObject());
    EXPECT_EQ(font.GetSafeHandle(), nullptr);
    EXPECT_FALSE(::DeleteObject(second));
}

TEST(CFont, SelectedFontStaysUntilItIsDeselected)
{
    LOGFONTA description{};
    CFont font;
    ASSERT_TRUE(font.CreateFontIndirect(&description));
    const HDC dc = CreateCompatibleDC(nullptr);
    const HGDIOBJ before = SelectObject(dc, font.GetSafeHandle());
    EXPECT_FALSE(font.DeleteObject());
    EXPECT_FALSE(font.CreateFontIndirect(&description));
    EXPECT_NE(font.GetSafeHandle(), nullptr);
    SelectObject(dc, before);
    EXPECT_TRUE(font.DeleteObject());
    DeleteDC(dc);
}

TEST(CDynLinkLibrary, IsCountedWhileItLives)
{
    AFX_EXTENSION_MODULE module;
    const HMODULE handle = reinterpret_cast<HMODULE>(&module);
    EXPECT_TRUE(AfxInitExtensionModule(module, handle));
    EXPECT_TRUE(AfxInitExtensionModule(module, nullptr));
    EXPECT_EQ(module.hModule, handle);
    const int before = CDynLinkLibrary::GetCount();
    {
        const CDynLinkLibrary library(module);
        EXPECT_EQ(library.m_hModule, handle);
        EXPECT_EQ(CDynLinkLibrary::GetCount(), before + 1);
    }
    EXPECT_EQ(CDynLinkLibrary::GetCount(), before);
}

TEST(CSize, AddsAndComparesByParts)
{
    CSize size(3, 4);
    size += CSize(1, 1);
    size -= CSize(0, 2);
    EXPECT_TRUE(size == CSize(4, 3));
    EXPECT_TRUE(-size == CSize(-4, -3));
    EXPECT_TRUE(CSize() != size);
}

TEST(CPoint, MovesBySizesAndDiffersByOne)
{
    CPoint point(10, 20);
    point += CSize(1, 2);
    point -= CSize(2, 2);
    EXPECT_TRUE(point == CPoint(9, 20));
    EXPECT_TRUE(point - CPoint(4, 4) == CSize(5, 16));
    EXPECT_TRUE(CPoint() != point);
}
