// SPDX-License-Identifier: MIT
#pragma once

#include "host/CObject.h"

/// The framework's record of an extension module. Each module defines its record as a static
/// object.
struct AFX_EXTENSION_MODULE
{
    BOOL bInitialized = FALSE;
    HMODULE hModule = nullptr;
};

/// Initializes the record of an extension module. A second call changes nothing. Returns TRUE.
ORVANE_API BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& module, HMODULE handle);

/// Registers an extension module with the framework for the life of this object.
class ORVANE_API CDynLinkLibrary : public CObject
{
    DECLARE_DYNAMIC(CDynLinkLibrary)

public:
    explicit CDynLinkLibrary(AFX_EXTENSION_MODULE& module);
    ~CDynLinkLibrary() override;
    CDynLinkLibrary(const CDynLinkLibrary&) = delete;
    CDynLinkLibrary& operator=(const CDynLinkLibrary&) = delete;

    /// The number of modules that are registered now.
    static int GetCount();

    const HMODULE m_hModule;
};
