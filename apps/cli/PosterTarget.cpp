// SPDX-License-Identifier: MIT
#include "apps/cli/PosterTarget.h"

#include "apps/cli/BmpFile.h"
#include "apps/cli/Errors.h"
#include "apps/cli/PictureFormat.h"
#include "apps/cli/PngFile.h"
#include "apps/cli/PosterStrips.h"

namespace
{

constexpr int pngBits = 24;

class BmpTarget final : public PosterTarget
{
public:
    explicit BmpTarget(const PosterSettings& settings)
        : file_(settings.output, settings.width, settings.height, settings.bits,
                settings.dotsPerInch)
    {}

    void Open(const BITMAPINFO& bands) override { file_.Open(bands.bmiColors); }
    std::uint64_t PlaceOf(int top, int height) const override { return file_.PlaceOf(top, height); }
    void WriteRows(int top, const Strip& rows, const std::function<bool()>& goOn) override
    {
        if (goOn())
        {
            file_.WriteRows(top, rows.Height(), rows.Row(rows.Height() - 1));
        }
    }
    void Finish() override { file_.Commit(); }

private:
    BmpFile file_;
};

class PngTarget final : public PosterTarget
{
public:
    explicit PngTarget(const PosterSettings& settings)
        : file_(settings.output, settings.width, settings.height, settings.dotsPerInch)
    {}

    void Open(const BITMAPINFO&) override { file_.Open(); }
    std::uint64_t PlaceOf(int, int) const override { return 0; }
    void WriteRows(int, const Strip& rows, const std::function<bool()>& goOn) override
    {
        for (int y = 0; y < rows.Height() && goOn(); ++y)
        {
            file_.WriteRow(rows.Row(y));
        }
    }
    void Finish() override { file_.Commit(); }

private:
    PngFile file_;
};

}  // namespace

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
