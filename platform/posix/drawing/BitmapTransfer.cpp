// SPDX-License-Identifier: MIT
#include "platform/Bitmaps.h"
#include "platform/Errors.h"
#include "platform/posix/drawing/BitmapPixels.h"
#include "platform/posix/drawing/CurrentRendering.h"
#include "platform/posix/drawing/PackedPixels.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace
{

using posix::Bitmap;
using posix::Resolve;

/// The picture that a transfer copies from. Its pixels are the caller's, borrowed.
class Picture
{
public:
    /// \param rows of the pixels at \p bits; at most those of the description.
    Picture(std::shared_ptr<Bitmap> description, const BITMAPINFO& info, const void* bits, int rows)
        : bitmap_(std::move(description))
    {
        bitmap_->height = rows;
        const DWORD compression = info.bmiHeader.biCompression;
        if (compression == BI_RLE8 || compression == BI_RLE4)
        {
            const DWORD codeBytes = info.bmiHeader.biSizeImage;  // a copy: it may not be aligned
            packed_.emplace(bitmap_->width, rows, static_cast<const BYTE*>(bits), codeBytes,
                            compression == BI_RLE4);
            return;
        }
        bitmap_->bits = static_cast<BYTE*>(const_cast<void*>(bits));
    }

    /// The picture without its pixels. Run-length coded pictures have 8 bits per pixel here.
    const Bitmap& Kind() const { return *bitmap_; }
    /// Whether rows are quick to read only from the lowest row upward.
    bool IsPacked() const { return packed_.has_value(); }
    /// The pixels of a row, valid until the next call.
    /// \param y from the top.
    const BYTE* Row(int y)
    {
        const int fromBottom = bitmap_->height - 1 - y;
        return packed_ ? packed_->Row(fromBottom) : bitmap_->Row(fromBottom);
    }

private:
    std::shared_ptr<Bitmap> bitmap_;
    std::optional<posix::PackedRows> packed_;
};

/// The description of a picture, without pixels. Null, with the error set, when it is not valid.
std::shared_ptr<Bitmap> DescriptionOf(const BITMAPINFO* info, const void* bits, UINT usage)
{
    std::shared_ptr<Bitmap> description =
        info == nullptr || bits == nullptr || usage != DIB_RGB_COLORS
            ? nullptr
            : posix::DescribeBitmap(*info);
    if (description == nullptr)
    {
        SetLastError(ERROR_INVALID_PARAMETER);
    }
    return description;
}

/// One direction, x or y, of a transfer: the destination pixels that are drawn and the source pixel
/// of each.
struct Axis
{
    /// A range of pixels. A negative length reaches to the left or upward from the start.
    struct Extent
    {
        std::int64_t start;
        std::int64_t length;

        bool IsMirrored() const { return length < 0; }
        std::int64_t Low() const { return std::min(start, start + length); }
        std::int64_t Length() const { return std::abs(length); }
    };

    /// \param toLimit, fromLimit the number of pixels of the destination and of the source.
    Axis(Extent to, int toLimit, Extent from, int fromLimit)
    {
        const std::int64_t begin = std::max<std::int64_t>(to.Low(), 0);
        const std::int64_t end = std::min<std::int64_t>(to.Low() + to.Length(), toLimit);
        const bool isMirrored = to.IsMirrored() != from.IsMirrored();
        for (std::int64_t at = begin; at < end; ++at)
        {
            const std::int64_t i = at - to.Low();
            const std::int64_t counted = isMirrored ? to.Length() - 1 - i : i;
            const std::int64_t source =
                from.Low() + (2 * counted + 1) * from.Length() / (2 * to.Length());
            if (from.length != 0 && source >= 0 && source < fromLimit)
            {
                first = sources.empty() ? static_cast<int>(at) : first;
                sources.push_back(static_cast<int>(source));
            }
        }
    }

    int Count() const { return static_cast<int>(sources.size()); }
    /// Whether successive destination pixels come from successive source pixels.
    bool IsUnscaled() const
    {
        return sources.back() - sources.front() == Count() - 1 &&
               std::is_sorted(sources.begin(), sources.end());
    }

    int first = 0;
    std::vector<int> sources;  // the source of destination pixel first + i
};

Axis::Extent Identity(int length)
{
    return {0, length};
}

/// Whether pixels can be copied from one bitmap to the other without conversion. False for pixels
/// smaller than a byte.
bool HasSamePixels(const Bitmap& a, const Bitmap& b)
{
    const auto isSameColor = [](const RGBQUAD& left, const RGBQUAD& right) {
        return left.rgbRed == right.rgbRed && left.rgbGreen == right.rgbGreen &&
               left.rgbBlue == right.rgbBlue;
    };
    return a.bitCount >= 8 && a.bitCount == b.bitCount && a.masks == b.masks &&
           std::equal(a.colors.begin(), a.colors.end(), b.colors.begin(), b.colors.end(),
                      isSameColor);
}

/// Delivers the source pixels of a transfer row by row, as bytes blue, green, red, alpha. Rows
/// count from the top.
class Rows
{
public:
    Rows(Picture& picture, const Axis& columns)
        : picture_(picture), columns_(columns), isUnscaled_(columns.IsUnscaled())
    {
        row_.resize(4 * columns.sources.size());
    }

    const BYTE* Row(int y)
    {
        if (y == y_)
        {
            return row_.data();
        }
        const BYTE* const row = picture_.Row(y);
        const int first = columns_.sources.front();
        if (isUnscaled_ && posix::IsPlain32(picture_.Kind()))
        {
            return row + 4 * static_cast<std::size_t>(first);
        }
        y_ = y;
        if (isUnscaled_)
        {
            posix::ExpandPixels(picture_.Kind(), row, first, columns_.Count(), row_.data());
        }
        else
        {
            Scale(row);
        }
        return row_.data();
    }

private:
    /// Takes the source pixel of each column. Few pixels of the row are expanded at a time, so that
    /// a row of any length takes little memory.
    void Scale(const BYTE* row)
    {
        constexpr int spanPixels = 256;
        BYTE span[4 * spanPixels];
        int begin = 0;
        int end = 0;
        BYTE* out = row_.data();
        for (const int source : columns_.sources)
        {
            if (source < begin || source >= end)
            {
                begin = source / spanPixels * spanPixels;
                end = std::min(begin + spanPixels, picture_.Kind().width);
                posix::ExpandPixels(picture_.Kind(), row, begin, end - begin, span);
            }
            std::memcpy(out, span + 4 * static_cast<std::size_t>(source - begin), 4);
            out += 4;
        }
    }

    Picture& picture_;
    const Axis& columns_;
    const bool isUnscaled_;
    int y_ = -1;
    std::vector<BYTE> row_;
};

/// The order in which the rows of a transfer are copied: the numbers from 0 on, or the same
/// backwards when run-length coded rows then come from the lowest up.
class RowOrder
{
public:
    RowOrder(const Picture& picture, const Axis& rows)
        : count_(rows.Count()),
          isBackward_(picture.IsPacked() && rows.sources.front() < rows.sources.back())
    {}

    int At(int i) const { return isBackward_ ? count_ - 1 - i : i; }

private:
    int count_;
    bool isBackward_;
};

/// Transfers pixels into the bits of a bitmap. Rows count from the top.
void Transfer(Picture& picture, Bitmap& target, const Axis& columns, const Axis& rows)
{
    const RowOrder order(picture, rows);
    if (HasSamePixels(picture.Kind(), target) && columns.IsUnscaled())
    {
        const std::size_t pixelBytes = static_cast<std::size_t>(target.bitCount) / 8;
        for (int n = 0; n < rows.Count(); ++n)
        {
            const int i = order.At(n);
            std::memmove(target.Row(target.height - 1 - rows.first - i) +
                             pixelBytes * static_cast<std::size_t>(columns.first),
                         picture.Row(rows.sources[i]) +
                             pixelBytes * static_cast<std::size_t>(columns.sources.front()),
                         pixelBytes * columns.sources.size());
        }
        return;
    }
    Rows source(picture, columns);
    posix::PixelWriter writer(target, posix::Reduction::Round, posix::Colors::Own);
    for (int n = 0; n < rows.Count(); ++n)
    {
        const int i = order.At(n);
        writer.Write(columns.first, target.height - 1 - rows.first - i, columns.Count(),
                     source.Row(rows.sources[i]));
    }
}

/// Transfers pixels through the current OpenGL context.
/// \param height of the surface that the context draws on, pixels
void TransferRendered(Picture& picture, int height, const Axis& columns, const Axis& rows)
{
    Rows source(picture, columns);
    const RowOrder order(picture, rows);
    const std::size_t rowBytes = 4 * columns.sources.size();
    std::vector<BYTE> pixels(rowBytes * rows.sources.size());
    for (int n = 0; n < rows.Count(); ++n)
    {
        const int i = order.At(n);
        BYTE* const row = pixels.data() + rowBytes * static_cast<std::size_t>(rows.Count() - 1 - i);
        std::memcpy(row, source.Row(rows.sources[i]), rowBytes);
    }
    // Alpha is set to 255, so that pictures are opaque; the fourth byte of 32-bit pictures has no
    // meaning.
    for (std::size_t i = 3; i < pixels.size(); i += 4)
    {
        pixels[i] = 255;
    }
    posix::DrawRendered(columns.first, height - rows.first - rows.Count(), columns.Count(),
                        rows.Count(), pixels.data());
}

/// The destination of a transfer: the bitmap of a device context or, if an OpenGL context draws
/// there, that context's surface.
struct Target
{
    Target(HDC dc, std::shared_ptr<Bitmap> targetBitmap)
        : bitmap(std::move(targetBitmap)), surface(posix::RenderedSurface(dc, bitmap.get()))
    {}

    int Width() const { return surface ? surface->width : bitmap->width; }
    int Height() const { return surface ? surface->height : bitmap->height; }

    void Take(Picture& picture, const Axis& columns, const Axis& rows)
    {
        if (columns.sources.empty() || rows.sources.empty())
        {
            return;
        }
        if (surface)
        {
            TransferRendered(picture, surface->height, columns, rows);
        }
        else
        {
            Transfer(picture, *bitmap, columns, rows);
        }
    }

    const std::shared_ptr<Bitmap> bitmap;
    const std::optional<posix::SurfaceSize> surface;
};

}  // namespace

int SetDIBits(HDC, HBITMAP handle, UINT first, UINT count, const void* bits, const BITMAPINFO* info,
              UINT usage)
{
    const std::shared_ptr<Bitmap> bitmap = Resolve<Bitmap>(handle);
    if (bitmap == nullptr)
    {
        SetLastError(ERROR_INVALID_HANDLE);
        return 0;
    }
    posix::FlushRenderingOf(bits);
    const std::shared_ptr<Bitmap> description = DescriptionOf(info, bits, usage);
    if (description == nullptr)
    {
        return 0;
    }
    const int rows =
        static_cast<int>(std::min<UINT>(count, static_cast<UINT>(description->height)));
    if (first >= static_cast<UINT>(bitmap->height) || rows == 0)
    {
        return 0;
    }
    // \p bits holds only these rows and begins with the lowest or the highest of them.
    Picture picture(description, *info, bits, rows);
    const int width = picture.Kind().width;
    Target target(nullptr, bitmap);
    const std::int64_t top = std::int64_t{bitmap->height} - first - rows;
    target.Take(picture, Axis(Identity(width), target.Width(), Identity(width), width),
                Axis({top, rows}, target.Height(), Identity(rows), rows));
    return static_cast<int>(rows + std::min<std::int64_t>(top, 0));
}

int StretchDIBits(HDC dc, int x, int y, int width, int height, int sourceX, int sourceY,
                  int sourceWidth, int sourceHeight, const void* bits, const BITMAPINFO* info,
                  UINT usage, DWORD operation)
{
    const auto context = Resolve<posix::DeviceContext>(dc);
    const auto bitmap = context == nullptr ? nullptr : Resolve<Bitmap>(context->bitmap);
    if (bitmap == nullptr || operation != SRCCOPY)
    {
        SetLastError(bitmap == nullptr ? ERROR_INVALID_HANDLE : ERROR_INVALID_PARAMETER);
        return 0;
    }
    posix::FlushRenderingOf(bits);
    const std::shared_ptr<Bitmap> description = DescriptionOf(info, bits, usage);
    if (description == nullptr)
    {
        return 0;
    }
    Picture picture(description, *info, bits, description->height);
    Target target(dc, bitmap);
    target.Take(picture,
                Axis({x, width}, target.Width(), {sourceX, sourceWidth}, picture.Kind().width),
                Axis({y, height}, target.Height(), {sourceY, sourceHeight}, picture.Kind().height));
    // The absolute value of the lowest int does not fit an int.
    return static_cast<int>(std::min<std::int64_t>(std::abs(std::int64_t{sourceHeight}),
                                                   std::numeric_limits<int>::max()));
}
