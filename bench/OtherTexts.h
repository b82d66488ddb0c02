// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <vector>

/// \file
/// Solid texts of other libraries that keep something between draws, to compare with. Each library
/// is left out when it was not installed when the benchmark was configured.

/// What a camera sees: the plane of the letters' front faces around a point, at a distance, all in
/// ems. Half of the picture's height is 0.45 of the distance.
struct TextView
{
    double centerX;
    double centerY;
    double distance;
    double aspect;  ///< width of the picture by its height

    /// Makes it OpenGL's, for coordinates that are \p unitsPerEm as large.
    void Apply(double unitsPerEm = 1) const;
};

/// What is drawn: letters one em deep, in lines that end with a line feed and are 1 em apart.
struct TextJob
{
    std::string fontFile;
    std::string text;
    bool isBevelled;  ///< by 0.03 em on both faces; otherwise the edges are square
    TextView view;
};

class OtherText
{
public:
    virtual ~OtherText() = default;
    virtual void Draw() = 0;
    virtual void SetText(const std::string& text) = 0;
};

struct OtherLibrary
{
    const char* name;
    /// Null when this library cannot draw such a text.
    std::unique_ptr<OtherText> (*make)(const TextJob& job);
};

/// The libraries that are there, and the names of those that are left out.
std::vector<OtherLibrary> OtherLibraries();
std::vector<std::string> MissingLibraries();

#if defined(ORVANE_BENCH_FTGL)
std::unique_ptr<OtherText> MakeFtglText(const TextJob& job);
#endif
#if defined(ORVANE_BENCH_OSG)
std::unique_ptr<OtherText> MakeOsgText(const TextJob& job);
#endif
#if defined(ORVANE_BENCH_COIN)
std::unique_ptr<OtherText> MakeCoinText(const TextJob& job);
#endif
