// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/DVector.h"
#include "host/CArchive.h"
#include "host/MadeWhenUsed.h"

#include <algorithm>
#include <array>

/// The centres of a node's eight sizing handles: an array of DVectors, all 0 at first, that takes
/// no memory until it is used.
class SizingHandles
{
public:
    static constexpr int count = 8;

    operator DVector*() { return centers_.Get().data(); }
    operator const DVector*() const { return centers_.Get().data(); }
    DVector* begin() { return *this; }
    DVector* end() { return *this + count; }
    const DVector* begin() const { return *this; }
    const DVector* end() const { return *this + count; }
    static constexpr int size() { return count; }

    /// A look at them, not to be kept.
    const DVector* Read() const { return centers_.Read().data(); }

    /// The first \p number of them from another node's.
    void CopyFirst(const SizingHandles& other, int number)
    {
        if (centers_.IfMade() != nullptr || other.centers_.IfMade() != nullptr)
        {
            std::copy_n(other.Read(), number, begin());
        }
    }

    /// The records of the eight. Storing them does not make them.
    void Serialize(CArchive& archive)
    {
        std::array<DVector, count> stored = centers_.Read();
        for (DVector& center : archive.IsStoring() ? stored : centers_.Get())
        {
            center.Serialize(archive);
        }
    }

private:
    MadeWhenUsed<std::array<DVector, count>> centers_;
};
