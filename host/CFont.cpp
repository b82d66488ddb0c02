// SPDX-License-Identifier: MIT
#include "host/CFont.h"

IMPLEMENT_DYNAMIC(CFont, CObject)

CFont::~CFont()
{
    DeleteObject();
}

BOOL CFont::CreateFontIndirect(const LOGFONTA* description)
{
    if (font_ != nullptr && !DeleteObject())
    {
        return FALSE;
    }
    font_ = CreateFontIndirectA(description);
    return font_ != nullptr;
}

BOOL CFont::DeleteObject()
{
    if (font_ == nullptr || !::DeleteObject(font_))
    {
        return FALSE;
    }
    font_ = nullptr;
    return TRUE;
}
