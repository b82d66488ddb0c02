// SPDX-License-Identifier: MIT
#pragma once

#include "host/CString.h"
#include "platform/Export.h"

class OrvFontString;

namespace orvane
{

/// Is told the fonts that loaded texts name. A text whose font is not installed gets another font,
/// or none, and does not keep the name. While an object of this class lives, the texts that its
/// thread loads tell it. Objects of one thread are destroyed in the reverse order of their
/// construction.
class ORVANE_API FontObserver
{
public:
    FontObserver();
    virtual ~FontObserver();
    FontObserver(const FontObserver&) = delete;
    FontObserver& operator=(const FontObserver&) = delete;

    /// Called with each text that was loaded, which has its font by then.
    /// \param storedName the full name in the file, in the file's code page; empty when the text was
    /// stored without a font
    virtual void Loaded(const OrvFontString& text, const CString& storedName) = 0;

    /// The newest object of the calling thread; null when the thread has none.
    static FontObserver* Current();

private:
    FontObserver* previous_;
};

}  // namespace orvane
