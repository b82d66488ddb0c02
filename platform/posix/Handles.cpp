// SPDX-License-Identifier: MIT
#include "platform/posix/Handles.h"

#include <cstdint>
#include <mutex>
#include <unordered_map>

namespace posix
{
namespace
{

struct Table
{
    std::mutex mutex;
    std::unordered_map<std::uintptr_t, std::shared_ptr<HandleObject>> objects;
    std::uintptr_t next = 4;  // handles are multiples of four, as elsewhere
};

// Never destroyed: objects with static storage close their handles while the process ends.
Table& TheTable()
{
    static Table* const table = new Table;
    return *table;
}

}  // namespace

void* AddHandle(std::shared_ptr<HandleObject> object)
{
    Table& table = TheTable();
    const std::lock_guard lock(table.mutex);
    const std::uintptr_t handle = table.next;
    table.next += 4;
    table.objects.emplace(handle, std::move(object));
    return reinterpret_cast<void*>(handle);  // NOLINT(performance-no-int-to-ptr): never followed
}

std::shared_ptr<HandleObject> FindHandle(const void* handle)
{
    Table& table = TheTable();
    const std::lock_guard lock(table.mutex);
    const auto found = table.objects.find(reinterpret_cast<std::uintptr_t>(handle));
    return found == table.objects.end() ? nullptr : found->second;
}

std::shared_ptr<HandleObject> RemoveHandle(const void* handle)
{
    Table& table = TheTable();
    const std::lock_guard lock(table.mutex);
    const auto found = table.objects.find(reinterpret_cast<std::uintptr_t>(handle));
    if (found == table.objects.end())
    {
        return nullptr;
    }
    std::shared_ptr<HandleObject> object = std::move(found->second);
    table.objects.erase(found);
    return object;
}

}  // namespace posix
