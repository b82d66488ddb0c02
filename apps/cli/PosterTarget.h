// SPDX-License-Identifier: MIT
#pragma once

#include "apps/cli/Poster.h"
#include "platform/Bitmaps.h"

#include <cstdint>
#include <functional>
#include <memory>

class Strip;

/// A picture that is written from the top, some rows after the other. It appears under its name
/// with Finish; destroyed before that, it leaves nothing. Everything throws Failure.
class PosterTarget
{
public:
    virtual ~PosterTarget() = default;

    /// Makes the file.
    /// \param bands what the bands are like: their colours are the file's.
    virtual void Open(const BITMAPINFO& bands) = 0;
    /// Where rows go in the file; 0 where only their order counts.
    virtual std::uint64_t PlaceOf(int top, int height) const = 0;
    /// The next rows. \param goOn is asked now and then when it takes time; false ends it.
    virtual void WriteRows(int top, const Strip& rows, const std::function<bool()>& goOn) = 0;
    virtual void Finish() = 0;
};

/// Throws UsageError or Failure when there is no such picture.
void CheckTarget(const PosterSettings& settings);
/// Throws Failure when its file cannot be made.
std::unique_ptr<PosterTarget> MakeTarget(const PosterSettings& settings);
