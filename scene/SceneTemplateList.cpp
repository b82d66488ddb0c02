// SPDX-License-Identifier: MIT
#include "scene/SceneTemplateList.h"

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
