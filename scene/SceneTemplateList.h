// SPDX-License-Identifier: MIT
#pragma once

#include "host/TypedList.h"
#include "scene/SceneTemplate.h"

/// A list of scene templates, which it does not own.
class ORVANE_API SceneTemplateList : public TypedList<SceneTemplate>
{
public:
    explicit SceneTemplateList(int blockSize = 10) : TypedList(blockSize) {}

    /// The position of the first template of this name, case-sensitive; null when there is none.
    POSITION FindName(const CString& name) const;

    /// Inserts a template before the first template whose name is greater, so that a sorted list
    /// stays sorted. Returns the inserted template. If the search meets a template of the same name
    /// first, nothing is inserted and the result is null.
    SceneTemplate* InsertAlphabetically(SceneTemplate* newTemplate);

protected:
    const CRuntimeClass* GetElementClass() const override;
};
