// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Outlines for tests, with coordinates in whole units.

#include "contours/FlatOutline.h"
#include "contours/NativeOutline.h"

#include <vector>

struct OutlineAt
{
    int x;
    int y;
    bool onCurve = true;
};

inline orvane::contours::NativeOutline MakeOutline(
    const std::vector<std::vector<OutlineAt>>& contours)
{
    orvane::contours::NativeOutline outline;
    for (const std::vector<OutlineAt>& contour : contours)
    {
        for (const OutlineAt& point : contour)
        {
            outline.points.push_back({point.x * 64, point.y * 64, point.onCurve});
        }
        outline.CloseContour();
    }
    return outline;
}

/// The outline, of 1000 units per em, flattened.
inline orvane::contours::FlatOutline FlatOf(const std::vector<std::vector<OutlineAt>>& contours)
{
    return orvane::contours::Flatten(MakeOutline(contours), 1000);
}

/// A square with sides along the axes. It runs clockwise unless \p turned.
inline std::vector<OutlineAt> SquareAt(int x, int y, int size, bool turned = false)
{
    std::vector<OutlineAt> square = {{x, y}, {x, y + size}, {x + size, y + size}, {x + size, y}};
    return turned ? std::vector<OutlineAt>(square.rbegin(), square.rend()) : square;
}

/// A contour of four quadratic curves around the centre (x, y). It runs clockwise unless \p turned.
inline std::vector<OutlineAt> RoundAt(int x, int y, int radius, bool turned = false)
{
    std::vector<OutlineAt> round = {{x - radius, y}, {x - radius, y + radius, false},
                                    {x, y + radius}, {x + radius, y + radius, false},
                                    {x + radius, y}, {x + radius, y - radius, false},
                                    {x, y - radius}, {x - radius, y - radius, false},
                                    {x - radius, y}};
    return turned ? std::vector<OutlineAt>(round.rbegin(), round.rend()) : round;
}

/// Random contours from SquareAt and RoundAt. Some of them cross or contain others.
/// \param turned whether about a third of the contours run counter-clockwise
template <typename Random>
orvane::contours::NativeOutline RandomShapes(Random& random, int count, int range, int leastSize,
                                             bool turned)
{
    const auto below = [&random](int end) {
        return static_cast<int>(random() % static_cast<unsigned>(end));
    };
    std::vector<std::vector<OutlineAt>> contours;
    for (int n = 0; n < count; ++n)
    {
        const int x = below(range);
        const int y = below(range);
        const int size = leastSize + below(300);
        const bool turn = turned && below(3) == 0;
        contours.push_back(below(2) == 0 ? SquareAt(x, y, size, turn) : RoundAt(x, y, size, turn));
    }
    return MakeOutline(contours);
}

/// Contours of random points. The points lie on a coarse grid, so that some of them coincide.
template <typename Random>
orvane::contours::NativeOutline RandomOutline(Random& random, int contours, int points)
{
    std::vector<std::vector<OutlineAt>> all;
    for (int n = 0; n < contours; ++n)
    {
        std::vector<OutlineAt>& contour = all.emplace_back();
        for (int i = 0; i < points; ++i)
        {
            const auto coordinate = [&] { return static_cast<int>(random() % 40) * 25 - 300; };
            contour.push_back({coordinate(), coordinate(), i == 0 || random() % 2 == 0});
        }
    }
    return MakeOutline(all);
}
