// SPDX-License-Identifier: MIT
#pragma once

#include "host/CObject.h"
#include "host/CString.h"

/// A window of the host. A host sets the handle, or derives from this class and overrides
/// SetWindowText to show the text somewhere.
class ORVANE_API CWnd : public CObject
{
    DECLARE_DYNAMIC(CWnd)

public:
    CWnd() = default;
    explicit CWnd(HWND handle) : m_hWnd(handle) {}

    /// The handle; null for a window that does not exist.
    HWND GetSafeHwnd() const { return m_hWnd; }

    /// Stores the text for GetWindowText. This class does not show it.
    virtual void SetWindowText(LPCSTR text);
    CString GetWindowText() const { return text_; }

    HWND m_hWnd = nullptr;

private:
    CString text_;
};
