// SPDX-License-Identifier: MIT
#include "apps/cli/PosterTarget.h"

#include "apps/cli/BmpFile.h"
#include "apps/cli/Errors.h"
#include "apps/cli/PictureFormat.h"
#include "apps/cli/PngFile.h"

#include <algorithm>
#include <string>
#include <vector>

namespace
{

constexpr int pngBits = 24;

/// A picture whose rows lie in memory until they are drawn, and are then written.
class BufferedTarget : public PosterTarget
{
public:
    Strip& BeginRows(int top, int height) final
    {
        top_ = top;
        if (height != strip_.Height())
        {
            MakeStrip(height);
        }
        return strip_;
    }

protected:
    /// \param info with its colours, if it has any.
    void DescribeRows(const BITMAPINFO& info)
    {
        const std::size_t colors = info.bmiHeader.biBitCount <= 8 ? 256 : 0;
        const BYTE* const bytes = reinterpret_cast<const BYTE*>(&info);
        info_.assign(bytes, bytes + sizeof info.bmiHeader + colors * sizeof(RGBQUAD));
        info_.resize(std::max(info_.size(), sizeof(BITMAPINFO)));
    }

    int Top() const { return top_; }
    const Strip& Rows() const { return strip_; }

private:
    void MakeStrip(int height)
    {
        BITMAPINFO& info = *reinterpret_cast<BITMAPINFO*>(info_.data());
        info.bmiHeader.biHeight = height;
        info.bmiHeader.biSizeImage = 0;
        const int width = info.bmiHeader.biWidth;
        void* bits = nullptr;
        const HBITMAP bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
        if (bitmap == nullptr)
        {
            throw Failure("a row of bands of " + std::to_string(width) + " x " +
                          std::to_string(height) + " pixels: out of memory");
        }
        strip_.Take(bitmap, bits, width, height, info.bmiHeader.biBitCount);
    }

    std::vector<BYTE> info_;
    Strip strip_;
    int top_ = 0;
};

class BmpTarget final : public BufferedTarget
{
public:
    explicit BmpTarget(const PosterSettings& settings)
        : file_(settings.output, settings.width, settings.height, settings.bits,
                settings.dotsPerInch)
    {}

    void Open(const BITMAPINFO& bands) override
    {
        file_.Open(bands.bmiColors);
        DescribeRows(file_.Info());
    }
    void EndRows(const std::function<bool()>& goOn) override
    {
        if (goOn())
        {
            file_.WriteRows(Top(), Rows().Height(), Rows().Row(Rows().Height() - 1));
        }
    }
    void Finish() override { file_.Commit(); }

private:
    BmpFile file_;
};

class PngTarget final : public BufferedTarget
{
public:
    explicit PngTarget(const PosterSettings& settings)
        : file_(settings.output, settings.width, settings.height, settings.dotsPerInch)
    {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = settings.width;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = pngBits;
        DescribeRows(info);
    }

    void Open(const BITMAPINFO&) override { file_.Open(); }
    void EndRows(const std::function<bool()>& goOn) override
    {
        for (int y = 0; y < Rows().Height() && goOn(); ++y)
        {
            file_.WriteRow(Rows().Row(y));
        }
    }
    void Finish() override { file_.Commit(); }

private:
    PngFile file_;
};

}  // namespace

Strip::Strip() : dc_(CreateCompatibleDC(nullptr)) {}

Strip::~Strip()
{
    Take(nullptr, nullptr, 0, 0, 0);
    DeleteDC(dc_);
}

void Strip::Take(HBITMAP bitmap, void* bits, int width, int height, int bitCount)
{
    if (bitmap_ != nullptr)
    {
        SelectObject(dc_, previous_);
        DeleteObject(bitmap_);
    }
    bitmap_ = bitmap;
    previous_ = bitmap != nullptr ? SelectObject(dc_, bitmap) : nullptr;
    bits_ = static_cast<BYTE*>(bits);
    width_ = width;
    height_ = height;
    rowBytes_ =
        (static_cast<std::size_t>(width) * static_cast<std::size_t>(bitCount) + 31) / 32 * 4;
}

void CheckTarget(const PosterSettings& settings)
{
    if (FormatOf(settings.output) == PictureFormat::Bmp)
    {
        BmpFile::Check(settings.width, settings.height, settings.bits);
    }
    else if (settings.bits != pngBits)
    {
        throw UsageError("--bits: a PNG has 24 bits per pixel here; write a BMP");
    }
}

std::unique_ptr<PosterTarget> MakeTarget(const PosterSettings& settings)
{
    if (FormatOf(settings.output) == PictureFormat::Bmp)
    {
        return std::make_unique<BmpTarget>(settings);
    }
    return std::make_unique<PngTarget>(settings);
}
