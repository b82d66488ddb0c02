// SPDX-License-Identifier: MIT
// The lists of named transforms, of saved cameras and of scene templates. NamedTransformList,
// NamedViewList and SceneTemplateList differ only in the class of their elements.

#include "scene/NamedTransformList.h"
#include "scene/NamedViewList.h"
#include "scene/SceneTemplateList.h"

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

POSITION NamedViewList::FindName(const CString& name) const
{
    return FindNamed(name, [](const NamedView* view) { return view->GetName(); });
}

const CRuntimeClass* NamedViewList::GetElementClass() const
{
    return RUNTIME_CLASS(NamedView);
}

POSITION SceneTemplateList::FindName(const CString& name) const
{
    return FindNamed(name, [](const SceneTemplate* candidate) { return candidate->GetName(); });
}

SceneTemplate* SceneTemplateList::InsertAlphabetically(SceneTemplate* newTemplate)
{
    return InsertInOrder(newTemplate);
}

const CRuntimeClass* SceneTemplateList::GetElementClass() const
{
    return RUNTIME_CLASS(SceneTemplate);
}
