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

    /// Deletes the font that this object has, if any, and makes a new font. Returns FALSE when the
    /// old font cannot be deleted, which is then kept, or when the platform cannot make the new
    /// font.
    BOOL CreateFontIndirect(const LOGFONTA* description);
    /// Returns FALSE when there is no font, or when the font is selected into a device context and
    /// so cannot be deleted.
    BOOL DeleteObject();

    HFONT GetSafeHandle() const { return font_; }
    operator HFONT() const { return font_; }

private:
    HFONT font_ = nullptr;
};
