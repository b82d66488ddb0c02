// SPDX-License-Identifier: MIT
#pragma once

#include "host/TypedList.h"
#include "scene/SceneTemplate.h"

/// A list of scene templates, which it does not own.
class ORVANE_API SceneTemplateList : public TypedList<SceneTemplate>
{
public:
    explicit SceneTemplateList(int blockSize = 10) : TypedList(blockSize) {}

    /// The first template of that name, case-sensitive; null when there is none.
    POSITION FindName(const CString& name) const;

    /// Inserts a template before the first one with a greater name, so that a sorted list stays
    /// sorted. Null, inserting nothing, when one of that name is met first; otherwise the template.
    SceneTemplate* InsertAlphabetically(SceneTemplate* newTemplate);

protected:
    const CRuntimeClass* GetElementClass() const override;
};
