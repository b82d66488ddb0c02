// SPDX-License-Identifier: MIT
#pragma once

#include "pictures/OrderedJobs.h"
#include "pictures/PictureWriter.h"

#include <memory>
#include <string>

namespace orvane
{

/// Whether a TIFF with these pixels may grow beyond what its 32-bit offsets reach, so that it must
/// be a BigTIFF. Packed rows may become larger than they were, so the answer does not depend on the
/// packing.
/// \param maxBytes the length of a file that 32-bit offsets reach
ORVANE_API bool NeedsBigTiff(const PictureFileSettings& settings,
                             std::uint64_t maxBytes = 0xFFFFFFFF);

/// Writes a TIFF or a BigTIFF in strips. Strips are packed on several threads at the same time. The
/// output must be a regular file, because a TIFF's first bytes are written last.
class TiffWriter final : public PictureWriter
{
public:
    TiffWriter(const PictureFileSettings& settings, OutputFile& output, const std::string& place);
    ~TiffWriter() override;

    void WriteRows(const std::uint8_t* rows, std::size_t stride, int count) override;
    void Finish() override;

private:
    struct Encoder;

    void PackStrip();

    PictureFileSettings settings_;
    std::size_t rowBytes_;
    std::size_t stripRows_;
    Bytes strip_;  ///< the rows that wait until a strip is complete, from the top
    std::unique_ptr<Encoder> encoder_;
    OrderedJobs jobs_;
};

}  // namespace orvane
