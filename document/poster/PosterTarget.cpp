// SPDX-License-Identifier: MIT
#include "document/poster/PosterTarget.h"

#include "document/BmpFile.h"
#include "document/PictureFormat.h"
#include "document/PngFile.h"
#include "document/poster/PosterStrips.h"
#include "orvane/Error.h"

namespace orvane
{

namespace
{

constexpr int pngBits = 24;

class BmpTarget final : public PosterTarget
{
public:
    explicit BmpTarget(const PosterSettings& settings)
        : file_(settings.output, settings.Width(), settings.Height(), settings.options.bits,
                settings.options.dotsPerInch)
    {}

    void Open(const BITMAPINFO& bands) override { file_.Open(bands.bmiColors); }
    std::uint64_t OffsetOf(int top, int height) const override
    {
        return file_.OffsetOf(top, height);
    }
    void WriteRows(int top, const Strip& rows, const std::function<bool()>& goOn) override
    {
        if (goOn())
        {
            file_.WriteRows(top, rows.Height(), rows.Row(rows.Height() - 1));
        }
    }
    void Finish() override { file_.Finish(); }
    OutputFile& Output() override { return file_.Output(); }

private:
    BmpFile file_;
};

class PngTarget final : public PosterTarget
{
public:
    explicit PngTarget(const PosterSettings& settings)
        : file_(settings.output, settings.Width(), settings.Height(), settings.options.dotsPerInch)
    {}

    void Open(const BITMAPINFO&) override { file_.Open(); }
    std::uint64_t OffsetOf(int, int) const override { return 0; }
    void WriteRows(int, const Strip& rows, const std::function<bool()>& goOn) override
    {
        for (int y = 0; y < rows.Height() && goOn(); ++y)
        {
            file_.WriteRow(rows.Row(y));
        }
    }
    void Finish() override { file_.Finish(); }
    OutputFile& Output() override { return file_.Output(); }

private:
    PngFile file_;
};

}  // namespace

void CheckTarget(const PosterSettings& settings)
{
    if (FormatOf(settings.output) == PictureFormat::Bmp)
    {
        BmpFile::CheckSize(settings.Width(), settings.Height(), settings.options.bits);
    }
    else if (settings.options.bits != pngBits)
    {
        throw OptionError("bits", "a PNG is written with 24 bits per pixel only; write a BMP");
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

}  // namespace orvane
