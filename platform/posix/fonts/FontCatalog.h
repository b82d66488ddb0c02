// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The installed faces grouped in families and found by their names, as one code page spells them.

#include "platform/Fonts.h"
#include "platform/posix/fonts/InstalledFonts.h"

#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace posix
{

/// A face under its names in the catalogue's code page. Where the code page lacks a letter of the
/// family's or the full name, the PostScript name, which is ASCII, stands in for it.
struct CatalogFace
{
    std::shared_ptr<const InstalledFace> installed;
    bool usable = false;  ///< whether its outlines can be handed over: a TrueType face to callers
    std::string family;
    std::string style;
    std::string full;
    /// What LOGFONTA calls the face: the first of its family's, full and PostScript names, cut to
    /// fit, by which Find finds this face and no other one. In a family made as usual, of four
    /// faces at most, that is the family's name.
    std::string faceName;
};

/// The faces of one family: upright before italic, then by weight, width and full name. So a usual
/// family has Regular, Bold, Italic, Bold Italic.
struct CatalogFamily
{
    std::string name;
    std::vector<const CatalogFace*> faces;
    /// The regular face or what is nearest to it: usable before anything else, upright, of a
    /// weight near 400 and a width near normal.
    const CatalogFace* regular = nullptr;
};

/// Entries under their names. Letter case decides between names that differ in nothing else, and is
/// overlooked when nothing has the name as it is written.
template <typename Entry>
class NameIndex
{
public:
    /// A nameless entry is never found.
    void Add(std::string_view name, const Entry* entry)
    {
        if (name.empty())
        {
            return;
        }
        auto& named = entries_[Folded(name)];
        for (const auto& [known, knownEntry] : named)
        {
            if (known == name && knownEntry == entry)
            {
                return;
            }
        }
        named.emplace_back(name, entry);
    }

    std::vector<const Entry*> Find(std::string_view name) const
    {
        std::vector<const Entry*> exact;
        std::vector<const Entry*> any;
        const auto named = entries_.find(Folded(name));
        if (named != entries_.end())
        {
            for (const auto& [known, entry] : named->second)
            {
                any.push_back(entry);
                if (known == name)
                {
                    exact.push_back(entry);
                }
            }
        }
        return exact.empty() ? any : exact;
    }

private:
    static std::string Folded(std::string_view name)
    {
        std::string folded(name);
        for (char& c : folded)
        {
            c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
        }
        return folded;
    }

    std::unordered_map<std::string, std::vector<std::pair<std::string, const Entry*>>> entries_;
};

/// Unchanging once made, so that threads share it. Families are in the order of their names' bytes
/// in UTF-8. Of faces alike in family, full name, weight, width, slant and kind of outline only the
/// first by file is in it.
class FontCatalog
{
public:
    /// \param outlines what SetProcessOutlines takes: as they are, cubic ones are of no use
    FontCatalog(std::vector<std::shared_ptr<const InstalledFace>> installed, UINT codePage,
                UINT outlines);
    FontCatalog(const FontCatalog&) = delete;
    FontCatalog& operator=(const FontCatalog&) = delete;

    UINT CodePage() const { return codePage_; }
    UINT Outlines() const { return outlines_; }
    const std::deque<CatalogFamily>& Families() const { return families_; }

    /// What enumeration by a name delivers: every face of the families that have the name or whose
    /// regular face has it as its full name, else the faces with that full name.
    std::vector<const CatalogFace*> StylesOf(std::string_view name) const;

    /// The usable face that a description means: by family, the best in slant, then weight; else
    /// by full name; else by PostScript name. Null when no face has the name.
    const CatalogFace* Find(std::string_view faceName, int weight, bool italic) const;

    /// The usable face nearest to a description, whatever it is called; null only when there is
    /// none at all.
    const CatalogFace* Nearest(std::string_view faceName, int weight, bool italic) const;

private:
    void AddFamilies(std::vector<std::shared_ptr<const InstalledFace>> installed);
    void NameFaces();

    UINT codePage_;
    UINT outlines_;
    std::deque<CatalogFace> faces_;
    std::deque<CatalogFamily> families_;
    NameIndex<CatalogFamily> byFamily_;       // by the names that LOGFONTA may have for them
    NameIndex<CatalogFamily> byEnumeration_;  // the same and their regular faces' full names
    NameIndex<CatalogFace> byFullName_;
    NameIndex<CatalogFace> byPostScriptName_;
};

/// The catalogue in the process's code page, made at its first use. Never null.
std::shared_ptr<const FontCatalog> CurrentCatalog();

/// The same, after a look whether other fonts are installed by now; if so, they are listed again.
std::shared_ptr<const FontCatalog> FreshCatalog();

/// Reads the font configuration again: what is installed may have changed. Fonts made before find
/// their faces anew.
ORVANE_API void ReloadFonts();

}  // namespace posix
