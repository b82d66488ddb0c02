// SPDX-License-Identifier: MIT
#pragma once

#include "host/CObject.h"

/// What the framework keeps of an extension module. A static object of the module.
struct AFX_EXTENSION_MODULE
{
    BOOL bInitialized = FALSE;
    HMODULE hModule = nullptr;
};

/// Initializes the record of an extension module. TRUE; a second call changes nothing.
ORVANE_API BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& module, HMODULE handle);

/// Registers an extension module with the framework for as long as it lives.
class ORVANE_API CDynLinkLibrary : public CObject
{
    DECLARE_DYNAMIC(CDynLinkLibrary)

public:
    explicit CDynLinkLibrary(AFX_EXTENSION_MODULE& module);
    ~CDynLinkLibrary() override;
    CDynLinkLibrary(const CDynLinkLibrary&) = delete;
    CDynLinkLibrary& operator=(const CDynLinkLibrary&) = delete;

    /// The number of modules registered now.
    static int GetCount();

    const HMODULE m_hModule;
};
