// SPDX-License-Identifier: MIT
#pragma once

#include "host/CObject.h"
#include "platform/Fonts.h"

/// Owns a font handle. Not copyable.
class ORVANE_API CFont : public CObject
{
    DECLARE_DYNAMIC(CFont)

public:
    CFont() = default;
    ~CFont() override;
    CFont(const CFont&) = delete;
    CFont& operator=(const CFont&) = delete;

    /// FALSE when the platform refuses. A font already held is deleted first.
    BOOL CreateFontIndirect(const LOGFONTA* description);
    BOOL DeleteObject();

    HFONT GetSafeHandle() const { return font_; }
    operator HFONT() const { return font_; }

private:
    HFONT font_ = nullptr;
};
