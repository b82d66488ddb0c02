// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Font files that a test chooses in place of the installed fonts of the machine.

#include "platform/Fonts.h"

#include <string>
#include <vector>

/// While an object exists, the library finds exactly the given font files installed. Only one
/// object may exist at a time.
class PrivateFonts
{
public:
    explicit PrivateFonts(const std::vector<std::string>& files);
    ~PrivateFonts();
    PrivateFonts(const PrivateFonts&) = delete;
    PrivateFonts& operator=(const PrivateFonts&) = delete;

    /// A folder for files of the test. The destructor removes it.
    const std::string& Folder() const { return folder_; }

    /// Installs a further file; the library finds it from now on.
    void Install(const std::string& file);

    /// Installs a further file without telling the library. Returns the path of the installed copy,
    /// which a test can remove.
    std::string Place(const std::string& file);

private:
    std::string folder_;
    std::string previousConfiguration_;
    bool configured_ = false;
    int installed_ = 0;
};

/// While an object exists, the process's fonts give outlines in the way that \p outlines names (see
/// SetProcessOutlines). The destructor restores the previous way.
class OutlinesInUse
{
public:
    explicit OutlinesInUse(UINT outlines) : previous_(GetProcessOutlines())
    {
        SetProcessOutlines(outlines);
    }
    ~OutlinesInUse() { SetProcessOutlines(previous_); }
    OutlinesInUse(const OutlinesInUse&) = delete;
    OutlinesInUse& operator=(const OutlinesInUse&) = delete;

private:
    UINT previous_;
};

/// The values of one call of EnumFontFamiliesA's callback.
struct EnumeratedFont
{
    ENUMLOGFONTA record;
    NEWTEXTMETRICA metrics;
    DWORD type;

    std::string Full() const { return reinterpret_cast<const char*>(record.elfFullName); }
    std::string Style() const { return reinterpret_cast<const char*>(record.elfStyle); }
    std::string FaceName() const { return record.elfLogFont.lfFaceName; }
};

/// All fonts that EnumFontFamiliesA enumerates for a family's name; null stands for every family.
std::vector<EnumeratedFont> EnumerateFonts(const char* family);

/// The faces that enter a font registry. For each family, fonts are enumerated by the full name of
/// the family's regular TrueType face, and every TrueType face that this gives is included.
std::vector<EnumeratedFont> EnumerateAsRegistry();

/// The full names of the given fonts.
std::vector<std::string> FullNames(const std::vector<EnumeratedFont>& fonts);

/// A font selected into a device context of its own.
class SelectedFont
{
public:
    explicit SelectedFont(const LOGFONTA& description);
    /// Selects a font by its face name and height.
    SelectedFont(const char* faceName, LONG height, LONG weight = FW_NORMAL, bool italic = false);
    ~SelectedFont();
    SelectedFont(const SelectedFont&) = delete;
    SelectedFont& operator=(const SelectedFont&) = delete;

    HDC Dc() const { return dc_; }

    /// Calls GetGlyphOutlineA for a character and returns the bytes of the outline. \p result and
    /// \p metrics receive the function's result and the metrics, if not null.
    std::vector<BYTE> Outline(UINT character, DWORD* result = nullptr,
                              GLYPHMETRICS* metrics = nullptr) const;

    /// The outline metrics and the texts that follow them; empty when the font has no outline
    /// metrics.
    std::vector<BYTE> OutlineMetrics() const;

    /// The full name in the outline metrics; empty when the font has no outline metrics.
    std::string Full() const;

private:
    HFONT font_ = nullptr;
    HDC dc_ = nullptr;
    HGDIOBJ previous_ = nullptr;
};

/// The identity matrix, for GetGlyphOutlineA.
extern const MAT2 identityMatrix;
