// SPDX-License-Identifier: MIT
#pragma once

#include "host/CArchive.h"

#include <memory>
#include <vector>

/// Reads a list's record, a count and then object references, whose objects the caller owns. Raises
/// badClass for a null reference, an object of another class, and one met before in the archive.
template <typename Element>
std::vector<std::unique_ptr<Element>> ReadOwnedObjects(CArchive& archive,
                                                       const CRuntimeClass* elementClass)
{
    std::vector<std::unique_ptr<Element>> objects;
    for (DWORD remaining = archive.ReadCount(); remaining > 0; --remaining)
    {
        objects.push_back(
            std::unique_ptr<Element>(static_cast<Element*>(archive.ReadNewObject(elementClass))));
    }
    return objects;
}
