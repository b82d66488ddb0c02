// SPDX-License-Identifier: MIT
#pragma once

#include "pictures/RowFormat.h"
#include "platform/Types.h"

#include <cstddef>

namespace orvane
{

/// The rows of a band's bitmap that become a row of the picture: \p samples rows, the lowest first,
/// with \p samples pixels for each pixel of the picture. Each pixel is blue, green and red, and may
/// have a fourth byte.
struct SampleRows
{
    const BYTE* first;
    /// The same place of the drawing over black, when \p first is the drawing over white; null for
    /// a picture that is not transparent.
    const BYTE* overBlack;
    std::size_t rowBytes;  ///< from one row to the next
    int samples;           ///< 1 to 4
    int width;             ///< in pixels of the picture
};

/// Makes a row of a BMP, whose pixels are the averages of squares, rounded to the nearest.
/// \param bytes of a pixel, 3 or 4
void AverageBgr(const SampleRows& rows, int bytes, BYTE* out);

/// Makes a row in another format than that of BMPs: red, green, blue, and straight alpha if the
/// drawing over black is there. All are averages, rounded to the nearest.
void AverageTo(RowFormat format, const SampleRows& rows, BYTE* out);

}  // namespace orvane
