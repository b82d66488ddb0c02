// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/DVector.h"

class DrawingObject;

/// The coordinates in which sizing handles are given: those of the node's parent (Global) or the
/// node's own (Local).
enum class HandleSpace
{
    Global,
    Local
};

/// The centres of a node's eight sizing handles in one coordinate system. A program uses the object
/// like an array of eight DVectors. The vectors themselves are in the node's Details. Read-only
/// access through a constant node allocates nothing. Access that could change a vector allocates
/// the Details of a node without Details.
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
