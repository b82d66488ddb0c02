// SPDX-License-Identifier: MIT
#include "document/poster/Poster.h"

#include "document/BmpFile.h"
#include "document/OptionRange.h"
#include "document/OutputFile.h"
#include "document/PictureFormat.h"
#include "document/SceneFraming.h"
#include "document/poster/Deadline.h"
#include "document/poster/PosterBands.h"
#include "document/poster/PosterStrips.h"
#include "document/poster/PosterTarget.h"
#include "document/poster/ShownTextures.h"
#include "orvane/Error.h"
#include "platform/Limits.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"
#include "studio/StudioDrawer.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

namespace orvane
{

namespace
{

void CheckCosts(const PosterSettings& settings)
{
    const PictureOptions& options = settings.options;
    constexpr double most = std::numeric_limits<double>::max();
    CheckRange("maxPixels", static_cast<double>(options.maxPixels.value_or(1)), 1, most);
    CheckRange("maxSeconds", options.maxSeconds.value_or(1), limits::minSeconds, most);
    const auto pixels = static_cast<std::uint64_t>(settings.Width()) *
                        static_cast<std::uint64_t>(settings.Height());
    if (options.maxPixels && pixels > *options.maxPixels)
    {
        throw LimitExceeded(settings.output, "maxPixels",
                            std::to_string(settings.Width()) + " x " +
                                std::to_string(settings.Height()) + " are " +
                                std::to_string(pixels) + " pixels",
                            std::to_string(*options.maxPixels));
    }
}

}  // namespace

PosterSettings::PosterSettings(std::string outputPath, const PictureOptions& pictureOptions,
                               const Size& pictureSize)
    : output(std::move(outputPath)), size(pictureSize), options(pictureOptions)
{}

bool PosterSettings::IsBmp() const
{
    return FormatOf(output) == PictureFormat::Bmp;
}

RowFormat PosterSettings::Rows() const
{
    return {options.transparent ? PixelKind::Rgba : PixelKind::Rgb, options.bits == 16 ? 16 : 8};
}

int PosterSettings::DrawnBits() const
{
    constexpr int trueColor = 24;
    return IsBmp() ? options.bits : trueColor;
}

std::size_t PosterSettings::RowBytes() const
{
    return IsBmp() ? BmpFile::RowBytes(Width(), options.bits) : Rows().RowBytes(Width());
}

void CheckPoster(const PosterSettings& settings)
{
    const PictureOptions& options = settings.options;
    CheckSize(settings.size);
    if (options.bits != 8 && options.bits != 16 && options.bits != 24 && options.bits != 32)
    {
        throw OptionError("bits", "8, 16, 24 or 32", std::to_string(options.bits));
    }
    CheckRange("dotsPerInch", options.dotsPerInch, 0, 100000);
    CheckRange("samples", options.samples, 0, 4);
    if (settings.IsDithered() && options.samples > 1)
    {
        throw OptionError("samples", "0 or 1 for a BMP of 8 or 16 bits",
                          std::to_string(options.samples));
    }
    if (options.studio)
    {
        CheckStudioOptions(*options.studio);
    }
    CheckCosts(settings);
    CheckTarget(settings);
}

void DrawUncommittedPoster(const ViewObject& view, const PosterSettings& settings,
                           PosterTarget& target)
{
    const Deadline deadline(settings.options);
    PosterSettings stoppable = settings;
    stoppable.options.cancellation = deadline.Stop();
    const PictureOptions& options = stoppable.options;
    const auto goOn = [&options] {
        return !options.cancellation || !options.cancellation->IsCancelled();
    };
    const ShownTextures textures(view);
    PosterBands bands(view, stoppable);
    const int rowStep = bands.Layout().StepY();
    target.Open(bands.Info());
    PosterStrips strips(target, settings.RowBytes(), rowStep, goOn);
    double share = 0;  // of the picture that is drawn
    for (int row = 0; row < bands.Rows(); ++row)
    {
        const int top = row * rowStep;
        Strip& strip = strips.Begin(top, std::min(rowStep, settings.Height() - top));
        for (int column = 0; column < bands.Columns(); ++column)
        {
            const bool isComplete = bands.Draw(row, column);
            deadline.ThrowIfStopped(settings.output, share);
            if (!isComplete)
            {
                throw Error("OpenGL", "the scene could not be drawn completely");
            }
            bands.CopyTo(strip, column);
            share = (row + (column + 1.0) / bands.Columns()) / bands.Rows();
            if (options.progress)
            {
                options.progress(share);
            }
        }
        strips.End();
    }
    strips.Finish();
    deadline.ThrowIfStopped(settings.output, share);
    textures.TellLost(options.warn);
    if (bands.HasLostBackgroundPicture())
    {
        TellLostPicture(view.GetScene()->GetTexture()->filename.Text(), options.warn);
    }
    target.Finish();
}

void DrawPoster(const ViewObject& view, const PosterSettings& settings, PosterTarget& target)
{
    DrawUncommittedPoster(view, settings, target);
    target.Output().Commit();
}

}  // namespace orvane
