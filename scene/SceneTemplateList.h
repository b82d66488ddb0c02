// SPDX-License-Identifier: MIT
#pragma once

#include "host/TypedList.h"
#include "scene/SceneTemplate.h"

/// A list of scene templates. The list does not own them.
class ORVANE_API SceneTemplateList : public TypedList<SceneTemplate>
{
public:
    explicit SceneTemplateList(int blockSize = 10) : TypedList(blockSize) {}

    /// The position of the first template with this name (case-sensitive); null when no template
    /// has the name.
    POSITION FindName(const CString& name) const;

    /// Inserts a template before the first template whose name is greater, so that a sorted list
    /// stays sorted. Returns the inserted template. If a template with the same name stands
    /// before that place, the function inserts nothing and returns null.
    SceneTemplate* InsertAlphabetically(SceneTemplate* newTemplate);

protected:
    const CRuntimeClass* GetElementClass() const override;
};
