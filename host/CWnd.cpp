// SPDX-License-Identifier: MIT
#include "host/CWnd.h"

IMPLEMENT_DYNAMIC(CWnd, CObject)

void CWnd::SetWindowText(LPCSTR text)
{
    text_ = text;
}
