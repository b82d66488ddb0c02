// SPDX-License-Identifier: MIT
// The linker lets the library call these functions in place of those whose names they wrap
// (tests/reliability/wrapped-calls.txt). Each either fails as the wrapped function can fail, or
// calls it.
#include "tests/reliability/Refusals.h"

#include <EGL/egl.h>
#include <GL/glu.h>
#include <dirent.h>
#include <fcntl.h>
#include <ft2build.h>
#include <png.h>
#include <stdio_ext.h>
#include <sys/mman.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <ios>
#include <system_error>
#include FT_FREETYPE_H
#include FT_SIZES_H

// Shared libraries call the same functions, and the linker demands that they could see these, too.
#pragma GCC visibility push(default)

/// Defines the function that is called in place of NAME: it fails with the value FAILURE, after the
/// statements of PREPARE, when calls of the kind are refused.
#define WRAP(RESULT, NAME, KIND, PREPARE, FAILURE, PARAMETERS, ARGUMENTS) \
    extern "C" RESULT __real_##NAME PARAMETERS;                           \
    extern "C" RESULT __wrap_##NAME PARAMETERS;                           \
    RESULT __wrap_##NAME PARAMETERS                                       \
    {                                                                     \
        if (Refusals::Refuse(CallKind::KIND))                             \
        {                                                                 \
            PREPARE;                                                      \
            return FAILURE;                                               \
        }                                                                 \
        return __real_##NAME ARGUMENTS;                                   \
    }

namespace
{

constexpr int errorSeen = 0x20;  // of a stream: what ferror asks for

}  // namespace

// Memory

WRAP(void*, calloc, Memory, errno = ENOMEM, nullptr, (std::size_t count, std::size_t size),
     (count, size))
WRAP(void*, aligned_alloc, Memory, errno = ENOMEM, nullptr,
     (std::size_t alignment, std::size_t size), (alignment, size))
WRAP(GLUtesselator*, gluNewTess, Memory, , nullptr, (), ())
WRAP(GLUquadric*, gluNewQuadric, Memory, , nullptr, (), ())
WRAP(FT_Error, FT_New_Size, Memory, , FT_Err_Out_Of_Memory, (FT_Face face, FT_Size* size),
     (face, size))
WRAP(FT_Error, FT_Init_FreeType, Memory, , FT_Err_Out_Of_Memory, (FT_Library * library), (library))
WRAP(FT_Error, FT_Load_Glyph, Memory, , FT_Err_Out_Of_Memory,
     (FT_Face face, FT_UInt index, FT_Int32 flags), (face, index, flags))
WRAP(png_structp, png_create_write_struct, Memory, , nullptr,
     (png_const_charp version, png_voidp pointer, png_error_ptr error, png_error_ptr warning),
     (version, pointer, error, warning))
WRAP(png_infop, png_create_info_struct, Memory, , nullptr, (png_const_structrp png), (png))
WRAP(std::FILE*, fdopen, Memory, errno = ENOMEM, nullptr, (int descriptor, const char* mode),
     (descriptor, mode))

// Opening

extern "C" int __real_open(const char* path, int flags, ...);
extern "C" int __wrap_open(const char* path, int flags, ...);
int __wrap_open(const char* path, int flags, ...)
{
    if (Refusals::Refuse(CallKind::Open))
    {
        errno = EMFILE;
        return -1;
    }
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return __real_open(path, flags, mode);
}

extern "C" int __real_openat(int folder, const char* path, int flags, ...);
extern "C" int __wrap_openat(int folder, const char* path, int flags, ...);
int __wrap_openat(int folder, const char* path, int flags, ...)
{
    if (Refusals::Refuse(CallKind::Open))
    {
        errno = EMFILE;
        return -1;
    }
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return __real_openat(folder, path, flags, mode);
}

WRAP(std::FILE*, fopen, Open, errno = EMFILE, nullptr, (const char* path, const char* mode),
     (path, mode))
WRAP(DIR*, opendir, Open, errno = EMFILE, nullptr, (const char* path), (path))
WRAP(FT_Error, FT_New_Face, Open, , FT_Err_Cannot_Open_Resource,
     (FT_Library library, const char* path, FT_Long index, FT_Face* face),
     (library, path, index, face))
WRAP(FT_Error, FT_Open_Face, Open, , FT_Err_Cannot_Open_Resource,
     (FT_Library library, const FT_Open_Args* from, FT_Long index, FT_Face* face),
     (library, from, index, face))
// std::filebuf::open
WRAP(void*, _ZNSt13basic_filebufIcSt11char_traitsIcEE4openEPKcSt13_Ios_Openmode, Open,
     errno = EMFILE, nullptr, (void* buffer, const char* path, std::ios_base::openmode mode),
     (buffer, path, mode))

// Reading

WRAP(ssize_t, read, Read, errno = EIO, -1, (int descriptor, void* bytes, std::size_t count),
     (descriptor, bytes, count))
WRAP(ssize_t, pread, Read, errno = EIO, -1,
     (int descriptor, void* bytes, std::size_t count, off_t offset),
     (descriptor, bytes, count, offset))
WRAP(std::size_t, fread, Read, errno = EIO;
     file->_flags |= errorSeen, 0,
     (void* bytes, std::size_t size, std::size_t count, std::FILE* file),
     (bytes, size, count, file))

// Writing

WRAP(ssize_t, write, Write, errno = ENOSPC, -1,
     (int descriptor, const void* bytes, std::size_t count), (descriptor, bytes, count))
WRAP(ssize_t, pwrite, Write, errno = ENOSPC, -1,
     (int descriptor, const void* bytes, std::size_t count, off_t offset),
     (descriptor, bytes, count, offset))
WRAP(std::size_t, fwrite, Write, errno = ENOSPC;
     file->_flags |= errorSeen, 0,
     (const void* bytes, std::size_t size, std::size_t count, std::FILE* file),
     (bytes, size, count, file))
WRAP(int, fflush, Write, errno = ENOSPC; file->_flags |= errorSeen, EOF, (std::FILE * file), (file))
WRAP(int, ftruncate, Write, errno = ENOSPC, -1, (int descriptor, off_t length),
     (descriptor, length))
WRAP(int, fallocate, Write, errno = ENOSPC, -1,
     (int descriptor, int mode, off_t offset, off_t length), (descriptor, mode, offset, length))

// Closing a file that was read writes nothing and does not fail.
extern "C" int __real_fclose(std::FILE* file);
extern "C" int __wrap_fclose(std::FILE* file);
int __wrap_fclose(std::FILE* file)
{
    const bool isRefused = __fwritable(file) != 0 && Refusals::Refuse(CallKind::Write);
    const int result = __real_fclose(file);
    if (isRefused)
    {
        errno = ENOSPC;
    }
    return isRefused ? EOF : result;
}

// Flushing and renaming

WRAP(int, fsync, Flush, errno = EIO, -1, (int descriptor), (descriptor))
WRAP(int, rename, Rename, errno = EIO, -1, (const char* from, const char* to), (from, to))
WRAP(int, renameat2, Rename, errno = EIO, -1,
     (int fromFolder, const char* from, int toFolder, const char* to, unsigned flags),
     (fromFolder, from, toFolder, to, flags))
WRAP(int, link, Rename, errno = EIO, -1, (const char* from, const char* to), (from, to))
WRAP(int, linkat, Rename, errno = EIO, -1,
     (int fromFolder, const char* from, int toFolder, const char* to, int flags),
     (fromFolder, from, toFolder, to, flags))

// Mapping

WRAP(void*, mmap, Mapping, errno = ENOMEM, MAP_FAILED,
     (void* start, std::size_t length, int protection, int flags, int descriptor, off_t offset),
     (start, length, protection, flags, descriptor, offset))
WRAP(int, mprotect, Mapping, errno = ENOMEM, -1, (void* start, std::size_t length, int protection),
     (start, length, protection))

// Threads: std::thread::_M_start_thread. Its second argument is passed by its address.

extern "C" void
__real__ZNSt6thread15_M_start_threadESt10unique_ptrINS_6_StateESt14default_deleteIS1_EEPFvvE(
    void* thread, void* state, void (*depend)());
extern "C" void
__wrap__ZNSt6thread15_M_start_threadESt10unique_ptrINS_6_StateESt14default_deleteIS1_EEPFvvE(
    void* thread, void* state, void (*depend)());
void __wrap__ZNSt6thread15_M_start_threadESt10unique_ptrINS_6_StateESt14default_deleteIS1_EEPFvvE(
    void* thread, void* state, void (*depend)())
{
    if (Refusals::Refuse(CallKind::Thread))
    {
        throw std::system_error(EAGAIN, std::generic_category());
    }
    __real__ZNSt6thread15_M_start_threadESt10unique_ptrINS_6_StateESt14default_deleteIS1_EEPFvvE(
        thread, state, depend);
}

// OpenGL contexts

WRAP(EGLBoolean, eglInitialize, Context, , EGL_FALSE,
     (EGLDisplay display, EGLint* major, EGLint* minor), (display, major, minor))
WRAP(EGLBoolean, eglChooseConfig, Context, , EGL_FALSE,
     (EGLDisplay display, const EGLint* attributes, EGLConfig* configs, EGLint size, EGLint* count),
     (display, attributes, configs, size, count))
WRAP(EGLContext, eglCreateContext, Context, , EGL_NO_CONTEXT,
     (EGLDisplay display, EGLConfig config, EGLContext share, const EGLint* attributes),
     (display, config, share, attributes))
WRAP(EGLSurface, eglCreatePbufferSurface, Context, , EGL_NO_SURFACE,
     (EGLDisplay display, EGLConfig config, const EGLint* attributes),
     (display, config, attributes))

// Giving a context up does not fail.
extern "C" EGLBoolean __real_eglMakeCurrent(EGLDisplay display, EGLSurface draw, EGLSurface read,
                                            EGLContext context);
extern "C" EGLBoolean __wrap_eglMakeCurrent(EGLDisplay display, EGLSurface draw, EGLSurface read,
                                            EGLContext context);
EGLBoolean __wrap_eglMakeCurrent(EGLDisplay display, EGLSurface draw, EGLSurface read,
                                 EGLContext context)
{
    return context != EGL_NO_CONTEXT && Refusals::Refuse(CallKind::Context)
               ? EGL_FALSE
               : __real_eglMakeCurrent(display, draw, read, context);
}
