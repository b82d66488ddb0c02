// SPDX-License-Identifier: MIT
#include "scene/NamedViewList.h"

POSITION NamedViewList::FindName(const CString& name) const
{
    return FindNamed(name, [](const NamedView* view) { return view->GetName(); });
}

const CRuntimeClass* NamedViewList::GetElementClass() const
{
    return RUNTIME_CLASS(NamedView);
}
