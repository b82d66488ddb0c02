// SPDX-License-Identifier: MIT
#pragma once

#include "host/CArchive.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <utility>

/// The base of every array class: an array that grows, with its elements stored by value in one
/// block of memory. Indices are not checked. Element has a default constructor and is copied by
/// assignment.
///
/// The capacity, maxSize, is the number of elements that the block has room for. It changes as
/// follows:
/// - The first allocation has room for exactly the size asked for.
/// - Growing beyond the capacity makes it max(new size, capacity + growBy). While growBy is -1, the
///   capacity grows by half plus 4 instead of by growBy.
/// - Shrinking keeps the capacity. The elements behind the new end are kept, too, and appear again
///   when the array grows within its capacity.
/// - Size 0 frees the block.
///
/// \tparam setAtGrowStep the growBy that SetAtGrow and Add set; -1 keeps the current growBy.
template <typename Element, int setAtGrowStep = -1>
class GrowableArray
{
public:
    GrowableArray() = default;
    GrowableArray(const GrowableArray& other) { *this = other; }
    ~GrowableArray() = default;

    /// Copies the elements into a new block with room for exactly their number. growBy is not
    /// copied.
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

    /// \param newGrowBy becomes growBy, unless it is -1.
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

    /// Allocates a new block with room for exactly the elements in use, unless the capacity is that
    /// already.
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
        // The element is copied first, because it may lie in this array, whose block will move.
        // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
        const Element copy = element;
        SetSize(index + 1, setAtGrowStep);
        data[index] = copy;
    }

    /// Returns the new element's index.
    int Add(const Element& element)
    {
        const int index = size;
        SetAtGrow(index, element);
        return index;
    }

    /// Inserts \p count copies of an element at \p index and moves the elements from there on
    /// behind them. If \p index lies behind the end, the array first grows up to \p index, even if
    /// \p count is 0. A negative count does nothing.
    void InsertAt(int index, const Element& element, int count = 1)
    {
        if (count < 0)
        {
            return;
        }
        // The element is copied first, because it may lie in this array, whose block may move.
        const Element copy = element;  // NOLINT(performance-unnecessary-copy-initialization)
        OpenGap(index, count);
        std::fill_n(data.get() + index, count, copy);
    }

    /// Inserts copies of the elements of another array, or of this array itself, at \p index.
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
    /// Replaces the elements by \p count elements from an archive. The final capacity is the same
    /// as after SetSize(count), but the block grows only as elements are read, so that a wrong
    /// count in a file cannot allocate much memory. Throws badIndex for a negative count.
    /// \param readElement called as readElement(Element&) for each element. If it throws, the array
    /// ends with the element that could not be read.
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
    int size = 0;                     ///< the number of elements
    int maxSize = 0;                  ///< the number of elements that the block has room for
    int growBy = 0;                   ///< by how many elements the block grows; -1: by half plus 4

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
