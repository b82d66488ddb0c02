// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Drawing in tests: a current OpenGL context without a display, and pictures to compare.

#include "platform/OpenGL.h"
#include "tests/support/Rgb.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

std::ostream& operator<<(std::ostream& stream, const Rgb& color);

/// A picture with its lowest row first, as OpenGL counts.
struct Picture
{
    int width = 0;
    int height = 0;
    std::vector<GLubyte> bytes;  ///< red, green, blue; rows follow each other without padding

    /// \param y from the bottom. Black outside.
    Rgb At(int x, int y) const;
    /// Pixels that are not of that colour.
    int CountOther(const Rgb& color) const;

    /// Writes a PPM file. False when it cannot.
    bool Save(const std::string& path) const;
    /// Reads a PPM file (P6, 255). An empty picture when it cannot.
    static Picture Load(const std::string& path);
};

/// Whether no channel of any pixel differs by more than \p tolerance, save for at most
/// \p allowedPixels pixels. When it is not so, both pictures and their difference are saved under
/// \p name in the build folder's differences/.
testing::AssertionResult PicturesMatch(const Picture& expected, const Picture& actual,
                                       const std::string& name, int tolerance = 1,
                                       int allowedPixels = 0);

/// Pixels whose colour differs by more than a level though they lie on no edge: all that is next to
/// them in the expected picture has about the same colour.
int CountDifferentOffEdges(const Picture& expected, const Picture& actual);

/// A context with a drawing surface of that many pixels, current on this thread while it lives.
/// Contexts of one thread end in the reverse of their order; the one before is then current again.
///
///     HeadlessContext context(64, 64);
///     REQUIRE_CONTEXT(context);
class HeadlessContext
{
public:
    enum class Functions
    {
        Fixed,    ///< OpenGL's fixed functions and newer ones
        OnlyCore  ///< of a core profile, without the fixed functions
    };
    HeadlessContext(int width, int height, Functions functions = Functions::Fixed);
    ~HeadlessContext();
    HeadlessContext(const HeadlessContext&) = delete;
    HeadlessContext& operator=(const HeadlessContext&) = delete;

    bool IsValid() const;
    /// Why there is none.
    const std::string& Reason() const;

    /// \param y from the bottom.
    Rgb Pixel(int x, int y) const;
    Picture ReadPixels() const;
    /// 0 to 1 at a pixel.
    float Depth(int x, int y) const;

private:
    struct State;
    std::unique_ptr<State> state_;
};

/// Skips the test where no context can be had, saying why.
#define REQUIRE_CONTEXT(context)                               \
    if (!(context).IsValid())                                  \
    {                                                          \
        FAIL() << "no OpenGL context: " << (context).Reason(); \
    }                                                          \
    static_assert(true)
