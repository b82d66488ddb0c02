// SPDX-License-Identifier: MIT
#pragma once

#include "pictures/PictureWriter.h"

#include <memory>
#include <string>

namespace orvane
{

/// The ICC profile of sRGB, the same bytes every time.
const Bytes& StandardProfile();

/// The profile that the file gets: that of the settings, or that of sRGB for colours, or none for
/// greys without a profile.
Bytes ProfileOrStandard(const PictureFileSettings& settings);

/// Reads an ICC profile for pictures from a file. Throws Error when the file is no profile of an
/// RGB, grey or CMYK device.
ORVANE_API Bytes ReadProfile(const std::string& path);

/// The pixels that a profile is for. Throws Error when it is for no known kind.
/// \param place begins the text of the error
ORVANE_API PixelKind KindOfProfile(const Bytes& profile, const std::string& place);

/// Converts rows from one colour space to another with perceptual intent and black point
/// compensation.
class ORVANE_API ColorConversion
{
public:
    /// \param fromProfile empty for sRGB, and for greys with the tone curve of sRGB
    /// Throws Error when lcms2 knows no way from the one to the other.
    ColorConversion(const Bytes& fromProfile, RowFormat from, const Bytes& toProfile, RowFormat to,
                    const std::string& place);
    ~ColorConversion();
    ColorConversion(const ColorConversion&) = delete;
    ColorConversion& operator=(const ColorConversion&) = delete;

    /// Both may be the same memory if pixels take the same number of bytes. Alpha is copied if both
    /// formats have it.
    void Convert(const std::uint8_t* from, std::uint8_t* to, int pixels) const;

private:
    struct Transform;
    std::unique_ptr<Transform> transform_;
};

/// Takes rows in sRGB, converts them to a profile of the kind that the profile is for, and hands
/// them to a writer that stores this profile.
class ORVANE_API ConvertingWriter final : public PictureWriter
{
public:
    /// \param settings the settings of \p writer, whose rows are the converted ones
    /// \param rows the rows in sRGB
    ConvertingWriter(std::unique_ptr<PictureWriter> writer, const PictureFileSettings& settings,
                     RowFormat rows, const std::string& place);

    void WriteRows(const std::uint8_t* rows, std::size_t stride, int count) override;
    void Finish() override { writer_->Finish(); }

private:
    std::unique_ptr<PictureWriter> writer_;
    ColorConversion conversion_;
    int width_;
    Bytes row_;
};

}  // namespace orvane
