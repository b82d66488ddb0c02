// SPDX-License-Identifier: MIT
#include "platform/posix/Handles.h"

#include <cstdint>
#include <deque>
#include <limits>
#include <mutex>
#include <utility>

namespace posix
{
namespace
{

/// One slot of the table. A handle consists of the slot's place and its generation, which grows
/// when an object is removed, so that an old handle never names the slot's next object.
struct Slot
{
    std::shared_ptr<HandleObject> object;
    MakeKernelObject make = nullptr;  // makes the object at its first use; null after that
    std::uint32_t generation = 0;
    std::uint32_t nextFree = 0;  // the next free place plus 1; 0 when there is no next one

    bool IsEmpty() const { return object == nullptr && make == nullptr; }
};

struct Table
{
    std::mutex mutex;
    std::deque<Slot> slots;
    std::uint32_t firstFree = 0;  // the first free place plus 1; 0 when no place is free
};

// Handles are multiples of four, as callers may expect of handles, and never null.
constexpr int placeShift = 2;
constexpr int generationShift = 34;
constexpr std::uint32_t lastGeneration = (1u << 30) - 1;

/// Never destroyed, because static objects close their handles while the process ends.
Table& TheTable()
{
    static Table* const table = new Table;
    return *table;
}

/// The slot that a handle names; null when the handle names no slot. The caller has locked the
/// table.
Slot* FindSlot(Table& table, const void* handle)
{
    const std::uint64_t value = reinterpret_cast<std::uintptr_t>(handle);
    const std::uint64_t place = value >> placeShift & std::numeric_limits<std::uint32_t>::max();
    if (value % (1u << placeShift) != 0 || place == 0 || place > table.slots.size())
    {
        return nullptr;
    }
    Slot& slot = table.slots[place - 1];
    return slot.generation == value >> generationShift && !slot.IsEmpty() ? &slot : nullptr;
}

std::shared_ptr<HandleObject> Made(Slot& slot)
{
    if (slot.object == nullptr)
    {
        slot.object = slot.make();
        slot.make = nullptr;
    }
    return slot.object;
}

/// Frees a slot and returns its object. Allocates nothing, because destructors close handles.
std::shared_ptr<HandleObject> Empty(Table& table, Slot& slot, const void* handle)
{
    slot.make = nullptr;
    if (slot.generation < lastGeneration)  // otherwise the slot is never used again
    {
        ++slot.generation;
        const std::uint64_t value = reinterpret_cast<std::uintptr_t>(handle);
        slot.nextFree = table.firstFree;
        table.firstFree = static_cast<std::uint32_t>(value >> placeShift);
    }
    return std::exchange(slot.object, nullptr);
}

void* Enter(std::shared_ptr<HandleObject> object, MakeKernelObject make)
{
    Table& table = TheTable();
    const std::lock_guard lock(table.mutex);
    if (table.firstFree == 0)
    {
        table.slots.emplace_back();
        table.firstFree = static_cast<std::uint32_t>(table.slots.size());
    }
    const std::uint64_t place = table.firstFree;
    Slot& slot = table.slots[place - 1];
    table.firstFree = slot.nextFree;
    slot.object = std::move(object);
    slot.make = make;
    const std::uint64_t handle =
        std::uint64_t{slot.generation} << generationShift | place << placeShift;
    return reinterpret_cast<void*>(handle);  // NOLINT(performance-no-int-to-ptr): never followed
}

}  // namespace

void* AddHandle(std::shared_ptr<HandleObject> object)
{
    return Enter(std::move(object), nullptr);
}

void* AddHandle(MakeKernelObject make)
{
    return Enter(nullptr, make);
}

std::shared_ptr<HandleObject> FindHandle(const void* handle)
{
    Table& table = TheTable();
    const std::lock_guard lock(table.mutex);
    Slot* const slot = FindSlot(table, handle);
    return slot == nullptr ? nullptr : Made(*slot);
}

std::shared_ptr<HandleObject> RemoveHandle(const void* handle)
{
    Table& table = TheTable();
    const std::lock_guard lock(table.mutex);
    Slot* const slot = FindSlot(table, handle);
    return slot == nullptr ? nullptr : Empty(table, *slot, handle);
}

bool RemoveKernelObject(const void* handle)
{
    std::shared_ptr<HandleObject> object;  // ends after the lock
    Table& table = TheTable();
    const std::lock_guard lock(table.mutex);
    Slot* const slot = FindSlot(table, handle);
    const bool isKernelObject =
        slot != nullptr &&
        (slot->make != nullptr || dynamic_cast<const KernelObject*>(slot->object.get()) != nullptr);
    if (isKernelObject)
    {
        object = Empty(table, *slot, handle);
    }
    return isKernelObject;
}

}  // namespace posix
