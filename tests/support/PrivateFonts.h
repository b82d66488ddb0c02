// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Font files chosen by a test in place of the machine's.

#include "platform/Fonts.h"

#include <string>
#include <vector>

/// While it lives, the library finds exactly the given files installed. One at a time.
class PrivateFonts
{
public:
    explicit PrivateFonts(const std::vector<std::string>& files);
    ~PrivateFonts();
    PrivateFonts(const PrivateFonts&) = delete;
    PrivateFonts& operator=(const PrivateFonts&) = delete;

    /// Where files may be put; they are removed at the end.
    const std::string& Folder() const { return folder_; }

    /// Adds a file, to be found from now on.
    void Install(const std::string& file);

    /// The same, without a word to the library. Returns the path at which it can be removed.
    std::string Place(const std::string& file);

private:
    std::string folder_;
    std::string previousConfiguration_;
    bool configured_ = false;
    int installed_ = 0;
};

/// While it lives, outlines are handed over in this way (SetProcessOutlines).
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

/// One callback of EnumFontFamiliesA.
struct EnumeratedFont
{
    ENUMLOGFONTA record;
    NEWTEXTMETRICA metrics;
    DWORD type;

    std::string Full() const { return reinterpret_cast<const char*>(record.elfFullName); }
    std::string Style() const { return reinterpret_cast<const char*>(record.elfStyle); }
    std::string FaceName() const { return record.elfLogFont.lfFaceName; }
};

/// Everything that EnumFontFamiliesA delivers for a family's name; null for every family.
std::vector<EnumeratedFont> EnumerateFonts(const char* family);

/// The faces that a font registry gets: for each family's regular TrueType face, every TrueType
/// face that enumeration by its full name delivers.
std::vector<EnumeratedFont> EnumerateAsRegistry();

/// The full names of some fonts.
std::vector<std::string> FullNames(const std::vector<EnumeratedFont>& fonts);

/// A font selected into a device context of its own.
class SelectedFont
{
public:
    explicit SelectedFont(const LOGFONTA& description);
    /// Of a face's name and a height.
    SelectedFont(const char* faceName, LONG height, LONG weight = FW_NORMAL, bool italic = false);
    ~SelectedFont();
    SelectedFont(const SelectedFont&) = delete;
    SelectedFont& operator=(const SelectedFont&) = delete;

    HDC Dc() const { return dc_; }

    /// What GetGlyphOutlineA gives for a character: the bytes; the result and the metrics aside.
    std::vector<BYTE> Outline(UINT character, DWORD* result = nullptr,
                              GLYPHMETRICS* metrics = nullptr) const;

    /// The outline metrics with their texts; empty when there are none.
    std::vector<BYTE> OutlineMetrics() const;

    /// The full name in the outline metrics; empty when there are none.
    std::string Full() const;

private:
    HFONT font_ = nullptr;
    HDC dc_ = nullptr;
    HGDIOBJ previous_ = nullptr;
};

/// The identity, as GetGlyphOutlineA wants it.
extern const MAT2 identityMatrix;
