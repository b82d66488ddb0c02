// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Handles of this backend: opaque values that name shared objects in one table, so that a stale or
/// foreign handle is refused instead of followed. Safe from any thread.

#include "platform/Errors.h"
#include "platform/Types.h"

#include <memory>

namespace posix
{

/// What a handle names.
struct HandleObject
{
    virtual ~HandleObject() = default;
};

/// What CloseHandle takes: mutexes, events, files, mappings.
struct KernelObject : HandleObject
{};

/// Enters an object and returns its new handle, never null.
void* AddHandle(std::shared_ptr<HandleObject> object);

using MakeHandleObject = std::shared_ptr<HandleObject> (*)();
/// The same for an object that is made when its handle is used first: every node has a mutex, and
/// few are ever waited for.
void* AddHandle(MakeHandleObject make);

/// The object that a handle names, null when it names none.
std::shared_ptr<HandleObject> FindHandle(const void* handle);

/// Takes a handle out of the table; the object lives as long as somebody shares it. Null when it
/// was not in the table.
std::shared_ptr<HandleObject> RemoveHandle(const void* handle);

/// The object of the wanted kind that a handle names, null when there is none.
template <typename Object>
std::shared_ptr<Object> Resolve(const void* handle)
{
    return std::dynamic_pointer_cast<Object>(FindHandle(handle));
}

/// The same. When there is none, the error becomes ERROR_INVALID_HANDLE.
template <typename Object>
std::shared_ptr<Object> ResolveOrRefuse(const void* handle)
{
    std::shared_ptr<Object> object = Resolve<Object>(handle);
    if (object == nullptr)
    {
        SetLastError(ERROR_INVALID_HANDLE);
    }
    return object;
}

}  // namespace posix
