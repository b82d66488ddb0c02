// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// What the font classes ask of a platform font. Internal.

#include "host/CString.h"
#include "platform/Fonts.h"

#include <cstddef>
#include <memory>

/// A memory device context with a font selected, for the life of the object.
class FontDC
{
public:
    /// \param font borrowed; null keeps the context's own.
    explicit FontDC(HFONT font);
    ~FontDC();
    FontDC(const FontDC&) = delete;
    FontDC& operator=(const FontDC&) = delete;

    operator HDC() const { return dc_; }

private:
    HDC dc_;
    HGDIOBJ previous_ = nullptr;
};

/// A font's outline metrics with the texts that its offsets lead to.
struct OutlineMetricsBuffer
{
    std::unique_ptr<std::byte[]> bytes;  ///< null when the font has no outlines
    UINT size = 0;

    OUTLINETEXTMETRICA* Get() const { return reinterpret_cast<OUTLINETEXTMETRICA*>(bytes.get()); }
};

OutlineMetricsBuffer ReadOutlineMetrics(HFONT font);

/// The record's full name, which may fill its field without a final zero.
CString FullNameOf(const ENUMLOGFONTA& record);
