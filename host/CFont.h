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

    /// FALSE when the platform refuses. A font already held is deleted first; while that is
    /// refused, it stays and the result is FALSE.
    BOOL CreateFontIndirect(const LOGFONTA* description);
    /// FALSE when there is no font, or it is still selected into a device context and so stays.
    BOOL DeleteObject();

    HFONT GetSafeHandle() const { return font_; }
    operator HFONT() const { return font_; }

private:
    HFONT font_ = nullptr;
};
