// SPDX-License-Identifier: MIT
#include "apps/cli/PosterTarget.h"

#include "apps/cli/BmpFile.h"
#include "apps/cli/Errors.h"
#include "apps/cli/PictureFormat.h"
#include "apps/cli/PngFile.h"

namespace
{

constexpr int pngBits = 24;

/// The rows are the mapped file's.
class BmpTarget final : public PosterTarget
{
public:
    explicit BmpTarget(const PosterSettings& settings)
        : width_(settings.width),
          bits_(settings.bits),
          file_(settings.output, settings.width, settings.height, settings.bits,
                settings.dotsPerInch)
    {}

    void Open(const BITMAPINFO& bands) override { file_.Open(bands.bmiColors); }
    Strip& BeginRows(int top, int height) override
    {
        void* bits = nullptr;
        const HBITMAP section = file_.MakeSection(top, height, &bits);
        strip_.Take(section, bits, width_, height, bits_);
        return strip_;
    }
    void EndRows(const std::function<bool()>&) override {}
    void Finish() override
    {
        strip_.Take(nullptr, nullptr, 0, 0, bits_);
        file_.Commit();
    }

private:
    int width_;
    int bits_;
    BmpFile file_;
    Strip strip_;  // ends before its file
};

/// The rows lie in memory and are then encoded.
class PngTarget final : public PosterTarget
{
public:
    explicit PngTarget(const PosterSettings& settings)
        : width_(settings.width),
          file_(settings.output, settings.width, settings.height, settings.dotsPerInch)
    {}

    void Open(const BITMAPINFO&) override { file_.Open(); }
    Strip& BeginRows(int, int height) override
    {
        if (height != strip_.Height())
        {
            MakeStrip(height);
        }
        return strip_;
    }
    void EndRows(const std::function<bool()>& goOn) override
    {
        for (int y = 0; y < strip_.Height() && goOn(); ++y)
        {
            file_.WriteRow(strip_.Row(y));
        }
    }
    void Finish() override { file_.Commit(); }

private:
    void MakeStrip(int height)
    {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = width_;
        info.bmiHeader.biHeight = height;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = pngBits;
        void* bits = nullptr;
        const HBITMAP bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
        if (bitmap == nullptr)
        {
            throw Failure("a row of bands of " + std::to_string(width_) + " x " +
                          std::to_string(height) + " pixels: out of memory");
        }
        strip_.Take(bitmap, bits, width_, height, pngBits);
    }

    int width_;
    PngFile file_;
    Strip strip_;
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
