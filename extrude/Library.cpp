// SPDX-License-Identifier: MIT
#include "extrude/Library.h"

#include "extrude/FontMetrics.h"
#include "extrude/OrvFontList.h"
#include "host/CDynLinkLibrary.h"
#include "host/CWnd.h"
#include "platform/Fonts.h"
#include "platform/Sync.h"

#include <memory>

namespace
{
AFX_EXTENSION_MODULE module;
std::unique_ptr<CDynLinkLibrary> registration;
HANDLE glyphMutex = nullptr;
OrvFontList registry(10);

// The arguments of the last CreateFontList.
int progressFlag = 0;
CWnd* statusWindow = nullptr;

void ShowProgress(const OrvFont& font)
{
    if (progressFlag != 0 && statusWindow != nullptr && statusWindow->GetSafeHwnd() != nullptr)
    {
        CString text;
        text.Format("Adding Font - %s", static_cast<LPCSTR>(font.GetFullName()));
        statusWindow->SetWindowText(text);
    }
}

int CALLBACK EnterStyle(const LOGFONTA* record, const TEXTMETRICA* metrics, DWORD fontType, LPARAM)
{
    if (fontType == TRUETYPE_FONTTYPE)
    {
        auto font = std::make_unique<OrvFont>();
        if (font->Create(reinterpret_cast<const ENUMLOGFONTA*>(record),
                         reinterpret_cast<const NEWTEXTMETRICA*>(metrics)))
        {
            ShowProgress(*font);
            if (registry.InsertSorted(font.get()) != nullptr)
            {
                static_cast<void>(font.release());  // the registry owns it
            }
        }
    }
    return 1;
}

int CALLBACK EnterFamily(const LOGFONTA* record, const TEXTMETRICA*, DWORD fontType, LPARAM)
{
    if ((fontType & TRUETYPE_FONTTYPE) != 0)
    {
        // Asked by the full name of the family's regular face, which names the whole family.
        const CString name = FullNameOf(*reinterpret_cast<const ENUMLOGFONTA*>(record));
        const FontDC dc(nullptr);
        EnumFontFamiliesA(dc, name, EnterStyle, 0);
    }
    return 1;
}

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
    registry.RemoveAll();
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

int WINAPI CreateFontList(int progress, CWnd* status)
{
    progressFlag = progress;
    statusWindow = status;
    const FontDC dc(nullptr);
    EnumFontFamiliesA(dc, nullptr, EnterFamily, 0);
    return 1;
}

OrvFontList* WINAPI GetFontList()
{
    return &registry;
}
