// SPDX-License-Identifier: MIT
#include "imaging/GLMemoryDIB.h"

#include "geometry/Truncate.h"
#include "imaging/BitmapLayout.h"
#include "imaging/Palette.h"
#include "platform/OpenGL.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace
{

constexpr int maxBandBytes = 1048576;
constexpr int screenBits = 32;
// The index of the pixel format that an 8-bit bitmap gets when ChoosePixelFormat finds none.
constexpr int fallbackFormat = 17;

}  // namespace

GLMemoryDIB::GLMemoryDIB() : memoryDC(CreateCompatibleDC(nullptr)) {}

GLMemoryDIB::GLMemoryDIB(const GLMemoryDIB& other) : GLMemoryDIB()
{
    *this = other;
}

GLMemoryDIB& GLMemoryDIB::operator=(const GLMemoryDIB& other)
{
    if (this != &other)
    {
        describedPixelFormat = other.describedPixelFormat;
        requestedPixelFormat = other.requestedPixelFormat;
        pixelFormatIndex = other.pixelFormatIndex;
        colorBits = other.colorBits;
        projection = other.projection;
        bandingRows = other.bandingRows;
        bandingColumns = other.bandingColumns;
        maximumBandWidth = other.maximumBandWidth;
        maximumBandHeight = other.maximumBandHeight;
    }
    return *this;
}

GLMemoryDIB::~GLMemoryDIB()
{
    if (!Release() && memoryDC != nullptr)
    {
        if (previousBitmap != nullptr)
        {
            SelectObject(memoryDC, previousBitmap);
        }
        DeleteDC(memoryDC);
    }
    if (dibSection != nullptr)
    {
        DeleteObject(dibSection);
    }
}

int GLMemoryDIB::GetBitCount() const
{
    return colorBits != 0 ? colorBits : screenBits;
}

void GLMemoryDIB::CalculateDIBInfo()
{
    const double width = projection.GetWidth();
    const double height = projection.GetHeight();
    const double bandWidth = std::min(width, double(maximumBandWidth));
    if (!(bandWidth > 0) || !(height > 0))
    {
        bandingRows = bandingColumns = 0;
        projection.SetViewSize(0, 0);
        return;
    }
    const std::int64_t rowBytes =
        (static_cast<std::int64_t>(GetBitCount() * bandWidth) + 31) / 8 & ~3;
    const std::int64_t rows =
        std::max<std::int64_t>(1, maxBandBytes / std::max<std::int64_t>(4, rowBytes));
    const double bandHeight = std::min({double(rows), height, double(maximumBandHeight)});
    bandingColumns = width / bandWidth;
    bandingRows = height / bandHeight;
    projection.SetViewSize(bandWidth, bandHeight);
    projection.SetViewOffset(0, 0);
}

int GLMemoryDIB::GenerateDIBInfo()
{
    const int bits = GetBitCount();
    const int words = bits == 16 ? 3 : bits <= 8 ? 1 << bits : 0;
    infoStorage_.assign(sizeof(BITMAPINFOHEADER) / sizeof(DWORD) + std::max(words, 1), 0);
    dibInfo = reinterpret_cast<BITMAPINFO*>(infoStorage_.data());
    dibInfo->bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    dibInfo->bmiHeader.biPlanes = 1;
    dibInfo->bmiHeader.biBitCount = static_cast<WORD>(bits);
    dibInfo->bmiHeader.biCompression = bits == 16 ? BI_BITFIELDS : BI_RGB;
    return 1;
}

HBITMAP GLMemoryDIB::CreateDIBRectangleSection()
{
    if (memoryDC == nullptr || (dibInfo == nullptr && !GenerateDIBInfo()))
    {
        return nullptr;
    }
    BITMAPINFOHEADER& header = dibInfo->bmiHeader;
    header.biWidth = static_cast<LONG>(GetDIBWidth());
    header.biHeight = static_cast<LONG>(GetDIBHeight());
    header.biSizeImage =
        ((static_cast<DWORD>(header.biBitCount) * header.biWidth + 31) >> 5) * 4 * header.biHeight;
    FillPalette(dibInfo);
    return CreateDIBSection(memoryDC, dibInfo, DIB_RGB_COLORS, &dibBits, nullptr, 0);
}

int GLMemoryDIB::SelectNewSection()
{
    CalculateDIBInfo();
    dibSection = CreateDIBRectangleSection();
    if (dibSection == nullptr)
    {
        return 0;
    }
    previousBitmap = SelectObject(memoryDC, dibSection);
    return 1;
}

void GLMemoryDIB::DeleteSection()
{
    if (dibSection != nullptr)
    {
        DeleteObject(dibSection);
    }
    dibSection = nullptr;
    dibBits = nullptr;
    dibInfo = nullptr;
    previousBitmap = nullptr;
}

void GLMemoryDIB::RequestPixelFormat(DWORD flags)
{
    requestedPixelFormat = {};
    requestedPixelFormat.nSize = sizeof requestedPixelFormat;
    requestedPixelFormat.nVersion = 1;
    requestedPixelFormat.dwFlags = flags;
    requestedPixelFormat.iPixelType = PFD_TYPE_RGBA;
    requestedPixelFormat.cColorBits = static_cast<BYTE>(GetBitCount());
    requestedPixelFormat.cDepthBits = 32;
    requestedPixelFormat.iLayerType = PFD_MAIN_PLANE;
    pixelFormatIndex = ChoosePixelFormat(memoryDC, &requestedPixelFormat);
}

int GLMemoryDIB::CreateContext()
{
    renderingContext = wglCreateContext(memoryDC);
    return renderingContext != nullptr && wglMakeCurrent(memoryDC, renderingContext);
}

void GLMemoryDIB::LoadProjection()
{
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    projection.ApplyVolume();
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
}

void GLMemoryDIB::ReplaceDeviceContext()
{
    if (memoryDC != nullptr)
    {
        SelectObject(memoryDC, previousBitmap);
    }
    DeleteSection();
    if (memoryDC != nullptr)
    {
        DeleteDC(memoryDC);
    }
    if (renderingContext != nullptr)
    {
        wglDeleteContext(renderingContext);
    }
    renderingContext = nullptr;
    memoryDC = CreateCompatibleDC(nullptr);
}

int GLMemoryDIB::Create(const ProjectionData& newProjection, int bits)
{
    if (memoryDC == nullptr)
    {
        return 0;
    }
    if (dibSection != nullptr)
    {
        ReplaceDeviceContext();
    }
    projection = newProjection;
    colorBits = bits;
    if (!IsKnownBitCount(GetBitCount()) || !SelectNewSection())
    {
        return 0;
    }
    RequestPixelFormat(PFD_DRAW_TO_BITMAP | PFD_SUPPORT_GDI | PFD_SUPPORT_OPENGL);
    if (pixelFormatIndex == 0 && colorBits == 8)
    {
        pixelFormatIndex = fallbackFormat;
    }
    SetPixelFormat(memoryDC, pixelFormatIndex, &requestedPixelFormat);
    DescribePixelFormat(memoryDC, pixelFormatIndex, sizeof describedPixelFormat,
                        &describedPixelFormat);
    if (!CreateContext())
    {
        return 0;
    }
    LoadProjection();
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_CULL_FACE);
    glCullFace(GL_BACK);
    return 1;
}

int GLMemoryDIB::Resize(int width, int height)
{
    if (renderingContext == nullptr || memoryDC == nullptr)
    {
        return 0;
    }
    wglMakeCurrent(nullptr, nullptr);
    ReplaceDeviceContext();
    projection.ResizeAndMaintainView(width, height);
    if (memoryDC == nullptr || !SelectNewSection())
    {
        return 0;
    }
    RequestPixelFormat(PFD_DRAW_TO_BITMAP | PFD_SUPPORT_OPENGL);
    SetPixelFormat(memoryDC, pixelFormatIndex, &requestedPixelFormat);
    if (!CreateContext())
    {
        return 0;
    }
    LoadProjection();
    glEnable(GL_DEPTH_TEST);
    return 1;
}

int GLMemoryDIB::CopyBand(HDC target, int x, int y, double row, double column)
{
    const int width = WholePixels(GetDIBWidth());
    const int height = WholePixels(GetDIBHeight());
    if (dibBits == nullptr)
    {
        return 0;
    }
    return StretchDIBits(target, WholePixels(GetDIBWidth() * column + x),
                         WholePixels(GetDIBHeight() * row + y), width, height, 0, 0, width, height,
                         dibBits, dibInfo, DIB_RGB_COLORS, SRCCOPY) == height;
}

int GLMemoryDIB::DrawInOneBitmap(
    const std::function<void(int x, int y, int width, int height)>& drawBand)
{
    const int bandWidth = WholePixels(GetDIBWidth());
    const int bandHeight = WholePixels(GetDIBHeight());
    if (renderingContext == nullptr || bandWidth < 1 || bandHeight < 1)
    {
        return 0;
    }
    const HBITMAP bandSection = dibSection;
    const void* const bandBits = dibBits;
    const std::vector<DWORD> bandInfo = infoStorage_;
    const HDC wholeDC = CreateCompatibleDC(nullptr);
    projection.SetViewOffset(0, 0);
    projection.SetViewSize(projection.GetWidth(), projection.GetHeight());
    bandingRows = bandingColumns = 1;
    dibSection = CreateDIBRectangleSection();
    const HGDIOBJ previousOfWhole = SelectObject(wholeDC, dibSection);

    const int width = dibInfo->bmiHeader.biWidth;
    const int height = dibInfo->bmiHeader.biHeight;
    const int columnStep = bandWidth < width ? bandWidth & ~3 : width;
    const int rowStep = bandHeight < height ? bandHeight & ~3 : height;
    for (int y = 0; y < height && previousOfWhole != nullptr; y += rowStep)
    {
        for (int x = 0; x < width; x += columnStep)
        {
            const int columns = std::min(columnStep, width - x);
            const int rows = std::min(rowStep, height - y);
            drawBand(x, y, columns, rows);
            StretchDIBits(wholeDC, x, height - y - rows, columns, rows, 0, bandHeight - rows,
                          columns, rows, bandBits,
                          reinterpret_cast<const BITMAPINFO*>(bandInfo.data()), DIB_RGB_COLORS,
                          SRCCOPY);
        }
    }
    Release();
    DeleteObject(bandSection);
    memoryDC = wholeDC;
    previousBitmap = previousOfWhole;
    return previousOfWhole != nullptr;
}

int GLMemoryDIB::Release()
{
    if (renderingContext == nullptr || memoryDC == nullptr)
    {
        return 0;
    }
    wglMakeCurrent(nullptr, nullptr);
    wglDeleteContext(renderingContext);
    renderingContext = nullptr;
    SelectObject(memoryDC, previousBitmap);
    previousBitmap = nullptr;
    DeleteDC(memoryDC);
    memoryDC = nullptr;
    return 1;
}

unsigned long GLMemoryDIB::LookupBackgroundColor() const
{
    if (dibBits == nullptr || dibInfo == nullptr || dibInfo->bmiHeader.biBitCount != 8)
    {
        return 0;
    }
    GdiFlush();
    BYTE index;
    std::memcpy(&index, dibBits, sizeof index);
    RGBQUAD entry;
    std::memcpy(&entry, infoStorage_.data() + sizeof(BITMAPINFOHEADER) / sizeof(DWORD) + index,
                sizeof entry);
    return static_cast<unsigned long>(entry.rgbBlue) << 16 |
           static_cast<unsigned long>(entry.rgbGreen) << 8 | entry.rgbRed;
}

int GLMemoryDIB::FindNearestColor(ColorVector* color) const
{
    return FindNearestPaletteColor(dibInfo, color);
}
