// SPDX-License-Identifier: MIT
#pragma once

#include "pictures/PictureWriter.h"

#include <memory>
#include <string>

namespace orvane
{

/// Writes a WebP of 8 bits a channel, in colours with or without alpha. The format allows 16,383
/// pixels a side, and the whole picture is kept in memory until its end, with 4 bytes a pixel: at
/// most 1 GiB.
class WebpWriter final : public PictureWriter
{
public:
    WebpWriter(const PictureFileSettings& settings, OutputFile& output, const std::string& place);
    ~WebpWriter() override;

    void WriteRows(const std::uint8_t* rows, std::size_t stride, int count) override;
    void Finish() override;

private:
    struct Encoder;
    std::unique_ptr<Encoder> encoder_;
};

}  // namespace orvane
