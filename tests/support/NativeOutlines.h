// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Outlines for tests, in whole units.

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

/// A square with sides along the axes; clockwise, what is filled on its right, unless turned.
inline std::vector<OutlineAt> SquareAt(int x, int y, int size, bool turned = false)
{
    std::vector<OutlineAt> square = {{x, y}, {x, y + size}, {x + size, y + size}, {x + size, y}};
    return turned ? std::vector<OutlineAt>(square.rbegin(), square.rend()) : square;
}

/// Four splines around a centre, through points on the axes; clockwise unless turned.
inline std::vector<OutlineAt> RoundAt(int x, int y, int radius, bool turned = false)
{
    std::vector<OutlineAt> round = {{x - radius, y}, {x - radius, y + radius, false},
                                    {x, y + radius}, {x + radius, y + radius, false},
                                    {x + radius, y}, {x + radius, y - radius, false},
                                    {x, y - radius}, {x - radius, y - radius, false},
                                    {x - radius, y}};
    return turned ? std::vector<OutlineAt>(round.rbegin(), round.rend()) : round;
}

/// Squares and rounds, some of which cross or hold others.
/// \param turned whether a third of them are
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
