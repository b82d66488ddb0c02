// SPDX-License-Identifier: MIT
#include "platform/posix/drawing/PixelFormats.h"

#include "platform/Errors.h"
#include "platform/Rendering.h"
#include "platform/posix/drawing/GdiObjects.h"

#include <cstring>

namespace
{

using posix::DeviceContext;
using posix::ResolveOrRefuse;

/// The colours of a pixel format. Each depth has four formats with successive indices. The order
/// puts the formats of 8 bits at index 17, because GLMemoryDIB uses that index when
/// ChoosePixelFormat finds no format.
struct Depth
{
    BYTE colorBits;
    BYTE bits[3];  // red, green, blue
    BYTE shifts[3];
};
constexpr Depth depths[] = {
    {32, {8, 8, 8}, {16, 8, 0}}, {24, {8, 8, 8}, {16, 8, 0}}, {16, {5, 5, 5}, {10, 5, 0}},
    {4, {1, 1, 1}, {0, 1, 2}},   {8, {3, 3, 2}, {0, 3, 6}},
};
constexpr int variants = 4;  // with or without alpha, with or without a stencil buffer
constexpr int formatCount = variants * static_cast<int>(std::size(depths));

constexpr DWORD offered = PFD_DRAW_TO_BITMAP | PFD_SUPPORT_GDI | PFD_SUPPORT_OPENGL;
constexpr DWORD refused = PFD_DRAW_TO_WINDOW | PFD_DOUBLEBUFFER | PFD_STEREO;

PIXELFORMATDESCRIPTOR Description(int format)
{
    const Depth& depth = depths[(format - 1) / variants];
    const int variant = (format - 1) % variants;
    PIXELFORMATDESCRIPTOR description{};
    description.nSize = sizeof description;
    description.nVersion = 1;
    description.dwFlags = offered;
    description.iPixelType = PFD_TYPE_RGBA;
    description.cColorBits = depth.colorBits;
    description.cRedBits = depth.bits[0];
    description.cRedShift = depth.shifts[0];
    description.cGreenBits = depth.bits[1];
    description.cGreenShift = depth.shifts[1];
    description.cBlueBits = depth.bits[2];
    description.cBlueShift = depth.shifts[2];
    description.cAlphaBits = (variant & 1) != 0 ? 8 : 0;
    description.cDepthBits = 24;
    description.cStencilBits = posix::HasStencil(format) ? 8 : 0;
    description.iLayerType = PFD_MAIN_PLANE;
    return description;
}

bool IsFormat(int format)
{
    return format >= 1 && format <= formatCount;
}

}  // namespace

bool posix::HasStencil(int format)
{
    return ((format - 1) % variants & 2) != 0;
}

int ChoosePixelFormat(HDC dc, const PIXELFORMATDESCRIPTOR* wanted)
{
    if (ResolveOrRefuse<DeviceContext>(dc) == nullptr)
    {
        return 0;
    }
    if (wanted == nullptr || (wanted->dwFlags & refused) != 0 ||
        wanted->iPixelType != PFD_TYPE_RGBA || wanted->iLayerType != PFD_MAIN_PLANE)
    {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    // Take the smallest depth that has enough bits. If no depth has enough, take the largest.
    int best = 0;
    for (int i = 0; i < static_cast<int>(std::size(depths)); ++i)
    {
        const int bits = depths[i].colorBits;
        if (bits >= wanted->cColorBits && bits < depths[best].colorBits)
        {
            best = i;
        }
    }
    return best * variants + 1 + (wanted->cAlphaBits != 0 ? 1 : 0) +
           (wanted->cStencilBits != 0 ? 2 : 0);
}

int DescribePixelFormat(HDC dc, int format, UINT size, PIXELFORMATDESCRIPTOR* description)
{
    if (ResolveOrRefuse<DeviceContext>(dc) == nullptr)
    {
        return 0;
    }
    if (description == nullptr)
    {
        return formatCount;
    }
    if (!IsFormat(format) || size < sizeof *description)
    {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    *description = Description(format);
    return formatCount;
}

int GetPixelFormat(HDC dc)
{
    const std::shared_ptr<DeviceContext> context = ResolveOrRefuse<DeviceContext>(dc);
    if (context == nullptr)
    {
        return 0;
    }
    if (context->pixelFormat == 0)
    {
        SetLastError(ERROR_INVALID_PIXEL_FORMAT);
    }
    return context->pixelFormat;
}

BOOL SetPixelFormat(HDC dc, int format, const PIXELFORMATDESCRIPTOR*)
{
    const std::shared_ptr<DeviceContext> context = ResolveOrRefuse<DeviceContext>(dc);
    if (context == nullptr)
    {
        return FALSE;
    }
    if (!IsFormat(format) || (context->pixelFormat != 0 && context->pixelFormat != format))
    {
        SetLastError(ERROR_INVALID_PIXEL_FORMAT);
        return FALSE;
    }
    context->pixelFormat = format;
    return TRUE;
}
