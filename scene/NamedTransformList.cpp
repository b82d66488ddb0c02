// SPDX-License-Identifier: MIT
#include "scene/NamedTransformList.h"

NamedTransformList::NamedTransformList(int blockSize) : TypedList(blockSize) {}

NamedTransformList::~NamedTransformList() = default;

POSITION NamedTransformList::FindName(const CString& name) const
{
    return FindNamed(name, [](const NamedTransform* transform) { return transform->GetName(); });
}

const CRuntimeClass* NamedTransformList::GetElementClass() const
{
    return RUNTIME_CLASS(NamedTransform);
}
