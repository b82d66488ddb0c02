// SPDX-License-Identifier: MIT
#include "extrude/OrvFontList.h"

OrvFontList::OrvFontList(int blockSize) : TypedList(blockSize) {}

OrvFontList::~OrvFontList()
{
    RemoveAll();
}

void OrvFontList::RemoveAll()
{
    while (!IsEmpty())
    {
        delete RemoveHead();
    }
}

POSITION OrvFontList::FindName(const CString& name) const
{
    return FindNamed(name, [](const OrvFont* font) { return font->GetFullName(); });
}

OrvFont* OrvFontList::InsertSorted(OrvFont* font)
{
    return InsertInOrder(font);
}

const CRuntimeClass* OrvFontList::GetElementClass() const
{
    return RUNTIME_CLASS(OrvFont);
}
