// SPDX-License-Identifier: MIT
#pragma once

#include "contours/PlanePoint.h"
#include "shapedtext/LineSettings.h"

#include <vector>

namespace orvane
{

enum class Alignment;

/// The line of a TextPath, in ems with y upward, in the direction in which its text runs. A place
/// on it is told by its way: the length of the line up to there.
class PathLine
{
public:
    /// Throws OptionError for a path that makes no sense, and Error for data that cannot be read.
    explicit PathLine(const TextPath& path);

    /// The way at which a text is aligned.
    double StartOf(Alignment alignment) const;
    /// The place at a way, which may lie before the begin of the line or behind its end.
    contours::DoublePoint PointAt(double way) const;

private:
    struct Station
    {
        contours::DoublePoint place;
        double way;
    };

    void Read(const TextPath& path);

    double radius_ = 0;  ///< of a circle; 0 for another path
    bool isReversed_;
    bool isClosed_ = true;
    std::optional<double> start_;
    std::vector<Station> stations_;  ///< of a path; the ends of short straight lines
    double length_ = 0;
};

}  // namespace orvane
