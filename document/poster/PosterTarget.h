// SPDX-License-Identifier: MIT
#pragma once

#include "document/poster/Poster.h"
#include "platform/Bitmaps.h"
#include "platform/Export.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace orvane
{

class Strip;

/// A picture file that is written from the top, strip by strip. It appears under its name with
/// Finish; a target that ends before that leaves nothing. Every function throws Error.
class ORVANE_API PosterTarget
{
public:
    virtual ~PosterTarget() = default;

    /// Makes the file.
    /// \param bands describes the bitmap of the bands, whose colours the file has too
    virtual void Open(const BITMAPINFO& bands) = 0;
    /// The offset of a block of rows in the file; 0 when only their order counts.
    virtual std::uint64_t OffsetOf(int top, int height) const = 0;
    /// Writes the next rows.
    /// \param goOn asked now and then when writing takes time; its answer false ends the writing
    virtual void WriteRows(int top, const Strip& rows, const std::function<bool()>& goOn) = 0;
    virtual void Finish() = 0;
};

/// Throws OptionError or Error when no file can have this format, size and number of bits.
ORVANE_API void CheckTarget(const PosterSettings& settings);

/// Throws Error when the file cannot be made.
ORVANE_API std::unique_ptr<PosterTarget> MakeTarget(const PosterSettings& settings);

}  // namespace orvane
