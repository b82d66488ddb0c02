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

class OutputFile;
class Strip;

/// A picture file that is written from the top, strip by strip. It appears under its name when its
/// output is committed. A target that ends before that leaves no file. Every function throws Error.
class ORVANE_API PosterTarget
{
public:
    virtual ~PosterTarget() = default;

    /// Writes the header.
    /// \param bands describes the bitmap that bands are drawn into; a file of 8 bits gets the
    /// colour table of this bitmap
    virtual void Open(const BITMAPINFO& bands) = 0;
    /// The offset of a block of rows in the file, in bytes. Always 0 for formats other than BMP,
    /// whose rows are only appended.
    virtual std::uint64_t OffsetOf(int top, int height) const = 0;
    /// Writes the next rows.
    /// \param goOn called now and then while the rows are written; when it returns false, the
    /// writing ends
    virtual void WriteRows(int top, const Strip& rows, const std::function<bool()>& goOn) = 0;
    /// To be called after the last row. Returns when the whole file is on the disk.
    virtual void Finish() = 0;
    /// The file, to be committed when it is finished.
    virtual OutputFile& Output() = 0;
};

/// Throws OptionError or Error when no file can have this format, size and number of bits.
ORVANE_API void CheckTarget(const PosterSettings& settings);

/// Throws Error when the file cannot be made.
ORVANE_API std::unique_ptr<PosterTarget> MakeTarget(const PosterSettings& settings);

}  // namespace orvane
