// SPDX-License-Identifier: MIT
#pragma once

#include "host/CArchive.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <utility>

/// The growable array behind every array class: elements held by value, one growth rule. Indices
/// are not checked. Element has a default constructor and is copied by assignment.
///
/// - SetSize stores a grow-by other than -1 first. Size 0 frees the block. The first allocation is
///   exactly the size asked for; growing past the capacity allocates max(size, capacity + growBy).
///   While growBy is -1 the capacity grows by half instead.
/// - Shrinking lowers the size only: the surplus elements stay, and growing again within the
///   capacity shows them as they were.
///
/// \tparam SetAtGrowStep the grow-by that SetAtGrow hands to SetSize; -1 keeps the stored one.
template <typename Element, int SetAtGrowStep = -1>
class GrowableArray
{
public:
    GrowableArray() = default;
    GrowableArray(const GrowableArray& other) { *this = other; }
    ~GrowableArray() = default;

    /// Empties the array, then copies the elements into a block of exactly their number. The
    /// grow-by is not copied.
    GrowableArray& operator=(const GrowableArray& other)
    {
        if (this != &other)
        {
            SetSize(0);
            SetSize(other.size);
            std::copy_n(other.data.get(), size, data.get());
        }
        return *this;
    }

    int GetSize() const { return size; }
    int GetUpperBound() const { return size - 1; }

    void SetSize(int newSize, int newGrowBy = -1)
    {
        if (newGrowBy != -1)
        {
            growBy = newGrowBy;
        }
        if (newSize <= 0)
        {
            data.reset();
            size = maxSize = 0;
        }
        else
        {
            if (newSize > maxSize)
            {
                Reallocate(CapacityFor(newSize));
            }
            size = newSize;
        }
    }

    /// Gives the block exactly the size in use.
    void FreeExtra()
    {
        if (maxSize != size)
        {
            Reallocate(size);
        }
    }

    void RemoveAll() { SetSize(0); }

    Element GetAt(int index) const { return data[index]; }
    Element operator[](int index) const { return data[index]; }
    Element* GetElement(int index) { return &data[index]; }
    const Element* GetElement(int index) const { return &data[index]; }

    void SetAt(int index, const Element& element) { data[index] = element; }

    void SetAtGrow(int index, const Element& element)
    {
        if (index < size)
        {
            data[index] = element;
            return;
        }
        // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): it may be one of ours
        const Element copy = element;
        SetSize(index + 1, SetAtGrowStep);
        data[index] = copy;
    }

    /// Returns the new element's index.
    int Add(const Element& element)
    {
        const int index = size;
        SetAtGrow(index, element);
        return index;
    }

    /// Moves the elements from \p index on up by \p count, or grows up to \p index, and puts copies
    /// of the element there. A count of 0 only grows; a negative one does nothing.
    void InsertAt(int index, const Element& element, int count = 1)
    {
        if (count < 0)
        {
            return;
        }
        // It may be one of ours, and the block may move.
        const Element copy = element;  // NOLINT(performance-unnecessary-copy-initialization)
        OpenGap(index, count);
        std::fill_n(data.get() + index, count, copy);
    }

    /// Inserts copies of another array's elements; nothing for an empty one. The array itself may
    /// be given.
    void InsertAt(int index, const GrowableArray* other)
    {
        const int count = other->size;
        if (count == 0)
        {
            return;
        }
        const GrowableArray copy = *other;
        OpenGap(index, count);
        std::copy_n(copy.data.get(), count, data.get() + index);
    }

    void RemoveAt(int index, int count = 1)
    {
        std::copy(data.get() + index + count, data.get() + size, data.get() + index);
        size -= count;
    }

protected:
    /// Reads \p count elements with \p readElement(Element&) over those that are there; in the end
    /// the block is as after SetSize(count). Room is made as the elements arrive, never for a
    /// stored count alone. Throws badIndex for a negative count, and what \p readElement throws;
    /// the array then ends with the element that could not be read.
    template <typename ReadElement>
    void ReadElements(std::int64_t count, ReadElement readElement)
    {
        if (count < 0 || count > std::numeric_limits<int>::max())
        {
            AfxThrowArchiveException(CArchiveException::badIndex);
        }
        if (count == 0)
        {
            RemoveAll();
            return;
        }
        const int capacity = CapacityFor(static_cast<int>(count));
        size = 0;
        while (size < count)
        {
            if (size == maxSize)
            {
                Reallocate(
                    static_cast<int>(std::min<std::int64_t>(count, std::int64_t{size} * 2 + 64)));
            }
            ++size;
            readElement(data[size - 1]);
        }
        if (maxSize != capacity)
        {
            Reallocate(capacity);
        }
    }

public:
    std::unique_ptr<Element[]> data;  ///< owned
    int size = 0;                     ///< elements in use
    int maxSize = 0;                  ///< elements that the block has room for
    int growBy = 0;                   ///< elements; -1: half as many again

private:
    int CapacityFor(int newSize) const
    {
        if (newSize <= maxSize)
        {
            return maxSize;
        }
        if (data == nullptr)
        {
            return newSize;
        }
        const std::int64_t grown =
            std::int64_t{maxSize} + (growBy == -1 ? maxSize / 2 + 4 : growBy);
        return static_cast<int>(
            std::clamp<std::int64_t>(grown, newSize, std::numeric_limits<int>::max()));
    }

    void Reallocate(int capacity)
    {
        std::unique_ptr<Element[]> block;
        if (capacity > 0)
        {
            block = std::make_unique<Element[]>(capacity);
            std::copy_n(data.get(), std::min(size, capacity), block.get());
        }
        data = std::move(block);
        maxSize = capacity;
    }

    void OpenGap(int index, int count)
    {
        const int oldSize = size;
        if (index < oldSize)
        {
            SetSize(oldSize + count);
            std::copy_backward(data.get() + index, data.get() + oldSize,
                               data.get() + oldSize + count);
        }
        else
        {
            SetSize(index + count);
        }
    }
};
