// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Helpers that read the metrics of a platform font. Internal to extrude/ and scene/.

#include "host/CString.h"
#include "platform/Fonts.h"

#include <cstddef>
#include <memory>

/// A memory device context in which a font is selected. The destructor deletes the context.
class FontDC
{
public:
    /// \param font borrowed; null keeps the context's default font.
    explicit FontDC(HFONT font);
    ~FontDC();
    FontDC(const FontDC&) = delete;
    FontDC& operator=(const FontDC&) = delete;

    operator HDC() const { return dc_; }

private:
    HDC dc_;
    HGDIOBJ previous_ = nullptr;
};

/// The outline metrics of a font. The font's names follow in the same block of memory; the metrics
/// hold their offsets.
struct OutlineMetricsBuffer
{
    std::unique_ptr<std::byte[]> bytes;  ///< null when the font has no outlines
    UINT size = 0;                       ///< in bytes

    OUTLINETEXTMETRICA* Get() const { return reinterpret_cast<OUTLINETEXTMETRICA*>(bytes.get()); }
};

OutlineMetricsBuffer ReadOutlineMetrics(HFONT font);

/// The full name in a record of an enumerated font. The name may fill its field to the last byte,
/// without a final zero.
CString FullNameOf(const ENUMLOGFONTA& record);
