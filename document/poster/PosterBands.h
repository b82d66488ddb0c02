// SPDX-License-Identifier: MIT
#pragma once

#include "document/poster/Poster.h"
#include "document/poster/PosterParts.h"
#include "document/poster/PosterView.h"
#include "imaging/GLMemoryDIB.h"
#include "studio/GroundShadow.h"
#include "studio/StudioDrawer.h"

#include <memory>
#include <optional>
#include <vector>

namespace orvane
{

class Strip;

/// How a picture is cut into bands. Each pixel of the picture is drawn as a square of the band's
/// bitmap, whose side is \p samples pixels.
struct BandLayout
{
    int samples = 1;
    int margin = 0;  ///< pixels of the picture that are drawn around each band and thrown away
    int width = 0;   ///< of the band's bitmap, in its own pixels
    int height = 0;

    /// The distance from a band to the next, in pixels of the picture: the band's size without its
    /// margins.
    int StepX() const { return width / samples - 2 * margin; }
    int StepY() const { return height / samples - 2 * margin; }
};

/// Draws the bands of a picture into a bitmap, one after the other.
class PosterBands
{
public:
    /// Throws Error when no OpenGL context for the bitmap can be made.
    PosterBands(const ViewObject& view, const PosterSettings& settings);

    const BandLayout& Layout() const { return layout_; }
    int Rows() const;
    int Columns() const;
    const BITMAPINFO& Info() const { return *dib_.GetDIBInfo(); }

    /// Draws a band into the bitmap. Returns false when the scene could not be drawn completely.
    bool Draw(int row, int column);
    /// Whether the background picture could not be read completely while a band was drawn.
    bool HasLostBackgroundPicture() const { return parameters_.hasLostBackgroundPicture; }
    /// Copies the band that was drawn last, without its margin, to its place in a strip.
    void CopyTo(Strip& strip, int column) const;

private:
    int Edge() const;
    /// The projection of the picture with an edge of Edge() pixels on every side.
    ProjectionData WithEdge(ProjectionData projection) const;
    PictureArea AreaOf(int row, int column) const;
    bool IsBackgroundPlain() const;
    bool DrawOver(const ColorVector& background, int row, int column);

    const PosterSettings& settings_;
    PosterView view_;
    PosterParameters parameters_;
    GLMemoryDIB dib_;
    /// Null for the classic renderer. Its context, that of dib_, lives longer.
    std::unique_ptr<StudioDrawer> studio_;
    std::unique_ptr<GroundShadow> ground_;  ///< like studio_; null without a ground
    BandLayout layout_;
    std::optional<PosterParts> parts_;  ///< only for pictures of many bands
    bool isEmpty_ = false;              ///< whether the bitmap holds a band of plain background
    /// Of a transparent picture: the band drawn over black. The bitmap holds it over white.
    std::vector<BYTE> overBlack_;
};

}  // namespace orvane
