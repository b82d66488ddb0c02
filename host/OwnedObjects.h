// SPDX-License-Identifier: MIT
#pragma once

#include "host/CArchive.h"

#include <memory>
#include <vector>

/// Reads the record of a list: a count, then that many references to objects, which the caller
/// owns. Throws badClass for a null reference, an object of another class, and an object that was
/// loaded before.
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
