// SPDX-License-Identifier: MIT
#include "document/poster/Poster.h"

#include "document/BmpFile.h"
#include "document/OptionRange.h"
#include "document/SceneFraming.h"
#include "document/poster/PosterBands.h"
#include "document/poster/PosterStrips.h"
#include "document/poster/PosterTarget.h"
#include "orvane/Error.h"

#include <algorithm>
#include <utility>

namespace orvane
{

PosterSettings::PosterSettings(std::string outputPath, const PictureOptions& pictureOptions,
                               const Size& pictureSize)
    : output(std::move(outputPath)), size(pictureSize), options(pictureOptions)
{}

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
    if (options.bits < 24 && options.samples > 1)
    {
        throw OptionError("samples", "0 or 1 for a picture of 8 or 16 bits",
                          std::to_string(options.samples));
    }
    CheckTarget(settings);
}

void DrawPoster(const ViewObject& view, const PosterSettings& settings, PosterTarget& target)
{
    const PictureOptions& options = settings.options;
    const auto goOn = [&options] {
        return !options.cancellation || !options.cancellation->IsCancelled();
    };
    PosterBands bands(view, settings);
    const int rowStep = bands.Layout().StepY();
    target.Open(bands.Info());
    PosterStrips strips(target, BmpFile::RowBytes(settings.Width(), options.bits), rowStep, goOn);
    for (int row = 0; row < bands.Rows(); ++row)
    {
        const int top = row * rowStep;
        Strip& strip = strips.Begin(top, std::min(rowStep, settings.Height() - top));
        for (int column = 0; column < bands.Columns(); ++column)
        {
            const bool isComplete = bands.Draw(row, column);
            if (!goOn())
            {
                throw Cancelled(settings.output);
            }
            if (!isComplete)
            {
                throw Error("OpenGL", "the scene could not be drawn completely");
            }
            bands.CopyTo(strip, column);
            if (options.progress)
            {
                options.progress((row + (column + 1.0) / bands.Columns()) / bands.Rows());
            }
        }
        strips.End();
    }
    strips.Finish();
    if (!goOn())
    {
        throw Cancelled(settings.output);
    }
    target.Finish();
}

}  // namespace orvane
