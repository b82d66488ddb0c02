// SPDX-License-Identifier: MIT
#include "platform/posix/fonts/FontCatalog.h"

#include "platform/CodePages.h"
#include "platform/posix/TextConversion.h"

#include <algorithm>
#include <compare>
#include <cstdlib>
#include <mutex>
#include <tuple>

namespace posix
{
namespace
{

/// The start of a name that fits a zero-terminated field of \p fieldSize bytes. In a code page each
/// character is one byte, so no character is split.
std::string_view Cut(std::string_view name, int fieldSize)
{
    return name.substr(0, static_cast<std::size_t>(fieldSize) - 1);
}

bool IsUsable(OutlineKind kind, UINT outlines)
{
    return kind == OutlineKind::TrueType ||
           (kind == OutlineKind::Cubic && outlines == OUTLINES_REPAIRED);
}

CatalogFace Spell(std::shared_ptr<const InstalledFace> installed, UINT codePage, UINT outlines)
{
    CatalogFace face;
    face.usable = IsUsable(installed->kind, outlines);
    bool complete = false;
    face.family = ToCodePage(installed->family, codePage, &complete);
    const std::string& postScript = installed->postScript;
    if (!complete && !postScript.empty())
    {
        face.family = postScript.substr(0, postScript.find('-'));
    }
    face.full = ToCodePage(installed->full, codePage, &complete);
    if (!complete && !postScript.empty())
    {
        face.full = postScript;
    }
    face.style = ToCodePage(installed->style, codePage);
    face.installed = std::move(installed);
    return face;
}

int Far(int from, int to)
{
    return std::abs(from - to);
}

/// A key for comparisons: the face with the smallest key is the family's regular face.
auto DistanceFromRegular(const CatalogFace* face)
{
    const InstalledFace& installed = *face->installed;
    return std::make_tuple(!face->usable, installed.italic, Far(installed.weight, FW_NORMAL),
                           Far(installed.width, 100), installed.kind);
}

/// The usable face that comes nearest to a weight and a slant; of equally near faces, the first.
/// Null when no face is usable.
const CatalogFace* BestOf(const std::vector<const CatalogFace*>& faces, int weight, bool italic)
{
    const auto distance = [&](const CatalogFace& face) {
        const InstalledFace& installed = *face.installed;
        return std::make_tuple(!face.usable, installed.italic != italic,
                               Far(installed.weight, weight), Far(installed.width, 100),
                               installed.kind);
    };
    const auto best = std::min_element(
        faces.begin(), faces.end(),
        [&](const CatalogFace* a, const CatalogFace* b) { return distance(*a) < distance(*b); });
    return best != faces.end() && (*best)->usable ? *best : nullptr;
}

}  // namespace

FontCatalog::FontCatalog(std::vector<std::shared_ptr<const InstalledFace>> installed, UINT codePage,
                         UINT outlines)
    : codePage_(codePage), outlines_(outlines)
{
    AddFamilies(std::move(installed));
    NameFaces();
}

void FontCatalog::AddFamilies(std::vector<std::shared_ptr<const InstalledFace>> installed)
{
    const auto likeness = [](const InstalledFace& face) {
        return std::tie(face.family, face.italic, face.weight, face.width, face.full, face.kind);
    };
    std::sort(installed.begin(), installed.end(), [&](const auto& a, const auto& b) {
        const auto order = likeness(*a) <=> likeness(*b);
        return std::is_neq(order) ? std::is_lt(order)
                                  : std::tie(a->file, a->index) < std::tie(b->file, b->index);
    });
    const InstalledFace* previous = nullptr;
    for (std::shared_ptr<const InstalledFace>& face : installed)
    {
        if (previous != nullptr && likeness(*previous) == likeness(*face))
        {
            continue;
        }
        const bool opensFamily = previous == nullptr || previous->family != face->family;
        previous = face.get();
        faces_.push_back(Spell(std::move(face), codePage_, outlines_));
        if (opensFamily)
        {
            families_.emplace_back().name = faces_.back().family;
        }
        families_.back().faces.push_back(&faces_.back());
    }
    for (CatalogFamily& family : families_)
    {
        family.regular =
            *std::min_element(family.faces.begin(), family.faces.end(),
                              [](const CatalogFace* a, const CatalogFace* b) {
                                  return DistanceFromRegular(a) < DistanceFromRegular(b);
                              });
    }
}

void FontCatalog::NameFaces()
{
    for (const CatalogFamily& family : families_)
    {
        for (const std::string_view name :
             {std::string_view(family.name), Cut(family.name, LF_FACESIZE)})
        {
            byFamily_.Add(name, &family);
            byEnumeration_.Add(name, &family);
        }
        byEnumeration_.Add(family.regular->full, &family);
        byEnumeration_.Add(Cut(family.regular->full, LF_FULLFACESIZE), &family);
    }
    for (const CatalogFace& face : faces_)
    {
        byFullName_.Add(face.full, &face);
        byFullName_.Add(Cut(face.full, LF_FULLFACESIZE), &face);
        byFullName_.Add(Cut(face.full, LF_FACESIZE), &face);
        byPostScriptName_.Add(Cut(face.installed->postScript, LF_FACESIZE), &face);
    }
    for (CatalogFace& face : faces_)
    {
        const InstalledFace& installed = *face.installed;
        face.faceName = Cut(face.family, LF_FACESIZE);
        for (const std::string& name : {face.family, face.full, installed.postScript})
        {
            const std::string_view cut = Cut(name, LF_FACESIZE);
            if (Find(cut, installed.weight, installed.italic) == &face)
            {
                face.faceName = cut;
                break;
            }
        }
    }
}

std::vector<const CatalogFace*> FontCatalog::StylesOf(std::string_view name) const
{
    std::vector<const CatalogFace*> styles;
    for (const CatalogFamily* family : byEnumeration_.Find(name))
    {
        styles.insert(styles.end(), family->faces.begin(), family->faces.end());
    }
    return styles.empty() ? byFullName_.Find(name) : styles;
}

const CatalogFace* FontCatalog::Find(std::string_view faceName, int weight, bool italic) const
{
    std::vector<const CatalogFace*> faces;
    for (const CatalogFamily* family : byFamily_.Find(faceName))
    {
        faces.insert(faces.end(), family->faces.begin(), family->faces.end());
    }
    if (const CatalogFace* best = BestOf(faces, weight, italic))
    {
        return best;
    }
    if (const CatalogFace* best = BestOf(byFullName_.Find(faceName), weight, italic))
    {
        return best;
    }
    return BestOf(byPostScriptName_.Find(faceName), weight, italic);
}

const CatalogFace* FontCatalog::Nearest(std::string_view faceName, int weight, bool italic) const
{
    std::unordered_map<std::string, std::vector<const CatalogFace*>> byFile;
    const CatalogFace* any = nullptr;
    for (const CatalogFace& face : faces_)
    {
        if (face.usable)
        {
            any = any == nullptr ? &face : any;
            byFile[face.installed->file].push_back(&face);
        }
    }
    if (any == nullptr)
    {
        return nullptr;
    }
    for (const auto& [file, index] :
         SubstitutesFor(CodePageToUtf8(faceName, codePage_), weight, italic))
    {
        for (const CatalogFace* face : byFile[file])
        {
            if (face->installed->index == index)
            {
                return face;
            }
        }
    }
    return any;
}

namespace
{

/// The faces listed last and the catalogue made from them last.
struct CatalogState
{
    std::mutex mutex;
    bool listed = false;
    std::vector<std::shared_ptr<const InstalledFace>> installed;
    std::shared_ptr<const FontCatalog> catalog;
};

CatalogState& TheState()
{
    // Never destroyed, because static objects may use fonts while the process ends.
    static auto* const state = new CatalogState;
    return *state;
}

/// Lists the installed faces if they are not listed. The caller holds the lock.
void ListFaces(CatalogState& state)
{
    if (!state.listed)
    {
        state.installed = ListInstalledFaces();
        state.listed = true;
        state.catalog = nullptr;
    }
}

/// The catalogue for the process's settings, which is made if there is none yet. The caller holds
/// the lock.
std::shared_ptr<const FontCatalog> Catalog(CatalogState& state)
{
    ListFaces(state);
    const UINT codePage = GetACP();
    const UINT outlines = GetProcessOutlines();
    if (!state.catalog || state.catalog->CodePage() != codePage ||
        state.catalog->Outlines() != outlines)
    {
        state.catalog = std::make_shared<const FontCatalog>(state.installed, codePage, outlines);
    }
    return state.catalog;
}

}  // namespace

std::shared_ptr<const FontCatalog> CurrentCatalog()
{
    CatalogState& state = TheState();
    const std::lock_guard lock(state.mutex);
    return Catalog(state);
}

std::shared_ptr<const FontCatalog> FreshCatalog()
{
    CatalogState& state = TheState();
    const std::lock_guard lock(state.mutex);
    state.listed = state.listed && !InstalledFacesChanged();
    return Catalog(state);
}

void EnsureFacesAreListed()
{
    CatalogState& state = TheState();
    const std::lock_guard lock(state.mutex);
    ListFaces(state);
}

void ForgetCatalog()
{
    CatalogState& state = TheState();
    const std::lock_guard lock(state.mutex);
    state.listed = false;
}

}  // namespace posix
