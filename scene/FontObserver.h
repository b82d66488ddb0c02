// SPDX-License-Identifier: MIT
#pragma once

#include "host/CString.h"
#include "host/NewestOfThread.h"
#include "platform/Export.h"
#include "platform/Fonts.h"

class OrvFontString;

namespace orvane
{

/// A font as the record of a text names it.
struct FontRecord
{
    CString name;  ///< the full name in the code page of the file; empty without a font
    ENUMLOGFONTA description = {};
};

/// Is told the fonts that loaded texts name, and may say which font a text is stored with. A text
/// whose font is not installed gets another font, or none, and does not keep the name. While an
/// object of this class lives, the texts that its thread loads and stores ask it. Objects of one
/// thread are destroyed in the reverse order of their construction.
class ORVANE_API FontObserver
{
public:
    FontObserver();
    virtual ~FontObserver();
    FontObserver(const FontObserver&) = delete;
    FontObserver& operator=(const FontObserver&) = delete;

    /// Called with each text that was loaded, which has its font by then.
    virtual void Loaded(const OrvFontString& text, const FontRecord& record);
    /// The font that a text is stored with; null stores the font that it has.
    virtual const FontRecord* ToStore(const OrvFontString& text);

    /// The newest object of the calling thread; null when the thread has none.
    static FontObserver* Current();

private:
    NewestOfThread<FontObserver> place_;
};

}  // namespace orvane
