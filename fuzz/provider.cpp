// SPDX-License-Identifier: MIT
// Any contours as a font's outline: tried, repaired, turned, made quadratic, and built as the
// library builds what is handed over.
#include "contours/Areas.h"
#include "contours/OutlineTrial.h"
#include "contours/ProvidedOutline.h"
#include "fuzz/Check.h"
#include "orvane.h"
#include "platform/posix/fonts/GlyphPolygons.h"
#include "platform/posix/fonts/OutlineTracer.h"

#include <algorithm>
#include <array>
#include <span>
#include <vector>

using namespace orvane::contours;

namespace
{

/// What the bytes say: the em, the kind of curves, then points of five bytes.
struct Contours
{
    explicit Contours(std::span<const unsigned char> bytes)
    {
        constexpr std::array<int, 4> ems = {1000, 2048, 250, 16384};
        const unsigned char first = bytes.empty() ? 0 : bytes[0];
        em = ems[first & 3];
        cubic = (first & 4) != 0;
        // Coordinates within an em or so, where most letters are, or anywhere.
        const int range = (first & 8) != 0 ? 65536 : 2 * em;
        constexpr std::size_t pointSize = 5;
        constexpr std::size_t mostPoints = 500;
        for (std::size_t at = 1; at + pointSize <= bytes.size() && points.size() < mostPoints;
             at += pointSize)
        {
            const auto coordinate = [&](std::size_t n) {
                const int value = bytes[at + n] << 8 | bytes[at + n + 1];
                return static_cast<FT_Pos>(value % range - range / 2) * 64;
            };
            points.push_back({coordinate(0), coordinate(2)});
            const unsigned kind = bytes[at + 4];
            const bool on = (kind & 1) != 0;
            tags.push_back(on ? FT_CURVE_TAG_ON : cubic ? FT_CURVE_TAG_CUBIC : FT_CURVE_TAG_CONIC);
            if ((kind & 0xE) == 0)
            {
                ends.push_back(static_cast<short>(points.size() - 1));
            }
        }
        if (!points.empty() && (ends.empty() || ends.back() + 1 < std::ssize(points)))
        {
            ends.push_back(static_cast<short>(points.size() - 1));
        }
        outline.n_contours = static_cast<short>(ends.size());
        outline.n_points = static_cast<short>(points.size());
        outline.points = points.data();
        outline.tags = tags.data();
        outline.contours = ends.data();
    }

    int em = 1000;
    bool cubic = false;
    std::vector<FT_Vector> points;
    std::vector<char> tags;
    std::vector<short> ends;
    FT_Outline outline = {};
};

void CheckForm(const NativeOutline& outline)
{
    std::size_t first = 0;
    for (const std::size_t end : outline.ends)
    {
        Check(end > first + 1 && end <= outline.points.size(), "a contour has points");
        Check(outline.points[first].onCurve && outline.points[end - 1].onCurve,
              "a contour starts and ends on the curve");
        first = end;
    }
    Check(first == outline.points.size(), "every point is of a contour");
}

/// What is handed over lies where the outline does, save for what rounding adds.
void CheckBounds(const NativeOutline& outline, const NativeOutline& given)
{
    constexpr std::int32_t rounding = 2 * 64;
    for (const auto coordinate : {&NativePoint::x, &NativePoint::y})
    {
        const auto [least, most] =
            std::minmax_element(outline.points.begin(), outline.points.end(),
                                [&](const NativePoint& a, const NativePoint& b) {
                                    return a.*coordinate < b.*coordinate;
                                });
        for (const NativePoint& point : given.points)
        {
            Check(point.*coordinate >= (*least).*coordinate - rounding &&
                      point.*coordinate <= (*most).*coordinate + rounding,
                  "points lie within the outline's bounds");
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t count)
{
    const Contours contours({bytes, count});
    const NativeOutline own = contours.cubic ? posix::TraceCubicOutline(contours.outline)
                                             : posix::TraceOutline(contours.outline);
    CheckForm(own);
    const ProvidedOutline provided = ProvideOutline(own, contours.cubic, contours.em);
    Check(!(provided.isRepaired && provided.isFailed), "what is repaired has not failed");
    Check(provided.outline || !(provided.isRepaired || provided.isTurned || provided.isConverted),
          "what has changed is handed over");
    const NativeOutline& given = provided.outline ? *provided.outline : own;
    CheckForm(given);
    CheckBounds(own, given);
    if (provided.isRepaired)
    {
        const OutlineVerdict verdict = TryOutline(given, contours.em);
        Check(verdict.fills && verdict.wrongWay.empty(), "what is repaired comes out right");
        const ProvidedOutline again = ProvideOutline(given, false, contours.em);
        Check(!again.outline && !again.isFailed, "what is repaired is clean");
    }

    std::vector<BYTE> polygons = posix::NativePolygons(given);
    TTGlyph native;
    native.FromGlyphOutline(polygons.data(), polygons.size());
    OrvGlyph glyph(polygons.size(), GLYPHMETRICS{});
    glyph.ConstructGlyph(native, static_cast<float>(contours.em));
    if (!provided.isFailed)
    {
        const bool filled = OddArea(FlattenAndSeparate(given, contours.em)) > 0;
        Check(filled == (glyph.facePolygons.GetSize() > 0), "what passes the trial has faces");
    }
    return 0;
}
