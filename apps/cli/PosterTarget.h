// SPDX-License-Identifier: MIT
#pragma once

#include "apps/cli/Poster.h"
#include "platform/Bitmaps.h"
#include "platform/DeviceContexts.h"

#include <cstddef>
#include <functional>
#include <memory>

/// Some rows of the picture as a bitmap that a device context has selected.
class Strip
{
public:
    Strip();
    ~Strip();
    Strip(const Strip&) = delete;
    Strip& operator=(const Strip&) = delete;

    /// Takes over a bitmap, in place of the one before, and its pixels; null for none.
    void Take(HBITMAP bitmap, void* bits, int width, int height, int bitCount);

    HDC GetDC() const { return dc_; }
    int Width() const { return width_; }
    int Height() const { return height_; }
    /// Rows count from the top.
    BYTE* Row(int y) const { return bits_ + rowBytes_ * static_cast<std::size_t>(height_ - 1 - y); }

private:
    HDC dc_;
    HBITMAP bitmap_ = nullptr;
    HGDIOBJ previous_ = nullptr;
    BYTE* bits_ = nullptr;
    std::size_t rowBytes_ = 0;
    int width_ = 0;
    int height_ = 0;
};

/// A picture that is filled from the top, some rows after the other, which alone take memory. It
/// appears under its name with Finish; destroyed before that, it leaves nothing. Everything throws
/// Failure.
class PosterTarget
{
public:
    virtual ~PosterTarget() = default;

    /// Makes the file.
    /// \param bands what the bands are like: their colours are the file's.
    virtual void Open(const BITMAPINFO& bands) = 0;
    /// The rows that are drawn next.
    virtual Strip& BeginRows(int top, int height) = 0;
    /// They are drawn. \param goOn is asked now and then when it takes time; false ends it.
    virtual void EndRows(const std::function<bool()>& goOn) = 0;
    virtual void Finish() = 0;
};

/// Throws UsageError or Failure when there is no such picture.
void CheckTarget(const PosterSettings& settings);
/// Throws Failure when its file cannot be made.
std::unique_ptr<PosterTarget> MakeTarget(const PosterSettings& settings);
