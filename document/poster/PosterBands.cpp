// SPDX-License-Identifier: MIT
#include "document/poster/PosterBands.h"

#include "document/BmpFile.h"
#include "document/Cancellation.h"
#include "document/DrawingModes.h"
#include "document/ScenePictures.h"
#include "document/poster/PictureState.h"
#include "document/poster/PosterStrips.h"
#include "document/poster/SampleRows.h"
#include "orvane/Error.h"
#include "platform/Errors.h"
#include "platform/OpenGL.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace orvane
{

namespace
{

// Culling (PosterParts, which finds out which nodes each band shows) costs about as much as drawing
// a few bands, so it pays only from 64 bands on.
constexpr int minBandsForParts = 64;

int ChooseSamples(const PosterSettings& settings)
{
    if (settings.IsDithered())
    {
        return 1;  // averaging samples would undo the dithering of these pictures
    }
    const double megapixels = 1e-6 * settings.Width() * settings.Height();
    return settings.options.samples != 0 ? settings.options.samples
           : megapixels <= 4             ? 4
           : megapixels <= 32            ? 2
                                         : 1;
}

void CreateBitmap(GLMemoryDIB& dib, const ProjectionData& projection, int bits)
{
    if (!dib.Create(projection, bits))
    {
        throw Error("OpenGL", "no off-screen context: " + GetLastErrorText());
    }
}

/// Makes the bitmap that bands are drawn into, and its context.
BandLayout MakeBitmap(GLMemoryDIB& dib, const ProjectionData& projection, int bits, int samples,
                      double wire)
{
    BandLayout layout{samples, 0};
    if (wire > 0)
    {
        // OpenGL does not draw a wire whose middle lies outside of the bitmap, so the margin must
        // be wider than half a wire.
        layout.margin = static_cast<int>(std::ceil(wire / 2)) + 1;
        constexpr int wideMargin = 8;
        if (layout.margin > wideMargin)
        {
            // The bytes of a bitmap are limited, so a narrower band may be higher. Such a band is
            // closer to a square and wastes a smaller share of its pixels on margins.
            dib.maximumBandWidth = 512;
        }
    }
    // A band holds whole pixels of the picture. With dithering it holds whole dither patterns,
    // which are four pixels wide and high, so that the pattern goes on without a break in the next
    // band.
    const int unit = bits < 24 ? 4 : layout.samples;
    dib.maximumBandWidth -= dib.maximumBandWidth % unit;
    CreateBitmap(dib, projection, bits);
    layout.height = static_cast<int>(dib.GetDIBHeight());
    if (layout.height < projection.GetHeight() && layout.height % unit != 0)
    {
        dib.maximumBandHeight = layout.height - layout.height % unit;
        CreateBitmap(dib, projection, bits);
    }
    layout.width = static_cast<int>(dib.GetDIBWidth());
    layout.height = static_cast<int>(dib.GetDIBHeight());
    return layout;
}

}  // namespace

PosterBands::PosterBands(const ViewObject& view, const PosterSettings& settings)
    : settings_(settings), view_(view, ChooseSamples(settings)), parameters_(view)
{
    const int samples = ChooseSamples(settings);
    const double wire = WireWidth(settings.size, DrawingModeOf(view));
    if (settings.options.cancellation)
    {
        parameters_.SetTerminationEvent(EventOf(*settings.options.cancellation));
    }
    ProjectionData projection = view.GetProjection();
    projection.SetUnscaledSize(settings.Width(), settings.Height());
    projection.SetScale(samples, samples);
    layout_ = MakeBitmap(dib_, projection, settings.DrawnBits(), samples, wire);
    PrepareForPicture(samples * wire);
    if (Rows() * Columns() >= minBandsForParts)
    {
        parts_.emplace(view_, WithEdge(projection), parameters_);
    }
    if (settings.options.studio)
    {
        studio_ = std::make_unique<StudioDrawer>(*settings.options.studio);
        parameters_.SetSolidDrawer(studio_.get());
        parameters_.showsThrough = true;
        if (settings.options.studio->hasGround)
        {
            ground_ = std::make_unique<GroundShadow>(*view_.GetScene());
            parameters_.ground = ground_.get();
        }
    }
}

int PosterBands::Rows() const
{
    return (settings_.Height() + layout_.StepY() - 1) / layout_.StepY();
}

int PosterBands::Columns() const
{
    return (settings_.Width() + layout_.StepX() - 1) / layout_.StepX();
}

bool PosterBands::Draw(int row, int column)
{
    if (parts_)
    {
        parameters_.hidden = parts_->HiddenIn(AreaOf(row, column));
        const bool showsNothing = static_cast<int>(parameters_.hidden.size()) == parts_->Count();
        const bool isEmpty = showsNothing && IsBackgroundPlain();
        if (isEmpty && isEmpty_)
        {
            return true;  // the bitmap still holds the previous band, which looks the same
        }
        isEmpty_ = isEmpty;
    }
    if (!settings_.options.transparent)
    {
        return DrawOver(view_.GetScene()->GetBackgroundColor(), row, column);
    }
    // How much of the background shows through is found by drawing over black and over white.
    const ColorVector black(0, 0, 0, 1);
    const ColorVector white(1, 1, 1, 1);
    view_.ShowPlainBackground(black);
    if (!DrawOver(black, row, column))
    {
        return false;
    }
    const BYTE* const bits = static_cast<const BYTE*>(dib_.GetDIBBits());
    overBlack_.assign(bits, bits + BmpFile::RowBytes(layout_.width, Info().bmiHeader.biBitCount) *
                                       static_cast<std::size_t>(layout_.height));
    view_.ShowPlainBackground(white);
    return DrawOver(white, row, column);
}

/// \param background is shown where the scene's background does not cover the band
bool PosterBands::DrawOver(const ColorVector& background, int row, int column)
{
    const double top = row * layout_.StepY() - layout_.margin;
    const double left = column * layout_.StepX() - layout_.margin;
    dib_.PrepareNextBand(top * layout_.samples / layout_.height,
                         left * layout_.samples / layout_.width, &parameters_);
    // A background picture does not always cover the whole band. Without clearing, the previous
    // band would show in the uncovered part.
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    glClearColor(background.red, background.green, background.blue, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    // The fourth byte of each pixel of a 32-bit file stays 255, as cleared, because drawing the
    // scene does not write alpha.
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, settings_.DrawnBits() != 32);
    const int drawn = view_.Draw(&parameters_);
    GdiFlush();
    // A background of 8 bits is dithered in a context of its own. When the system refuses to make
    // this context current again, the rest of the band was not drawn.
    return drawn != 0 && wglGetCurrentContext() != nullptr;
}

void PosterBands::CopyTo(Strip& strip, int column) const
{
    const int left = column * layout_.StepX();
    const int width = std::min(layout_.StepX(), settings_.Width() - left);
    const int bitCount = Info().bmiHeader.biBitCount;
    const std::size_t bytes = static_cast<std::size_t>(bitCount) / 8;
    const std::size_t rowBytes = BmpFile::RowBytes(layout_.width, bitCount);
    const std::size_t outBytes = settings_.IsBmp() ? bytes : settings_.Rows().PixelBytes();
    const bool isCopied = settings_.IsBmp() && layout_.samples == 1;
    const BYTE* const bits = static_cast<const BYTE*>(dib_.GetDIBBits());
    for (int y = 0; y < std::min(layout_.StepY(), strip.Height()); ++y)
    {
        const int lowest = layout_.height - (layout_.margin + y + 1) * layout_.samples;
        const std::size_t place = rowBytes * static_cast<std::size_t>(lowest) +
                                  bytes * static_cast<std::size_t>(layout_.margin) *
                                      static_cast<std::size_t>(layout_.samples);
        BYTE* const out = strip.Row(y) + outBytes * static_cast<std::size_t>(left);
        if (isCopied)
        {
            std::memcpy(out, bits + place, bytes * static_cast<std::size_t>(width));
            continue;
        }
        const SampleRows rows = {bits + place,
                                 overBlack_.empty() ? nullptr : overBlack_.data() + place, rowBytes,
                                 layout_.samples, width};
        settings_.IsBmp() ? AverageBgr(rows, static_cast<int>(bytes), out)
                          : AverageTo(settings_.Rows(), rows, out);
    }
}

/// The width of the edge around a band, in pixels of the picture. A node that is seen only in the
/// edge may still colour pixels of the band.
int PosterBands::Edge() const
{
    return layout_.margin + 1;
}

ProjectionData PosterBands::WithEdge(ProjectionData projection) const
{
    const int edge = Edge() * layout_.samples;
    projection.SetViewSize(projection.GetWidth() + 2 * edge, projection.GetHeight() + 2 * edge);
    projection.SetViewOffset(-edge, -edge);
    return projection;
}

/// The area of a band and its edge, in the picture that WithEdge describes.
PictureArea PosterBands::AreaOf(int row, int column) const
{
    const double width = settings_.Width() + 2 * Edge();
    const double height = settings_.Height() + 2 * Edge();
    const double left = column * layout_.StepX();
    const double top = row * layout_.StepY();
    return {left / width, 1 - (top + layout_.StepY() + 2 * Edge()) / height,
            (left + layout_.StepX() + 2 * Edge()) / width, 1 - top / height};
}

/// Whether all bands in which no node is seen look the same.
bool PosterBands::IsBackgroundPlain() const
{
    return ground_ == nullptr && !parameters_.ShouldShowLights() &&
           (settings_.options.transparent || !HasBackgroundPicture(*view_.GetScene()));
}

}  // namespace orvane
