// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/DVector.h"
#include "host/CArchive.h"
#include "host/MadeWhenUsed.h"

#include <algorithm>

/// The centres of a node's eight sizing handles: an array of DVectors, all 0 at first, that takes
/// no memory until it is used. It is indexed, walked and passed on as an array is, but its own size
/// is not that of the array.
class SizingHandles
{
public:
    static constexpr int count = 8;
    using Centers = DVector[count];

    SizingHandles() = default;
    SizingHandles(const SizingHandles&) = delete;
    SizingHandles& operator=(const SizingHandles&) = delete;

    operator Centers&() { return block_.Get().centers; }
    operator const Centers&() const { return block_.Get().centers; }
    DVector* operator->() { return *this; }
    const DVector* operator->() const { return *this; }
    DVector* begin() { return *this; }
    DVector* end() { return *this + count; }
    const DVector* begin() const { return *this; }
    const DVector* end() const { return *this + count; }
    static constexpr int size() { return count; }

    /// A look at them, not to be kept.
    const DVector* Read() const { return block_.Read().centers; }

    /// The first \p number of them from another node's.
    void CopyFirst(const SizingHandles& other, int number)
    {
        if (block_.IfMade() != nullptr || other.block_.IfMade() != nullptr)
        {
            std::copy_n(other.Read(), number, begin());
        }
    }

    /// The records of the eight. Storing them does not make them.
    void Serialize(CArchive& archive)
    {
        if (archive.IsLoading())
        {
            block_.Get().Serialize(archive);
            return;
        }
        Block_ stored = block_.Read();
        stored.Serialize(archive);
    }

private:
    struct Block_
    {
        void Serialize(CArchive& archive)
        {
            for (DVector& center : centers)
            {
                center.Serialize(archive);
            }
        }

        Centers centers;
    };

    MadeWhenUsed<Block_> block_;
};
