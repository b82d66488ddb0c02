// SPDX-License-Identifier: MIT
#pragma once

#include "host/CObject.h"
#include "host/CString.h"

/// A host's window as the library sees it. A host derives from it or sets the handle, and overrides
/// SetWindowText where text is to appear.
class ORVANE_API CWnd : public CObject
{
    DECLARE_DYNAMIC(CWnd)

public:
    CWnd() = default;
    explicit CWnd(HWND handle) : m_hWnd(handle) {}

    /// The handle, null for a window that does not exist (also when this is null-initialised).
    HWND GetSafeHwnd() const { return m_hWnd; }

    /// Keeps the text; the base shows it nowhere.
    virtual void SetWindowText(LPCSTR text);
    CString GetWindowText() const { return text_; }

    HWND m_hWnd = nullptr;

private:
    CString text_;
};
