// SPDX-License-Identifier: MIT
#include "apps/cli/Poster.h"

#include "apps/cli/BmpFile.h"
#include "apps/cli/Errors.h"
#include "apps/cli/PosterParts.h"
#include "apps/cli/PosterStrips.h"
#include "apps/cli/PosterTarget.h"
#include "apps/cli/PosterView.h"
#include "imaging/GLMemoryDIB.h"
#include "platform/Errors.h"
#include "platform/OpenGL.h"
#include "platform/Process.h"
#include "platform/Rendering.h"
#include "platform/Sync.h"
#include "scene/DrawingParameters.h"
#include "scene/SceneObject.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <optional>

namespace
{

constexpr unsigned int outlineMode = 0x2;  // of a view
constexpr int bandsWorthParts = 64;        // the parts take the time of a few
constexpr double wiresPerPicture = 480;    // a wire's width goes that often into the picture

int ChooseSamples(const PosterSettings& settings)
{
    if (settings.bits < 24)
    {
        return 1;  // dithered, which averages would undo
    }
    const double megapixels = 1e-6 * settings.width * settings.height;
    return settings.samples != 0 ? settings.samples
           : megapixels <= 4     ? 4
           : megapixels <= 32    ? 2
                                 : 1;
}

/// How the picture is cut into bands. Pixels, if not said otherwise those of the bands, of which
/// samples by samples make one of the picture.
struct Bands
{
    int samples = 1;
    int margin = 0;  // drawn around each band and thrown away
    int width = 0;
    int height = 0;

    /// What a band adds to the picture, in its pixels.
    int StepX() const { return width / samples - 2 * margin; }
    int StepY() const { return height / samples - 2 * margin; }
};

/// Averages squares of samples by samples pixels, each of so many bytes.
template <int samples, int bytes>
void AverageRow(const BYTE* in, std::size_t rowBytes, int width, BYTE* out)
{
    constexpr int area = samples * samples;
    for (int x = 0; x < width; ++x, in += samples * bytes, out += bytes)
    {
        for (int part = 0; part < bytes; ++part)
        {
            int sum = area / 2;
            for (int y = 0; y < samples; ++y)
            {
                const BYTE* const line = in + rowBytes * static_cast<std::size_t>(y) + part;
                for (int i = 0; i < samples; ++i)
                {
                    sum += line[i * bytes];
                }
            }
            out[part] = static_cast<BYTE>(sum / area);
        }
    }
}

using RowReducer = void (*)(const BYTE* in, std::size_t rowBytes, int width, BYTE* out);

RowReducer ChooseReducer(int samples, int bytes)
{
    constexpr RowReducer three[] = {AverageRow<1, 3>, AverageRow<2, 3>, AverageRow<3, 3>,
                                    AverageRow<4, 3>};
    constexpr RowReducer four[] = {AverageRow<1, 4>, AverageRow<2, 4>, AverageRow<3, 4>,
                                   AverageRow<4, 4>};
    return bytes == 4 ? four[samples - 1] : three[samples - 1];
}

/// Takes so many columns from the middle of a band, without its margin, to their place in the rows.
void CopyBand(const GLMemoryDIB& dib, const Bands& bands, Strip& strip, int width, int left)
{
    const BYTE* const bits = static_cast<const BYTE*>(dib.GetDIBBits());
    const int bitCount = dib.GetDIBInfo()->bmiHeader.biBitCount;
    const std::size_t bytes = static_cast<std::size_t>(bitCount) / 8;
    const std::size_t rowBytes = BmpFile::RowBytes(bands.width, bitCount);
    const RowReducer reduce = ChooseReducer(bands.samples, static_cast<int>(bytes));
    for (int y = 0; y < std::min(bands.StepY(), strip.Height()); ++y)
    {
        const int lowest = bands.height - (bands.margin + y + 1) * bands.samples;
        const BYTE* const in = bits + rowBytes * static_cast<std::size_t>(lowest) +
                               bytes * static_cast<std::size_t>(bands.margin) *
                                   static_cast<std::size_t>(bands.samples);
        BYTE* const out = strip.Row(y) + bytes * static_cast<std::size_t>(left);
        if (bands.samples == 1)
        {
            std::memcpy(out, in, bytes * static_cast<std::size_t>(width));
        }
        else
        {
            reduce(in, rowBytes, width, out);
        }
    }
}

/// The place of a stretched background, which the scene counts in pixels of the bands, in those of
/// the picture as long as it lives.
class ScaledBackground
{
public:
    ScaledBackground(TextureMap& texture, int samples)
        : texture_(texture), x_(texture.GetHorizontalLocation()), y_(texture.GetVerticalLocation())
    {
        if (texture.placement == 0)
        {
            texture_.SetHorizontalLocation(x_ * samples);
            texture_.SetVerticalLocation(y_ * samples);
        }
    }
    ~ScaledBackground()
    {
        texture_.SetHorizontalLocation(x_);
        texture_.SetVerticalLocation(y_);
    }
    ScaledBackground(const ScaledBackground&) = delete;
    ScaledBackground& operator=(const ScaledBackground&) = delete;

private:
    TextureMap& texture_;
    double x_;
    double y_;
};

DrawingParameters MakeParameters(const ViewObject& view, HANDLE stop)
{
    DrawingParameters parameters;
    parameters.SetFlags(view.GetDrawingMode());
    parameters.SetShowObject();
    parameters.SetShowChildren();
    parameters.SetShowBackgroundTexture();
    if (view.ShouldShowTextures())
    {
        parameters.SetShowTextures();
    }
    if (view.ShouldShowLightsMode())
    {
        parameters.SetShowLights();
    }
    parameters.SetTerminationEvent(stop);
    return parameters;
}

void CreateBands(GLMemoryDIB& dib, const ProjectionData& projection, int bits)
{
    if (!dib.Create(projection, bits))
    {
        throw Failure("OpenGL: no off-screen context: " + GetLastErrorText());
    }
}

/// Makes the bitmap that bands are drawn into, and its context.
Bands MakeBands(GLMemoryDIB& dib, const ProjectionData& projection, const PosterSettings& settings,
                int samples, double wire)
{
    Bands bands{samples, 0};
    if (wire > 0)
    {
        // A wire whose middle lies outside a band is not drawn in it: the margin is half a wire.
        bands.margin = static_cast<int>(std::ceil(wire / 2)) + 1;
        constexpr int wideMargin = 8;
        if (bands.margin > wideMargin)
        {
            dib.maximumBandWidth = 512;  // narrower bands may be higher
        }
    }
    // A band holds whole pixels of the picture, and the pattern of dithering, which is four pixels
    // wide, goes on in the next one.
    const int unit = settings.bits < 24 ? 4 : bands.samples;
    dib.maximumBandWidth -= dib.maximumBandWidth % unit;
    CreateBands(dib, projection, settings.bits);
    bands.height = static_cast<int>(dib.GetDIBHeight());
    if (bands.height < projection.GetHeight() && bands.height % unit != 0)
    {
        dib.maximumBandHeight = bands.height - bands.height % unit;
        CreateBands(dib, projection, settings.bits);
    }
    bands.width = static_cast<int>(dib.GetDIBWidth());
    bands.height = static_cast<int>(dib.GetDIBHeight());
    return bands;
}

/// Draws the bands of a picture into a bitmap, one after the other.
class BandPainter
{
public:
    /// Throws Failure when there is no context to draw in.
    BandPainter(PosterView& view, const PosterSettings& settings, int samples, double wire)
        : view_(view),
          settings_(settings),
          background_(*view.GetScene()->GetTexture(), samples),
          parameters_(MakeParameters(view, settings.stop))
    {
        ProjectionData projection = view.GetProjection();
        projection.SetUnscaledSize(settings.width, settings.height);
        projection.SetScale(samples, samples);
        bands_ = MakeBands(dib_, projection, settings, samples, wire);
        glEnable(GL_NORMALIZE);
        CutQuadsAlike();  // in all bands
        if (wire > 0)
        {
            glLineWidth(static_cast<GLfloat>(samples * wire));
        }
        if (Rows() * Columns() >= bandsWorthParts)
        {
            parts_.emplace(view, WithEdge(projection), parameters_);
        }
    }

    const Bands& GetBands() const { return bands_; }
    int Rows() const { return (settings_.height + bands_.StepY() - 1) / bands_.StepY(); }
    int Columns() const { return (settings_.width + bands_.StepX() - 1) / bands_.StepX(); }
    GLMemoryDIB& Dib() { return dib_; }

    /// Leaves a band in the bitmap's bits. 0 when the scene could not be drawn whole.
    int Draw(int row, int column)
    {
        // A band of the background alone is like the last one, which is still there.
        const bool isEmpty = parts_ && ShowParts(row, column) == 0 && IsBackgroundPlain();
        if (isEmpty && hasEmptyBand_)
        {
            return 1;
        }
        hasEmptyBand_ = isEmpty;
        const double top = row * bands_.StepY() - bands_.margin;  // rows and columns of pixels
        const double left = column * bands_.StepX() - bands_.margin;
        dib_.PrepareNextBand(top * bands_.samples / bands_.height,
                             left * bands_.samples / bands_.width, &parameters_);
        // What a background leaves uncovered shows no older band.
        const ColorVector color = view_.GetScene()->GetBackgroundColor();
        glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
        glClearColor(color.red, color.green, color.blue, 1);
        glClear(GL_COLOR_BUFFER_BIT);
        // The fourth byte of 32 bits says opaque, whatever is drawn.
        glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, settings_.bits != 32);
        const int drawn = view_.Draw(&parameters_);
        GdiFlush();
        return drawn;
    }

private:
    /// Pixels of the picture around a band, or around the whole of it, that reach into it.
    int Edge() const { return bands_.margin + 1; }

    ProjectionData WithEdge(ProjectionData projection) const
    {
        const int edge = Edge() * bands_.samples;
        projection.SetViewSize(projection.GetWidth() + 2 * edge, projection.GetHeight() + 2 * edge);
        projection.SetViewOffset(-edge, -edge);
        return projection;
    }

    /// How many parts of the scene a band shows.
    int ShowParts(int row, int column)
    {
        const double width = settings_.width + 2 * Edge();
        const double height = settings_.height + 2 * Edge();
        const double left = column * bands_.StepX();
        const double top = row * bands_.StepY();
        return parts_->Show({left / width, 1 - (top + bands_.StepY() + 2 * Edge()) / height,
                             (left + bands_.StepX() + 2 * Edge()) / width, 1 - top / height});
    }

    bool IsBackgroundPlain() const
    {
        return !parameters_.ShouldShowLights() &&
               (view_.GetScene()->GetTexture()->textureFlags & TextureMap::Valid) == 0;
    }

    PosterView& view_;
    const PosterSettings& settings_;
    const ScaledBackground background_;
    DrawingParameters parameters_;
    GLMemoryDIB dib_;
    Bands bands_{};
    std::optional<PosterParts> parts_;
    bool hasEmptyBand_ = false;
};

}  // namespace

void CheckPoster(const PosterSettings& settings)
{
    if (settings.bits < 24 && settings.samples > 1)
    {
        throw UsageError("--samples: a picture of 8 or 16 bits has one per pixel, found " +
                         std::to_string(settings.samples));
    }
    CheckTarget(settings);
}

void DrawPoster(const ViewObject& original, const PosterSettings& settings, PosterTarget& target)
{
    SignalWhenInterrupted(settings.stop);
    const auto goOn = [&settings] {
        return settings.stop == nullptr || WaitForSingleObject(settings.stop, 0) != WAIT_OBJECT_0;
    };
    const double wire =
        (original.GetDrawingMode() & outlineMode) != 0
            ? std::max(1.0, std::min(settings.width, settings.height) / wiresPerPicture)
            : 0;

    PosterView view(original);
    BandPainter painter(view, settings, ChooseSamples(settings), wire);
    const Bands& bands = painter.GetBands();
    target.Open(*painter.Dib().GetDIBInfo());
    PosterStrips strips(target, BmpFile::RowBytes(settings.width, settings.bits), bands.StepY(),
                        goOn);
    for (int row = 0; row < painter.Rows(); ++row)
    {
        const int top = row * bands.StepY();
        Strip& strip = strips.Begin(top, std::min(bands.StepY(), settings.height - top));
        for (int column = 0; column < painter.Columns(); ++column)
        {
            const int drawn = painter.Draw(row, column);
            if (!goOn())
            {
                throw Failure("interrupted");
            }
            if (!drawn)
            {
                throw Failure("OpenGL: the scene could not be drawn whole");
            }
            const int left = column * bands.StepX();
            CopyBand(painter.Dib(), bands, strip, std::min(bands.StepX(), settings.width - left),
                     left);
            if (settings.progress)
            {
                settings.progress((row + (column + 1.0) / painter.Columns()) / painter.Rows());
            }
        }
        strips.End();
    }
    strips.Finish();
    if (!goOn())
    {
        throw Failure("interrupted");
    }
    target.Finish();
}
