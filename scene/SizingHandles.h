// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/DVector.h"

class DrawingObject;

/// The coordinates in which sizing handles are given: those of the node's parent or the node's own.
enum class HandleSpace
{
    Global,
    Local
};

/// The centres of a node's eight sizing handles in one coordinate system. The object is indexed,
/// walked and passed on like an array of eight DVectors, though the vectors lie in the node's
/// Details: reading them through a constant node allocates nothing, and reaching for them to change
/// them makes the Details.
template <HandleSpace space>
class SizingHandles
{
public:
    static constexpr int count = 8;
    using Centers = DVector[count];

    /// \param node borrowed: the node that this object is a member of.
    explicit SizingHandles(DrawingObject& node) : node_(node) {}
    SizingHandles(const SizingHandles&) = delete;
    SizingHandles& operator=(const SizingHandles&) = delete;

    operator Centers&();
    operator const Centers&() const;

    DVector* begin() { return *this; }
    DVector* end() { return *this + count; }
    const DVector* begin() const { return *this; }
    const DVector* end() const { return *this + count; }
    static constexpr int size() { return count; }

private:
    DrawingObject& node_;
};
