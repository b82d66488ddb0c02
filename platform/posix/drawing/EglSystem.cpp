// SPDX-License-Identifier: MIT
#include "platform/posix/drawing/EglSystem.h"

#include "platform/HostContext.h"
#include "platform/OpenGL.h"

#include <EGL/eglext.h>

#include <charconv>
#include <cstring>
#include <mutex>
#include <optional>
#include <string_view>
#include <vector>

namespace posix
{
namespace
{

/// The configuration with exactly 8 bits a channel and these bits for the stencil; null when there
/// is none. EGL sorts its list by the depth of colours and puts configurations of ten bits a
/// channel first, so the first configuration may be a wrong one.
EGLConfig FindConfig(EGLDisplay display, EGLint stencilBits)
{
    const EGLint wanted[] = {EGL_SURFACE_TYPE,
                             EGL_PBUFFER_BIT,
                             EGL_RENDERABLE_TYPE,
                             EGL_OPENGL_BIT,
                             EGL_RED_SIZE,
                             8,
                             EGL_GREEN_SIZE,
                             8,
                             EGL_BLUE_SIZE,
                             8,
                             EGL_ALPHA_SIZE,
                             8,
                             EGL_DEPTH_SIZE,
                             24,
                             EGL_STENCIL_SIZE,
                             stencilBits,
                             EGL_NONE};
    EGLint count = 0;
    if (!eglChooseConfig(display, wanted, nullptr, 0, &count) || count <= 0)
    {
        return nullptr;
    }
    std::vector<EGLConfig> configs(static_cast<std::size_t>(count));
    eglChooseConfig(display, wanted, configs.data(), count, &count);
    configs.resize(static_cast<std::size_t>(count));
    for (const EGLConfig config : configs)
    {
        bool isExact = true;
        for (const EGLint name : {EGL_RED_SIZE, EGL_GREEN_SIZE, EGL_BLUE_SIZE, EGL_ALPHA_SIZE})
        {
            EGLint bits = 0;
            eglGetConfigAttrib(display, config, name, &bits);
            isExact = isExact && bits == 8;
        }
        EGLint depth = 0;
        eglGetConfigAttrib(display, config, EGL_DEPTH_SIZE, &depth);
        if (isExact && depth == 24)
        {
            return config;
        }
    }
    return nullptr;
}

/// Makes a context current on a surface of one pixel and asks OpenGL how large a surface may be.
/// EGL's own limit is useless: larger surfaces often work, and EGL does not refuse the surfaces
/// that do not work.
bool FindMaximumSize(EglSystem& system, std::string* reason)
{
    const EGLint attributes[] = {EGL_WIDTH, 1, EGL_HEIGHT, 1, EGL_NONE};
    const EGLContext context = CreateEglContext(system.display, system.plain, EGL_NO_CONTEXT,
                                                ContextProfile::FixedFunctions);
    if (context == EGL_NO_CONTEXT)
    {
        *reason = EglError("eglCreateContext");
        return false;
    }
    const EGLSurface surface = eglCreatePbufferSurface(system.display, system.plain, attributes);
    bool isCurrent = false;
    {
        const orvane::HostContextPause pause;
        const KeptCurrent kept(system.display);
        isCurrent =
            surface != EGL_NO_SURFACE && eglMakeCurrent(system.display, surface, surface, context);
        if (isCurrent)
        {
            GLint size[2] = {};
            glGetIntegerv(GL_MAX_VIEWPORT_DIMS, size);
            system.maximumWidth = size[0];
            system.maximumHeight = size[1];
        }
        else
        {
            *reason =
                EglError(surface == EGL_NO_SURFACE ? "eglCreatePbufferSurface" : "eglMakeCurrent");
        }
    }
    if (surface != EGL_NO_SURFACE)
    {
        eglDestroySurface(system.display, surface);
    }
    eglDestroyContext(system.display, context);
    return isCurrent;
}

/// Opens a display. Nothing, with the reason stored, when it cannot be used.
std::optional<EglSystem> Open(EGLDisplay display, std::string* reason)
{
    if (display == EGL_NO_DISPLAY)
    {
        *reason = "there is no such display";
        return {};
    }
    if (!eglInitialize(display, nullptr, nullptr))
    {
        *reason = EglError("eglInitialize");
        return {};
    }
    if (!eglBindAPI(EGL_OPENGL_API))
    {
        *reason = EglError("eglBindAPI");
        return {};
    }
    EglSystem system{display, FindConfig(display, 0), FindConfig(display, 8), 0, 0};
    if (system.plain == nullptr)
    {
        system.plain = system.stencil;
    }
    if (system.plain == nullptr)
    {
        *reason = "no pbuffer configuration of 8 bits a channel and 24 of depth";
        return {};
    }
    if (system.stencil == nullptr)
    {
        system.stencil = system.plain;
    }
    if (!FindMaximumSize(system, reason))
    {
        return {};
    }
    return system;
}

/// A display that may be tried, and its name for messages.
struct Candidate
{
    std::string name;
    EGLDisplay display;
};

bool HasClientExtension(std::string_view name)
{
    const char* const all = eglQueryString(EGL_NO_DISPLAY, EGL_EXTENSIONS);
    return all != nullptr && std::string_view(all).find(name) != std::string_view::npos;
}

std::vector<Candidate> Candidates()
{
    std::vector<Candidate> candidates;
    if (HasClientExtension("EGL_MESA_platform_surfaceless"))
    {
        candidates.push_back({"surfaceless", eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA,
                                                                   EGL_DEFAULT_DISPLAY, nullptr)});
    }
    const auto queryDevices =
        reinterpret_cast<PFNEGLQUERYDEVICESEXTPROC>(eglGetProcAddress("eglQueryDevicesEXT"));
    if (queryDevices != nullptr && HasClientExtension("EGL_EXT_platform_device"))
    {
        EGLDeviceEXT devices[16];
        EGLint count = 0;
        if (queryDevices(16, devices, &count))
        {
            for (EGLint i = 0; i < count; ++i)
            {
                candidates.push_back(
                    {"device " + std::to_string(i),
                     eglGetPlatformDisplay(EGL_PLATFORM_DEVICE_EXT, devices[i], nullptr)});
            }
        }
    }
    candidates.push_back({"default display", eglGetDisplay(EGL_DEFAULT_DISPLAY)});
    return candidates;
}

struct Search
{
    std::optional<EglSystem> system;
    std::string reasons;

    Search()
    {
        for (const Candidate& candidate : Candidates())
        {
            std::string reason;
            system = Open(candidate.display, &reason);
            if (system)
            {
                return;
            }
            reasons += (reasons.empty() ? "" : "; ") + candidate.name + ": " + reason;
        }
    }
};

}  // namespace

KeptCurrent::KeptCurrent(EGLDisplay display)
    : display_(eglGetCurrentDisplay()),
      draw_(eglGetCurrentSurface(EGL_DRAW)),
      read_(eglGetCurrentSurface(EGL_READ)),
      context_(eglGetCurrentContext())
{
    if (context_ == EGL_NO_CONTEXT)
    {
        display_ = display;
    }
}

KeptCurrent::~KeptCurrent()
{
    eglMakeCurrent(display_, draw_, read_, context_);
}

const EglSystem* FindEgl(std::string* reason)
{
    // A search without a result is repeated by the next call, because the system may have been
    // short of memory only for a moment. Neither object is destroyed, because contexts may be
    // deleted while the process ends.
    static auto* const mutex = new std::mutex;
    static const EglSystem* found = nullptr;
    const std::lock_guard lock(*mutex);
    if (found == nullptr)
    {
        const Search search;
        if (!search.system)
        {
            *reason = search.reasons;
            return nullptr;
        }
        found = new EglSystem(*search.system);
    }
    return found;
}

EGLContext CreateEglContext(EGLDisplay display, EGLConfig config, EGLContext shared,
                            ContextProfile profile)
{
    // A request for version 2.1 gives the newest compatibility profile, which contains all of
    // OpenGL 1.1.
    const EGLint fixedFunctions[] = {EGL_CONTEXT_MAJOR_VERSION, 2, EGL_CONTEXT_MINOR_VERSION, 1,
                                     EGL_NONE};
    const EGLint core[] = {EGL_CONTEXT_MAJOR_VERSION,
                           3,
                           EGL_CONTEXT_MINOR_VERSION,
                           2,
                           EGL_CONTEXT_OPENGL_PROFILE_MASK,
                           EGL_CONTEXT_OPENGL_CORE_PROFILE_BIT,
                           EGL_NONE};
    eglBindAPI(EGL_OPENGL_API);  // per thread
    return eglCreateContext(display, config, shared,
                            profile == ContextProfile::Core ? core : fixedFunctions);
}

std::string EglError(const char* call)
{
    char digits[16];
    const std::to_chars_result end =
        std::to_chars(digits, digits + sizeof digits, static_cast<unsigned>(eglGetError()), 16);
    return std::string(call) + ": error 0x" + std::string(digits, end.ptr);
}

}  // namespace posix
