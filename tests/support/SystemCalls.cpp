// SPDX-License-Identifier: MIT
// The program defines the C library's functions itself and exports them, so that the library calls
// these. They call the C library's own.
#include "tests/support/SystemCalls.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <utility>

#define EXPORTED extern "C" __attribute__((visibility("default")))

namespace
{

SystemCalls* watching = nullptr;

template <typename Function>
Function* Original(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

bool IsFolder(int descriptor)
{
    struct stat status = {};
    return fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode);
}

}  // namespace

SystemCalls::SystemCalls(Judge judge) : judge_(std::move(judge))
{
    watching = this;
}

SystemCalls::~SystemCalls()
{
    watching = nullptr;
}

bool SystemCalls::Permit(const std::string& call)
{
    if (watching == nullptr)
    {
        return true;
    }
    watching->made.push_back(call);
    const int error = watching->judge_ ? watching->judge_(call) : 0;
    if (error != 0)
    {
        errno = error;
    }
    return error == 0;
}

EXPORTED int open(const char* path, int flags, ...)
{
    static auto* const original = Original<int(const char*, int, ...)>("open");
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    const bool isNameless = (flags & O_TMPFILE) == O_TMPFILE;
    if ((isNameless && !SystemCalls::Permit("open nameless")) ||
        ((flags & O_CREAT) != 0 && !SystemCalls::Permit("open new")))
    {
        return -1;
    }
    return original(path, flags, mode);
}

EXPORTED std::size_t fwrite(const void* bytes, std::size_t size, std::size_t count, FILE* file)
{
    static auto* const original =
        Original<std::size_t(const void*, std::size_t, std::size_t, FILE*)>("fwrite");
    // What the test program says itself goes on.
    if (file != stdout && file != stderr && !SystemCalls::Permit("write"))
    {
        return 0;
    }
    return original(bytes, size, count, file);
}

EXPORTED int link(const char* from, const char* to) noexcept
{
    static auto* const original = Original<int(const char*, const char*)>("link");
    return SystemCalls::Permit("link") ? original(from, to) : -1;
}

EXPORTED int linkat(int fromFolder, const char* from, int toFolder, const char* to,
                    int flags) noexcept
{
    static auto* const original = Original<int(int, const char*, int, const char*, int)>("linkat");
    return SystemCalls::Permit("link") ? original(fromFolder, from, toFolder, to, flags) : -1;
}

EXPORTED int rename(const char* from, const char* to) noexcept
{
    static auto* const original = Original<int(const char*, const char*)>("rename");
    return SystemCalls::Permit("rename") ? original(from, to) : -1;
}

EXPORTED int renameat2(int fromFolder, const char* from, int toFolder, const char* to,
                       unsigned flags) noexcept
{
    static auto* const original =
        Original<int(int, const char*, int, const char*, unsigned)>("renameat2");
    return SystemCalls::Permit("exchange") ? original(fromFolder, from, toFolder, to, flags) : -1;
}

EXPORTED int fsync(int descriptor)
{
    static auto* const original = Original<int(int)>("fsync");
    return SystemCalls::Permit(IsFolder(descriptor) ? "flush folder" : "flush file")
               ? original(descriptor)
               : -1;
}

EXPORTED int flock(int descriptor, int operation) noexcept
{
    static auto* const original = Original<int(int, int)>("flock");
    return SystemCalls::Permit(IsFolder(descriptor) ? "lock folder" : "lock file")
               ? original(descriptor, operation)
               : -1;
}
