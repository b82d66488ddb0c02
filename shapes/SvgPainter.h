// SPDX-License-Identifier: MIT
#pragma once

#include "shapes/Layers.h"
#include "shapes/SvgDocument.h"

#include <array>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <unordered_map>
#include <vector>

namespace orvane::shapes
{

/// The rectangle that a picture shows.
struct SvgFrame
{
    Affine toEms;               ///< from the user units inside the outermost element
    contours::DoublePoint low;  ///< the viewport's corners, in ems
    contours::DoublePoint high;
    double width = 0;  ///< of the viewBox, in ems
};

/// Walks over the elements of a file and collects the layers that they paint.
class SvgPainter
{
public:
    /// \param document borrowed
    SvgPainter(SvgDocument& document, const SvgOptions& options);

    /// Paints the whole file.
    void Paint();

    const std::vector<Layer>& Layers() const { return layers_; }
    const std::vector<Clip>& Clips() const { return clips_; }
    const std::vector<SvgColor>& Colors() const { return colors_; }
    /// After Paint.
    const SvgFrame& Frame() const { return frame_; }

private:
    /// What elements get from those around them.
    struct State
    {
        Affine toEms;
        SvgStyle style;
        SvgViewport viewport;
        double opacity = 1;     ///< of all elements around, multiplied
        int clip = -1;          ///< an index in clips_
        int viewportClip = -1;  ///< an index in viewportClips_
        int depth = 0;
    };

    /// The four corners of a viewport, in ems and counter-clockwise, outside of which nothing is
    /// painted.
    struct ViewportClip
    {
        std::array<contours::DoublePoint, 4> corners;
        int outer;  ///< the index of a viewport around it; -1 for none
    };

    /// The viewBox of the outermost element. That of a file without a size is what it draws.
    std::vector<double> OuterViewBox();
    /// The bounds of everything that the file draws, as a viewBox.
    std::vector<double> MeasuredBox();
    void PaintRoot(State state);

    void PaintElement(pugi::xml_node element, const State& outer);
    void PaintChildren(pugi::xml_node element, const State& state);
    void PaintSwitch(pugi::xml_node element, const State& state);
    void PaintUse(pugi::xml_node element, const State& state);
    /// Paints what is inside of an svg or symbol element.
    /// \param use the use element that puts it there; empty for an element that stands there itself
    void PaintViewport(pugi::xml_node element, pugi::xml_node use, State state);
    void PaintPath(pugi::xml_node element, const State& state);
    void PaintFill(pugi::xml_node element, const Path& path, const State& state);
    void PaintStroke(pugi::xml_node element, const Path& path, const State& state);
    /// The state inside of an element: its style, transform and clip. Counts the element. Empty for
    /// an element that is not displayed.
    std::optional<State> Entered(pugi::xml_node element, const State& outer);

    /// The index of the colour of a paint; -1 when nothing is to be painted.
    int ColorOf(pugi::xml_node element, const SvgPaint& paint, double opacity, const State& state);
    /// What a reference to a gradient or pattern paints. Multiplies \p opacity by that of a stop.
    SvgPaint PaintOfServer(pugi::xml_node element, const SvgPaint& paint, const State& state,
                           double& opacity);
    SvgPaint FirstStop(pugi::xml_node gradient, const State& state, double& opacity);

    /// The index of the clip that a clipPath of this id makes of the state's clip.
    int ClipOf(pugi::xml_node element, const std::string& id, const State& state);
    int NewClip(pugi::xml_node clipPath, const State& state);
    void AddClipShape(pugi::xml_node element, const State& outer);
    int AddViewportClip(const contours::DoublePoint& low, const contours::DoublePoint& high,
                        const Affine& toEms, int outer);
    void AddLayer(Contours contours, FillRule rule, int color, const State& state);
    /// How far lines may deviate from the curves of a path, in the path's units.
    double ToleranceFor(const Path& path, const State& state) const;

    SvgDocument& document_;
    const SvgOptions& options_;
    SvgFrame frame_;
    SegmentLimit segments_;
    int elements_ = 0;
    bool isMeasuring_ = false;
    contours::DoublePoint low_;   ///< while measuring
    contours::DoublePoint high_;  ///< while measuring
    std::vector<Layer> layers_;
    std::vector<Clip> clips_;
    /// What a clip follows from: the clipPath, its coordinates and what clips it.
    using ClipSource = std::tuple<const void*, std::array<double, 6>, int, int>;
    std::map<ClipSource, int> clipIndices_;
    std::vector<ViewportClip> viewportClips_;
    std::vector<SvgColor> colors_;
    std::unordered_map<std::uint32_t, int> colorIndices_;
};

}  // namespace orvane::shapes
