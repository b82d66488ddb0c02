// SPDX-License-Identifier: MIT
#include "extrude/Library.h"

#include "host/CDynLinkLibrary.h"
#include "platform/Sync.h"

#include <memory>

namespace
{
AFX_EXTENSION_MODULE module;
std::unique_ptr<CDynLinkLibrary> registration;
HANDLE glyphMutex = nullptr;

/// Its life is that of the loaded library.
struct Loaded
{
    Loaded() { AttachLibrary(); }
    ~Loaded() { DetachLibrary(); }
};
const Loaded loaded;
}  // namespace

int AttachLibrary()
{
    if (registration == nullptr)
    {
        AfxInitExtensionModule(module, nullptr);
        registration = std::make_unique<CDynLinkLibrary>(module);
    }
    if (glyphMutex == nullptr)
    {
        glyphMutex = CreateMutexA(nullptr, FALSE, nullptr);
    }
    return 1;
}

int DetachLibrary()
{
    if (glyphMutex != nullptr)
    {
        CloseHandle(glyphMutex);
        glyphMutex = nullptr;
    }
    registration.reset();
    return 1;
}

HANDLE GetGlyphMutex()
{
    return glyphMutex;
}
