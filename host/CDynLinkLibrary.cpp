// SPDX-License-Identifier: MIT
#include "host/CDynLinkLibrary.h"

#include <atomic>

IMPLEMENT_DYNAMIC(CDynLinkLibrary, CObject)

namespace
{

std::atomic<int> registeredModules{0};

}  // namespace

BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& module, HMODULE handle)
{
    if (!module.bInitialized)
    {
        module.bInitialized = TRUE;
        module.hModule = handle;
    }
    return TRUE;
}

CDynLinkLibrary::CDynLinkLibrary(AFX_EXTENSION_MODULE& module) : m_hModule(module.hModule)
{
    ++registeredModules;
}

CDynLinkLibrary::~CDynLinkLibrary()
{
    --registeredModules;
}

int CDynLinkLibrary::GetCount()
{
    return registeredModules;
}
