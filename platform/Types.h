// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The scalar types and handles of the platform's calls. On Windows they are the system's own;
/// elsewhere these have the same widths: a WORD is 16 bits, a DWORD and a LONG are 32.

#if defined(_WIN32)
#define NOMINMAX
#include <windows.h>
#else

#include <cstdint>

using BOOL = int;
using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using LONG = std::int32_t;
using SHORT = std::int16_t;
using UINT = unsigned int;
using COLORREF = DWORD;  ///< 0x00BBGGRR

using LPSTR = char*;
using PSTR = char*;
using LPCSTR = const char*;
using LPVOID = void*;
using LPCVOID = const void*;

using LPARAM = std::intptr_t;
using WPARAM = std::uintptr_t;
using LRESULT = std::intptr_t;
using ULONG_PTR = std::uintptr_t;
using DWORD_PTR = std::uintptr_t;

/// Kernel objects (mutexes, events, files, mappings) share one handle type.
using HANDLE = void*;
using HGDIOBJ = void*;

using HDC = struct HDC__*;
using HFONT = struct HFONT__*;
using HBITMAP = struct HBITMAP__*;
using HGLRC = struct HGLRC__*;
using HWND = struct HWND__*;
using HINSTANCE = struct HINSTANCE__*;
using HMODULE = HINSTANCE;

#define CALLBACK
#define WINAPI
#ifndef FALSE
#define FALSE 0
#endif
#ifndef TRUE
#define TRUE 1
#endif

struct POINT
{
    LONG x;
    LONG y;
};

struct SIZE
{
    LONG cx;
    LONG cy;
};

struct RECT
{
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
};

#endif
