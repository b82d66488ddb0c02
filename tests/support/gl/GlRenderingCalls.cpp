// SPDX-License-Identifier: MIT
// The functions of FakeRendering.h.
#include "platform/Bitmaps.h"
#include "platform/Files.h"
#include "platform/Sync.h"
#include "tests/support/FakeRendering.h"
#include "tests/support/gl/GlCalls.h"

#include <dlfcn.h>

#include <cstdio>

std::function<void()> afterMapViewOfFile;
std::function<void()> beforeWaitForSingleObject;

namespace
{

FakeRendering* fake = nullptr;
int contextToken = 0;

// The library's own function, by its name in the library.
template <typename Function>
Function* Real(Function*, const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

void Line(const char* name, const std::string& arguments = "")
{
    gl_calls::AddLine(name, arguments.empty() ? arguments : " " + arguments);
}

}  // namespace

FakeRendering::FakeRendering()
{
    fake = this;
}

FakeRendering::~FakeRendering()
{
    fake = nullptr;
}

int ChoosePixelFormat(HDC dc, const PIXELFORMATDESCRIPTOR* wanted)
{
    if (fake == nullptr)
    {
        return Real(&ChoosePixelFormat, "_Z17ChoosePixelFormatP5HDC__PK21PIXELFORMATDESCRIPTOR")(
            dc, wanted);
    }
    char text[40];
    std::snprintf(text, sizeof text, "0x%02x %d", static_cast<unsigned>(wanted->dwFlags),
                  wanted->cColorBits);
    Line("ChoosePixelFormat", text);
    fake->requested = *wanted;
    return fake->chosenFormat;
}

BOOL SetPixelFormat(HDC dc, int format, const PIXELFORMATDESCRIPTOR* description)
{
    if (fake == nullptr)
    {
        return Real(&SetPixelFormat, "_Z14SetPixelFormatP5HDC__iPK21PIXELFORMATDESCRIPTOR")(
            dc, format, description);
    }
    Line("SetPixelFormat", std::to_string(format));
    return format != 0;
}

int DescribePixelFormat(HDC dc, int format, UINT size, PIXELFORMATDESCRIPTOR* description)
{
    if (fake == nullptr)
    {
        return Real(&DescribePixelFormat,
                    "_Z19DescribePixelFormatP5HDC__ijP21PIXELFORMATDESCRIPTOR")(dc, format, size,
                                                                                description);
    }
    Line("DescribePixelFormat", std::to_string(format));
    *description = {};
    description->cColorBits = static_cast<BYTE>(fake->colorBits);
    return 20;
}

int GetPixelFormat(HDC dc)
{
    return fake == nullptr ? Real(&GetPixelFormat, "_Z14GetPixelFormatP5HDC__")(dc)
                           : fake->chosenFormat;
}

HGLRC wglCreateContext(HDC dc)
{
    if (fake == nullptr)
    {
        return Real(&wglCreateContext, "_Z16wglCreateContextP5HDC__")(dc);
    }
    Line("wglCreateContext");
    return fake->hasContexts ? reinterpret_cast<HGLRC>(&contextToken) : nullptr;
}

BOOL wglMakeCurrent(HDC dc, HGLRC context)
{
    if (fake == nullptr)
    {
        return Real(&wglMakeCurrent, "_Z14wglMakeCurrentP5HDC__P7HGLRC__")(dc, context);
    }
    Line("wglMakeCurrent", context == nullptr ? "null" : "context");
    if (fake->refusesNew && context != nullptr && dc != fake->currentDc)
    {
        return FALSE;
    }
    fake->currentDc = context == nullptr ? nullptr : dc;
    return TRUE;
}

BOOL wglDeleteContext(HGLRC context)
{
    if (fake == nullptr)
    {
        return Real(&wglDeleteContext, "_Z16wglDeleteContextP7HGLRC__")(context);
    }
    Line("wglDeleteContext");
    return TRUE;
}

HDC wglGetCurrentDC()
{
    return fake == nullptr ? Real(&wglGetCurrentDC, "_Z15wglGetCurrentDCv")() : fake->currentDc;
}

HGLRC wglGetCurrentContext()
{
    if (fake == nullptr)
    {
        return Real(&wglGetCurrentContext, "_Z20wglGetCurrentContextv")();
    }
    return fake->currentDc == nullptr ? nullptr : reinterpret_cast<HGLRC>(&contextToken);
}

int StretchDIBits(HDC dc, int x, int y, int width, int height, int sourceX, int sourceY,
                  int sourceWidth, int sourceHeight, const void* bits, const BITMAPINFO* info,
                  UINT usage, DWORD operation)
{
    if (fake == nullptr)
    {
        return Real(&StretchDIBits, "_Z13StretchDIBitsP5HDC__iiiiiiiiPKvPK10BITMAPINFOjj")(
            dc, x, y, width, height, sourceX, sourceY, sourceWidth, sourceHeight, bits, info, usage,
            operation);
    }
    std::string text;
    for (const int value : {x, y, width, height, sourceX, sourceY, sourceWidth, sourceHeight})
    {
        text += (text.empty() ? "" : " ") + std::to_string(value);
    }
    Line("StretchDIBits", text);
    return fake->copiedRows < 0 ? sourceHeight : fake->copiedRows;
}

LPVOID MapViewOfFile(HANDLE mapping, DWORD access, DWORD offsetHigh, DWORD offsetLow,
                     std::size_t count)
{
    void* const view = Real(&MapViewOfFile, "_Z13MapViewOfFilePvjjjm")(mapping, access, offsetHigh,
                                                                       offsetLow, count);
    if (afterMapViewOfFile)
    {
        afterMapViewOfFile();
    }
    return view;
}

DWORD WaitForSingleObject(HANDLE object, DWORD milliseconds)
{
    if (beforeWaitForSingleObject)
    {
        beforeWaitForSingleObject();
    }
    return Real(&WaitForSingleObject, "_Z19WaitForSingleObjectPvj")(object, milliseconds);
}
