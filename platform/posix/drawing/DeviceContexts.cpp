// SPDX-License-Identifier: MIT
#include "platform/DeviceContexts.h"

#include "platform/Errors.h"
#include "platform/Fonts.h"
#include "platform/posix/drawing/BitmapObject.h"
#include "platform/posix/drawing/CurrentRendering.h"
#include "platform/posix/drawing/GdiObjects.h"

#include <mutex>

namespace
{

using posix::DeviceContext;
using posix::GdiKind;
using posix::GdiObject;
using posix::Resolve;

/// Guards the counts of selections, because several threads may select the same font at a time.
std::mutex selectionLock;

HFONT StockFont()
{
    static const HFONT stock = [] {
        const LOGFONTA plain{};
        const HFONT font = CreateFontIndirectA(&plain);
        if (const std::shared_ptr<GdiObject> object = Resolve<GdiObject>(font))
        {
            object->isStock = true;
        }
        return font;
    }();
    return stock;
}

/// Counts that a device context has one object selected in place of another. Either may be null.
void MoveSelection(const void* from, const void* to)
{
    if (const std::shared_ptr<GdiObject> object = Resolve<GdiObject>(from))
    {
        --object->selections;
    }
    if (const std::shared_ptr<GdiObject> object = Resolve<GdiObject>(to))
    {
        ++object->selections;
    }
}

/// Selects a bitmap and returns the previous one, into which OpenGL's pixels are copied. From then
/// on OpenGL draws into the new bitmap.
HGDIOBJ SelectBitmap(HDC dc, DeviceContext& context, HBITMAP bitmap)
{
    const HBITMAP previous = context.bitmap;
    MoveSelection(previous, bitmap);
    context.bitmap = bitmap;
    posix::FollowSelection(dc);
    return previous;
}

}  // namespace

HDC CreateCompatibleDC(HDC)
{
    const auto context = std::make_shared<DeviceContext>();
    context->font = StockFont();
    context->bitmap = posix::StockBitmap();
    const std::lock_guard guard(selectionLock);
    MoveSelection(nullptr, context->font);
    MoveSelection(nullptr, context->bitmap);
    return static_cast<HDC>(posix::AddHandle(context));
}

BOOL DeleteDC(HDC dc)
{
    const std::shared_ptr<DeviceContext> context = Resolve<DeviceContext>(dc);
    if (context == nullptr)
    {
        SetLastError(ERROR_INVALID_HANDLE);
        return FALSE;
    }
    posix::EndRenderingInto(dc);
    const std::lock_guard guard(selectionLock);
    if (posix::RemoveHandle(dc) == nullptr)
    {
        return FALSE;
    }
    MoveSelection(context->font, nullptr);
    MoveSelection(context->bitmap, nullptr);
    return TRUE;
}

HGDIOBJ SelectObject(HDC dc, HGDIOBJ handle)
{
    const std::shared_ptr<DeviceContext> context = Resolve<DeviceContext>(dc);
    const std::lock_guard guard(selectionLock);
    const std::shared_ptr<GdiObject> object = Resolve<GdiObject>(handle);
    if (context == nullptr || object == nullptr)
    {
        SetLastError(ERROR_INVALID_HANDLE);
        return nullptr;
    }
    if (object->kind == GdiKind::Font)
    {
        const HFONT previous = context->font;
        context->font = static_cast<HFONT>(handle);
        MoveSelection(previous, handle);
        return previous;
    }
    if (handle == context->bitmap)
    {
        return handle;
    }
    // Only one device context at a time may have a bitmap selected.
    if (object->selections > 0 && !object->isStock)
    {
        SetLastError(ERROR_BUSY);
        return nullptr;
    }
    return SelectBitmap(dc, *context, static_cast<HBITMAP>(handle));
}

BOOL DeleteObject(HGDIOBJ handle)
{
    const std::lock_guard guard(selectionLock);
    const std::shared_ptr<GdiObject> object = Resolve<GdiObject>(handle);
    if (object == nullptr)
    {
        SetLastError(ERROR_INVALID_HANDLE);
        return FALSE;
    }
    if (object->isStock)
    {
        return TRUE;
    }
    if (object->selections > 0)
    {
        SetLastError(ERROR_BUSY);
        return FALSE;
    }
    return posix::RemoveHandle(handle) != nullptr;
}

BOOL GdiFlush()
{
    posix::FlushRendering();
    return TRUE;
}
