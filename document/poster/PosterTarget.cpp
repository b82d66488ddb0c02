// SPDX-License-Identifier: MIT
#include "document/poster/PosterTarget.h"

#include "document/BmpFile.h"
#include "document/PictureFormat.h"
#include "document/poster/PosterStrips.h"
#include "orvane/Error.h"
#include "pictures/ColorProfile.h"
#include "pictures/PictureWriter.h"

#include <utility>

namespace orvane
{

namespace
{

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

/// A picture of any other format than BMP.
class RowTarget final : public PosterTarget
{
public:
    explicit RowTarget(const PosterSettings& settings)
        : place_(settings.output),
          format_(FormatOf(settings.output)),
          drawn_(settings.Rows()),
          file_(FileSettings(settings)),
          output_(settings.output)
    {}

    void Open(const BITMAPINFO&) override
    {
        writer_ = MakePictureWriter(format_, file_, output_, place_);
        if (!file_.profile.empty())
        {
            writer_ = std::make_unique<ConvertingWriter>(std::move(writer_), file_, drawn_, place_);
        }
    }
    std::uint64_t OffsetOf(int, int) const override { return 0; }
    void WriteRows(int, const Strip& rows, const std::function<bool()>& goOn) override
    {
        for (int y = 0; y < rows.Height() && goOn(); ++y)
        {
            writer_->WriteRows(rows.Row(y), 0, 1);
        }
    }
    void Finish() override
    {
        writer_->Finish();
        output_.Finish();
    }
    OutputFile& Output() override { return output_; }

    static PictureFileSettings FileSettings(const PosterSettings& settings)
    {
        const PictureOptions& options = settings.options;
        PictureFileSettings file;
        file.width = settings.Width();
        file.height = settings.Height();
        file.rows = settings.Rows();
        file.dotsPerInch = options.dotsPerInch;
        file.quality = options.quality;
        file.isLossless = options.quality == 100;
        if (!options.profile.empty())
        {
            file.profile = ReadProfile(options.profile);
            const PixelKind kind = KindOfProfile(file.profile, options.profile);
            if (kind != PixelKind::Rgb && options.transparent)
            {
                throw Error(options.profile, "a colour profile without red, green and blue",
                            "one of an RGB device, for a transparent picture");
            }
            file.rows.kind = kind != PixelKind::Rgb ? kind : file.rows.kind;
        }
        return file;
    }

private:
    std::string place_;
    PictureFormat format_;
    RowFormat drawn_;
    PictureFileSettings file_;
    OutputFile output_;
    std::unique_ptr<PictureWriter> writer_;
};

void CheckBmp(const PosterSettings& settings)
{
    if (settings.options.transparent)
    {
        throw OptionError("transparent", "a BMP has a background; write a PNG, a WebP or a TIFF");
    }
    if (!settings.options.profile.empty())
    {
        throw OptionError("profile", "a BMP has no colour profile; write another format");
    }
    BmpFile::CheckSize(settings.Width(), settings.Height(), settings.options.bits);
}

}  // namespace

void CheckTarget(const PosterSettings& settings)
{
    if (settings.IsBmp())
    {
        CheckBmp(settings);
        return;
    }
    if (settings.options.bits == 32)
    {
        throw OptionError("bits", "8 or 16 bits a channel, or a BMP", "32");
    }
    CheckPictureFile(FormatOf(settings.output), RowTarget::FileSettings(settings), settings.output);
}

std::unique_ptr<PosterTarget> MakeTarget(const PosterSettings& settings)
{
    if (settings.IsBmp())
    {
        return std::make_unique<BmpTarget>(settings);
    }
    return std::make_unique<RowTarget>(settings);
}

}  // namespace orvane
