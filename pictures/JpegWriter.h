// SPDX-License-Identifier: MIT
#pragma once

#include "pictures/PictureWriter.h"

#include <memory>
#include <string>

namespace orvane
{

/// Writes a JPEG of 8 bits a channel: grey, colours or inks. Rows are packed as they come.
class JpegWriter final : public PictureWriter
{
public:
    JpegWriter(const PictureFileSettings& settings, OutputFile& output, const std::string& place);
    ~JpegWriter() override;

    void WriteRows(const std::uint8_t* rows, std::size_t stride, int count) override;
    void Finish() override;

private:
    struct Encoder;
    std::unique_ptr<Encoder> encoder_;
};

}  // namespace orvane
