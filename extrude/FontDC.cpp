// SPDX-License-Identifier: MIT
#include "extrude/FontDC.h"

#include <cstring>

FontDC::FontDC(HFONT font) : dc_(CreateCompatibleDC(nullptr))
{
    if (font != nullptr)
    {
        previous_ = SelectObject(dc_, font);
    }
}

FontDC::~FontDC()
{
    if (previous_ != nullptr)
    {
        SelectObject(dc_, previous_);
    }
    DeleteDC(dc_);
}

OutlineMetricsBuffer ReadOutlineMetrics(HFONT font)
{
    const FontDC dc(font);
    OutlineMetricsBuffer metrics;
    const UINT size = GetOutlineTextMetricsA(dc, 0, nullptr);
    if (size < sizeof(OUTLINETEXTMETRICA))
    {
        return metrics;
    }
    metrics.bytes = std::make_unique<std::byte[]>(size);
    metrics.size = size;
    GetOutlineTextMetricsA(dc, size, metrics.Get());
    return metrics;
}

CString FullNameOf(const ENUMLOGFONTA& record)
{
    const char* const name = reinterpret_cast<const char*>(record.elfFullName);
    return CString(name, static_cast<int>(strnlen(name, sizeof record.elfFullName)));
}
