// SPDX-License-Identifier: MIT
#include "imaging/TextureMapList.h"

TextureMapList::TextureMapList(int blockSize) : TypedList(blockSize) {}

TextureMapList::~TextureMapList() = default;

POSITION TextureMapList::FindName(const CString& name) const
{
    return FindNamed(name, [](const TextureMap* texture) { return texture->GetName(); });
}

const CRuntimeClass* TextureMapList::GetElementClass() const
{
    return RUNTIME_CLASS(TextureMap);
}
