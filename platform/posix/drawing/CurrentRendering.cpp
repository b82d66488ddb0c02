// SPDX-License-Identifier: MIT
#include "platform/posix/drawing/CurrentRendering.h"

#include "platform/Rendering.h"
#include "platform/posix/drawing/RenderedPixels.h"
#include "platform/posix/drawing/RenderingContext.h"

#include <functional>

namespace posix
{

void FlushRendering()
{
    if (CurrentContext* const current = CurrentOfThread())
    {
        current->Flush();
    }
}

void FlushRenderingOf(const void* bits)
{
    const CurrentContext* const current = CurrentOfThread();
    if (current == nullptr || current->context == nullptr)
    {
        return;
    }
    const BYTE* const begin = current->bitmap->bits;
    const BYTE* const end = begin + current->bitmap->Size();
    if (!std::less<>()(bits, static_cast<const void*>(begin)) &&
        std::less<>()(bits, static_cast<const void*>(end)))
    {
        current->Flush();
    }
}

std::optional<SurfaceSize> RenderedSurface(HDC dc, const Bitmap* bitmap)
{
    const CurrentContext* const current = CurrentOfThread();
    if (current == nullptr)
    {
        return std::nullopt;
    }
    if (current->isAdopted && current->adopted->dc == dc)
    {
        return current->adopted->size;
    }
    if (current->context != nullptr && current->bitmap.get() == bitmap)
    {
        return SurfaceSize{bitmap->width, bitmap->height};
    }
    return std::nullopt;
}

void DrawRendered(int x, int y, int width, int height, const BYTE* bgra)
{
    const CurrentContext* const current = CurrentOfThread();
    if (current == nullptr)
    {
        return;
    }
    if (current->isAdopted)
    {
        DrawPixels(x, y, width, height, bgra, currentBuffer, ContextProfile::FixedFunctions);
    }
    else if (current->context != nullptr)
    {
        const RenderingContext& context = *current->context;
        current->CallInContext(
            [&] { DrawPixels(x, y, width, height, bgra, context.buffer, context.profile); });
    }
}

void EndRenderingInto(HDC dc)
{
    CurrentContext* const current = CurrentOfThread();
    if (current != nullptr && current->context != nullptr && current->dc == dc)
    {
        current->Release();
    }
}

void FollowSelection(HDC dc)
{
    CurrentContext* const current = CurrentOfThread();
    if (current != nullptr && current->context != nullptr && current->dc == dc &&
        !wglMakeCurrent(dc, current->handle))
    {
        current->Release();
    }
}

}  // namespace posix
