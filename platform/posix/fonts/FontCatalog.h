// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The installed faces, grouped in families and found by names. Names are in a code page.

#include "platform/Fonts.h"
#include "platform/posix/fonts/InstalledFonts.h"

#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace posix
{

/// A face with its names in the catalogue's code page. If the code page lacks a letter of the
/// family's name or of the full name, that name is replaced by the PostScript name, which is ASCII.
struct CatalogFace
{
    std::shared_ptr<const InstalledFace> installed;
    bool usable = false;  ///< whether its outlines can be handed over; callers see it as TrueType
    std::string family;
    std::string style;
    std::string full;
    /// The name of the face in LOGFONTA: the family's name, the full name or the PostScript name,
    /// cut to the size of the field. The first of the three is taken with which Find finds exactly
    /// this face, or the family's name if Find finds it with none of them. In a usual family, of at
    /// most four faces, that is the family's name.
    std::string faceName;
};

/// The faces of one family, sorted: upright before italic, then by weight, width and full name. A
/// usual family thus has Regular, Bold, Italic, Bold Italic.
struct CatalogFamily
{
    std::string name;
    std::vector<const CatalogFace*> faces;
    /// The regular face or the face nearest to regular: a usable face if there is one; of those an
    /// upright face if there is one; of those the face whose weight is nearest to 400; of equally
    /// near weights, the face whose width is nearest to normal.
    const CatalogFace* regular = nullptr;
};

/// Entries found by name. A search finds the entries whose name is written exactly as asked for. If
/// no entry has that name, the search ignores the case of A to Z.
template <typename Entry>
class NameIndex
{
public:
    /// Adds an entry, which is borrowed. An empty name adds nothing.
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

/// The catalogue of installed faces. It never changes, so threads can share it. Families are sorted
/// by the bytes of their names in UTF-8. Of several faces with the same family, full name, weight,
/// width, slant and kind of outline, it has only the face whose file's name comes first.
class FontCatalog
{
public:
    /// \param outlines OUTLINES_AS_IS, under which cubic faces are not usable, or OUTLINES_REPAIRED
    FontCatalog(std::vector<std::shared_ptr<const InstalledFace>> installed, UINT codePage,
                UINT outlines);
    FontCatalog(const FontCatalog&) = delete;
    FontCatalog& operator=(const FontCatalog&) = delete;

    UINT CodePage() const { return codePage_; }
    UINT Outlines() const { return outlines_; }
    const std::deque<CatalogFamily>& Families() const { return families_; }

    /// The faces that an enumeration with a name delivers: all faces of each family that has the
    /// name, or whose regular face has it as its full name. If no such family exists, the faces
    /// with that full name.
    std::vector<const CatalogFace*> StylesOf(std::string_view name) const;

    /// The usable face that a description means. In a family of that name it is the face that fits
    /// best in slant and then in weight. Without such a family, faces are found by full name and
    /// then by PostScript name. Null when no face has the name.
    const CatalogFace* Find(std::string_view faceName, int weight, bool italic) const;

    /// The usable face nearest to a description, whatever its name. Null only when there is no
    /// usable face.
    const CatalogFace* Nearest(std::string_view faceName, int weight, bool italic) const;

private:
    void AddFamilies(std::vector<std::shared_ptr<const InstalledFace>> installed);
    void NameFaces();

    UINT codePage_;
    UINT outlines_;
    std::deque<CatalogFace> faces_;
    std::deque<CatalogFamily> families_;
    NameIndex<CatalogFamily> byFamily_;       // by family names, also cut to LOGFONTA's size
    NameIndex<CatalogFamily> byEnumeration_;  // the same, and by full names of regular faces
    NameIndex<CatalogFace> byFullName_;
    NameIndex<CatalogFace> byPostScriptName_;
};

/// The catalogue in the process's code page, made when it is first needed. Never null.
std::shared_ptr<const FontCatalog> CurrentCatalog();

/// The same, but the catalogue is made again if fonts were installed or removed since it was made.
std::shared_ptr<const FontCatalog> FreshCatalog();

/// Lists the installed faces, and so reads the font configuration, unless that was done since
/// ForgetCatalog.
void EnsureFacesAreListed();

/// Makes the catalogue again when it is next needed.
void ForgetCatalog();

}  // namespace posix
