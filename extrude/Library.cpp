// SPDX-License-Identifier: MIT
#include "extrude/Library.h"

#include "extrude/FontDC.h"
#include "extrude/OrvFontList.h"
#include "host/CDynLinkLibrary.h"
#include "host/CWnd.h"
#include "platform/Fonts.h"
#include "platform/Sync.h"

#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace
{
AFX_EXTENSION_MODULE module;
std::unique_ptr<CDynLinkLibrary> registration;
HANDLE glyphMutex = nullptr;
OrvFontList registry(10);

// Held while a thread of CreateFontList looks at the registry or changes it, but not while it calls
// the host, whose code may wait for another thread that calls CreateFontList.
std::mutex registryMutex;

// The arguments of the thread's last call of CreateFontList. Each thread has its own, because the
// window of one thread's call may be gone while another thread's call still runs.
thread_local int progressFlag = 0;
thread_local CWnd* statusWindow = nullptr;

void ShowProgress(const OrvFont& font)
{
    if (progressFlag != 0 && statusWindow != nullptr && statusWindow->GetSafeHwnd() != nullptr)
    {
        CString text;
        text.Format("Adding Font - %s", static_cast<LPCSTR>(font.GetFullName()));
        statusWindow->SetWindowText(text);
    }
}

/// Enters fonts into the registry at the same places as OrvFontList::InsertSorted. A sorted index
/// of the names makes this fast for thousands of fonts, where InsertSorted would walk through the
/// whole list for each font.
class SortedRegistry
{
public:
    SortedRegistry()
    {
        const std::lock_guard lock(registryMutex);
        // The index gives the same places as InsertSorted only when the registry is sorted.
        for (POSITION next = registry.GetHeadPosition(); next != nullptr;)
        {
            const POSITION position = next;
            const std::string name(registry.GetNext(next)->GetFullName());
            sorted_ = sorted_ && (places_.empty() || places_.rbegin()->first < name);
            places_.emplace_hint(places_.end(), name, position);
        }
    }

    /// Returns the font, which the registry then owns. Returns null when the registry has a font of
    /// that name already.
    OrvFont* Insert(OrvFont* font)
    {
        const std::lock_guard lock(registryMutex);
        // The registry may have changed since the index was made: another thread may fill it, too,
        // and setting the text of the status window runs the host's code between two fonts. If the
        // number of fonts is not the expected one, the index is never used again.
        if (!sorted_ || places_.size() != static_cast<std::size_t>(registry.GetCount()))
        {
            sorted_ = false;
            return registry.InsertSorted(font);
        }
        const std::string name(font->GetFullName());
        const auto next = places_.lower_bound(name);
        if (next != places_.end() && next->first == name)
        {
            return nullptr;
        }
        // The index gets its entry first: when there is no memory for one of the two, the registry
        // must not have a font that its caller deletes.
        const auto place = places_.emplace_hint(next, name, nullptr);
        try
        {
            place->second = next == places_.end() ? registry.AddTail(font)
                                                  : registry.InsertBefore(next->second, font);
        }
        catch (...)
        {
            places_.erase(place);
            throw;
        }
        return font;
    }

private:
    std::map<std::string, POSITION> places_;  // by full name, compared as unsigned bytes
    bool sorted_ = true;
};

int CALLBACK EnterStyle(const LOGFONTA* record, const TEXTMETRICA* metrics, DWORD fontType,
                        LPARAM data)
{
    if (fontType == TRUETYPE_FONTTYPE)
    {
        auto font = std::make_unique<OrvFont>();
        if (font->Create(reinterpret_cast<const ENUMLOGFONTA*>(record),
                         reinterpret_cast<const NEWTEXTMETRICA*>(metrics)))
        {
            ShowProgress(*font);
            auto* const target =
                reinterpret_cast<SortedRegistry*>(data);  // NOLINT(performance-no-int-to-ptr)
            if (target->Insert(font.get()) != nullptr)
            {
                static_cast<void>(font.release());  // the registry owns it
            }
        }
    }
    return 1;
}

int CALLBACK EnterFamily(const LOGFONTA* record, const TEXTMETRICA*, DWORD fontType, LPARAM data)
{
    if ((fontType & TRUETYPE_FONTTYPE) != 0)
    {
        // EnumFontFamiliesA accepts the full name of a family's regular face in place of the
        // family's name.
        const CString name = FullNameOf(*reinterpret_cast<const ENUMLOGFONTA*>(record));
        const FontDC dc(nullptr);
        EnumFontFamiliesA(dc, name, EnterStyle, data);
    }
    return 1;
}

/// Attaches the library when it is loaded and detaches it when it is unloaded.
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
    {
        const std::lock_guard lock(registryMutex);
        registry.RemoveAll();
    }
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
    SortedRegistry target;
    EnumFontFamiliesA(dc, nullptr, EnterFamily, reinterpret_cast<LPARAM>(&target));
    return 1;
}

OrvFontList* WINAPI GetFontList()
{
    return &registry;
}
