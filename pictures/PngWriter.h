// SPDX-License-Identifier: MIT
#pragma once

#include "pictures/OrderedJobs.h"
#include "pictures/PictureWriter.h"

#include <string_view>

namespace orvane
{

/// Writes a PNG. Strips of rows are filtered and packed on several threads at the same time. Each
/// becomes a chunk of its own; together the chunks hold one zlib stream.
class PngWriter final : public PictureWriter
{
public:
    PngWriter(const PictureFileSettings& settings, OutputFile& output);

    void WriteRows(const std::uint8_t* rows, std::size_t stride, int count) override;
    void Finish() override;

private:
    void WriteHead(const PictureFileSettings& settings);
    void WriteChunk(std::string_view type, const Bytes& content);
    void PackStrip();
    void WriteStrip(const OrderedJobs::Result& strip);

    OutputFile& output_;
    RowFormat format_;
    std::size_t rowBytes_;
    std::size_t stripRows_;
    Bytes strip_;                 ///< the rows that wait until a strip is complete, from the top
    Bytes lastRow_;               ///< the row above them; empty at the top of the picture
    std::uint32_t checkSum_ = 1;  ///< of all filtered rows so far
    OrderedJobs jobs_;
};

}  // namespace orvane
