// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Handles of this backend. A handle is a number that names a shared object in one table, so that
/// an invalid handle is noticed and never used as an address. All functions may be called from any
/// thread.

#include "platform/Errors.h"
#include "platform/Types.h"

#include <memory>

namespace posix
{

/// The base of the objects that handles name.
struct HandleObject
{
    virtual ~HandleObject() = default;
};

/// The base of the objects that CloseHandle takes: mutexes, events, files and file mappings.
struct KernelObject : HandleObject
{};

/// Adds an object to the table and returns its new handle, which is never null.
void* AddHandle(std::shared_ptr<HandleObject> object);

using MakeKernelObject = std::shared_ptr<KernelObject> (*)();
/// Adds an object that is made only when its handle is first used, and returns the handle. Every
/// node of a scene has a mutex, and most of these mutexes are never used.
void* AddHandle(MakeKernelObject make);

/// The object that a handle names; null when the handle names no object.
std::shared_ptr<HandleObject> FindHandle(const void* handle);

/// Removes a handle from the table and returns its object, which lives as long as a shared pointer
/// to it exists. Null when the handle was not in the table, and when its object was never made.
std::shared_ptr<HandleObject> RemoveHandle(const void* handle);

/// Removes the handle of a kernel object from the table. False when the handle names no such
/// object. Neither this function nor RemoveHandle allocates memory, because destructors call them.
bool RemoveKernelObject(const void* handle);

/// The object that a handle names; null when the handle names no object of type Object.
template <typename Object>
std::shared_ptr<Object> Resolve(const void* handle)
{
    return std::dynamic_pointer_cast<Object>(FindHandle(handle));
}

/// Like the function above, but also sets the error ERROR_INVALID_HANDLE when it returns null.
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
