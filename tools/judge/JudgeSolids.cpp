// SPDX-License-Identifier: MIT
// judge-solids [--letters] [--every N] [--at-most N] [--no-meshes] [--plant FAULT] [--part I/N]
// [--smallest-first] [--done FILE] [--judged FILE] [FILTER]
//
// Makes the solids of every glyph of every face that fontconfig lists, with every named profile, at
// five widths outward and inward, and writes the meshes to standard output for profiles.mjs. Judges
// them itself, too: edges, triangles that cross, volume, and the volume found by slicing. After
// each face it writes a line about the face. Glyphs whose outlines are equal, bit for bit, have the
// same solids; those of an outline in which nothing was wrong are judged once.
//
//   --letters    only the characters of the western code page, of faces with all letters A to z
//   --every N    only every Nth glyph
//   --at-most N  only the first N faces
//   --no-meshes  write nothing to standard output
//   --plant FAULT  change every solid before it is judged: hole, crossing or volume
//   --part I/N   of every N faces, only the one with the number I, from 0
//   --smallest-first  judge the faces of small files before those of large ones, which have more
//                glyphs or more points, instead of in the order of their names
//   --done FILE  leave out the faces that have a line in this file; see profiles.mjs
//   --judged FILE  keys of outlines that were judged before; see profiles.mjs
//   FILTER       only faces whose full names contain this text

#include "extrude/OrvGlyph.h"
#include "outline/TTGlyph.h"
#include "platform/posix/TextConversion.h"
#include "platform/posix/fonts/FontFace.h"
#include "platform/posix/fonts/GlyphPolygons.h"
#include "platform/posix/fonts/InstalledFonts.h"
#include "tools/judge/GlyphJudge.h"
#include "tools/judge/MeshStream.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace contours = orvane::contours;
using namespace orvane;

namespace
{

struct Options
{
    bool lettersOnly = false;
    bool smallestFirst = false;
    UINT every = 1;
    long atMost = 0;  ///< faces; 0 for all
    std::size_t part = 0;
    std::size_t parts = 1;
    std::set<std::string> done;
    std::string filter;
    GlyphOptions glyphs;
};

/// The keys of the outlines that were judged.
using JudgedOutlines = std::set<std::string>;

/// A number of 128 bits that depends on every bit of an outline, as text: two 64-bit FNV-1a hashes
/// with different starts.
std::string KeyOf(const PlaneRegion& region)
{
    std::uint64_t hashes[2] = {0xCBF29CE484222325, 0x84222325CBF29CE4};
    const auto add = [&](const void* data, std::size_t size) {
        const auto* bytes = static_cast<const unsigned char*>(data);
        for (std::size_t i = 0; i < size; ++i)
        {
            hashes[0] = (hashes[0] ^ bytes[i]) * 0x100000001B3;
            hashes[1] = (hashes[1] ^ bytes[i]) * 0x9E3779B97F4A7C15;
        }
    };
    for (const auto& contour : region.contours)
    {
        const std::size_t count = contour.size();
        add(&count, sizeof count);
        add(contour.data(), count * sizeof contour[0]);
    }
    char text[33];
    std::snprintf(text, sizeof text, "%016llx%016llx", static_cast<unsigned long long>(hashes[0]),
                  static_cast<unsigned long long>(hashes[1]));
    return text;
}

std::set<UINT> GlyphsOf(const std::shared_ptr<const posix::InstalledFace>& face,
                        const Options& options)
{
    std::set<UINT> glyphs;
    if (options.lettersOnly)
    {
        for (int code = 32; code < 256; ++code)
        {
            const auto byte = static_cast<BYTE>(code);
            glyphs.insert(posix::GlyphIndexOf(face, posix::CharacterOf(byte, 1252), byte));
        }
        return glyphs;
    }
    for (UINT index = 0; index < posix::GlyphCountOf(face); index += options.every)
    {
        glyphs.insert(index);
    }
    return glyphs;
}

/// A face's name in a file of results.
std::string KeyOf(const posix::InstalledFace& face)
{
    return face.file.substr(face.file.rfind('/') + 1) + '#' + std::to_string(face.index);
}

bool HasLetters(const std::shared_ptr<const posix::InstalledFace>& face)
{
    for (char letter = 'A'; letter <= 'Z'; ++letter)
    {
        for (const char character : {letter, static_cast<char>(letter - 'A' + 'a')})
        {
            const auto byte = static_cast<BYTE>(character);
            if (posix::GlyphIndexOf(face, byte, byte) == 0)
            {
                return false;
            }
        }
    }
    return true;
}

/// Writes the line about a face, which profiles.mjs completes.
void WriteLine(const posix::InstalledFace& face, const SolidCounts& counts)
{
    char numbers[240];
    std::snprintf(numbers, sizeof numbers,
                  "%ld\t%ld\t%ld\t%ld\t%ld\t%ld\t%ld\t%ld\t%ld\t%.3f\t%.1f", counts.glyphs,
                  counts.repeated, counts.unread, counts.solids, counts.empty, counts.failed,
                  counts.crossed, counts.sliced, counts.wrongVolumes,
                  counts.largestDifference * 100, counts.seconds);
    WriteRecord(RecordKind::Face, KeyOf(face) + '\t' + face.full + '\t' + numbers + '\t' +
                                      counts.worstName + '\t' + counts.exceptions);
}

void JudgeOutline(SolidCounts& counts, const Options& options, JudgedOutlines& judged,
                  const std::string& name, const PlaneRegion& region)
{
    ++counts.glyphs;
    const std::string key = KeyOf(region);
    if (judged.contains(key))
    {
        ++counts.repeated;
        if (options.glyphs.writesMeshes)
        {
            WriteRecord(RecordKind::RepeatedOutline, key + name);
        }
        return;
    }
    const long wrongBefore = counts.Wrong();
    JudgeGlyph(counts, options.glyphs, name, region);
    if (counts.Wrong() == wrongBefore)
    {
        judged.insert(key);
        if (options.glyphs.writesMeshes)
        {
            WriteRecord(RecordKind::JudgedOutline, key);
        }
    }
}

/// Returns false when the face has no outlines or is to be left out.
bool JudgeFace(SolidCounts& all, const Options& options, JudgedOutlines& judged,
               const std::shared_ptr<const posix::InstalledFace>& face)
{
    const auto design = posix::DesignOf(face);
    if (!design || (options.lettersOnly && !HasLetters(face)))
    {
        return false;
    }
    SolidCounts counts;
    for (const UINT index : GlyphsOf(face, options))
    {
        const bool isRead = posix::InspectGlyph(
            face, index,
            [&](const contours::NativeOutline& own, const contours::ProvidedOutline& provided) {
                std::vector<BYTE> bytes =
                    posix::NativePolygons(provided.outline ? *provided.outline : own);
                TTGlyph native;
                native.FromGlyphOutline(bytes.data(), bytes.size());
                OrvGlyph glyph(bytes.size(), GLYPHMETRICS{});
                glyph.ConstructGlyph(native, static_cast<float>(design->unitsPerEm));
                JudgeOutline(counts, options, judged,
                             face->full + ", glyph " + std::to_string(index) + ",",
                             RegionOf(glyph));
            });
        counts.unread += isRead ? 0 : 1;
    }
    if (options.glyphs.writesMeshes)
    {
        WriteLine(*face, counts);
    }
    all.Add(counts);
    return true;
}

std::set<std::string> KeysIn(const char* file)
{
    std::set<std::string> keys;
    std::ifstream lines(file);
    for (std::string line; std::getline(lines, line);)
    {
        keys.insert(line.substr(0, line.find('\t')));
    }
    return keys;
}

void Report(long faces, const SolidCounts& counts)
{
    const double solids = static_cast<double>(std::max(counts.solids, 1L));
    std::fprintf(stderr, "%ld faces, %ld glyphs, %ld of them with outlines judged before", faces,
                 counts.glyphs, counts.repeated);
    std::fprintf(stderr, "\n%ld solids, %ld of them empty, %.0f triangles each\n", counts.solids,
                 counts.empty, static_cast<double>(counts.triangles) / solids);
    std::fprintf(stderr, "not made, not closed or without volume: %ld\n", counts.failed);
    std::fprintf(stderr,
                 "with triangles that cross: %ld\n"
                 "more than 0.5 %% from the volume of slices: %ld of %ld; at most %.3f %%\n",
                 counts.crossed, counts.wrongVolumes, counts.sliced,
                 counts.largestDifference * 100);
    std::fprintf(stderr, "processor time: %.3f ms each, at most %.1f ms (%s)\n",
                 counts.seconds / solids * 1e3, counts.slowest * 1e3, counts.slowestName.c_str());
}

Fault FaultOf(const std::string& name)
{
    return name == "hole"       ? Fault::Hole
           : name == "crossing" ? Fault::Crossing
           : name == "volume"   ? Fault::Volume
                                : Fault::None;
}

}  // namespace

int main(int argc, char** argv)
{
    Options options;
    JudgedOutlines judged;
    for (int n = 1; n < argc; ++n)
    {
        const bool hasNumber = n + 1 < argc;
        if (std::strcmp(argv[n], "--letters") == 0)
        {
            options.lettersOnly = true;
        }
        else if (std::strcmp(argv[n], "--no-meshes") == 0)
        {
            options.glyphs.writesMeshes = false;
        }
        else if (std::strcmp(argv[n], "--smallest-first") == 0)
        {
            options.smallestFirst = true;
        }
        else if (std::strcmp(argv[n], "--every") == 0 && hasNumber)
        {
            options.every = static_cast<UINT>(std::max(1, std::atoi(argv[++n])));
        }
        else if (std::strcmp(argv[n], "--at-most") == 0 && hasNumber)
        {
            options.atMost = std::atol(argv[++n]);
        }
        else if (std::strcmp(argv[n], "--plant") == 0 && hasNumber)
        {
            options.glyphs.fault = FaultOf(argv[++n]);
        }
        else if (std::strcmp(argv[n], "--judged") == 0 && hasNumber)
        {
            judged = KeysIn(argv[++n]);
        }
        else if (std::strcmp(argv[n], "--part") == 0 && hasNumber)
        {
            char* rest = nullptr;
            options.part = std::strtoul(argv[++n], &rest, 10);
            options.parts = *rest == '/' ? std::strtoul(rest + 1, nullptr, 10) : 1;
            options.parts = std::max<std::size_t>(options.parts, 1);
        }
        else if (std::strcmp(argv[n], "--done") == 0 && hasNumber)
        {
            options.done = KeysIn(argv[++n]);
        }
        else
        {
            options.filter = argv[n];
        }
    }
    auto faces = posix::ListInstalledFaces();
    std::sort(faces.begin(), faces.end(), [](const auto& a, const auto& b) {
        return std::tie(a->full, a->file, a->index) < std::tie(b->full, b->file, b->index);
    });
    if (options.smallestFirst)
    {
        std::stable_sort(faces.begin(), faces.end(), [](const auto& a, const auto& b) {
            return std::filesystem::file_size(a->file) < std::filesystem::file_size(b->file);
        });
    }
    SolidCounts counts;
    long judgedFaces = 0;
    std::size_t number = 0;
    for (const auto& face : faces)
    {
        if (face->full.find(options.filter) != std::string::npos &&
            number++ % options.parts == options.part && !options.done.contains(KeyOf(*face)) &&
            (options.atMost == 0 || judgedFaces < options.atMost))
        {
            judgedFaces += JudgeFace(counts, options, judged, face) ? 1 : 0;
        }
    }
    Report(judgedFaces, counts);
    return counts.Wrong() == 0 ? 0 : 1;
}
