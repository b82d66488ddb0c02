// SPDX-License-Identifier: MIT
// survey-outlines [--letters] [--every N] [FILTER]: builds the glyphs of every installed face as
// the library does, from the fonts' own outlines and from what is handed over for them, and prints
// how many come out wrong. --letters looks at the characters of the western code page alone,
// --every at each Nth glyph alone, not at all of them. FILTER chooses faces whose full names
// contain it.
//
// What is wrong is judged here by other means than the library's own trial: by the faces and walls
// of the built glyphs.

#include "contours/Areas.h"
#include "contours/OutlineUnion.h"
#include "extrude/OrvGlyph.h"
#include "outline/TTGlyph.h"
#include "platform/CodePages.h"
#include "platform/OpenGL.h"
#include "platform/posix/fonts/FontFace.h"
#include "platform/posix/fonts/GlyphPolygons.h"
#include "platform/posix/fonts/InstalledFonts.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <limits>
#include <optional>
#include <set>
#include <tuple>

namespace contours = orvane::contours;

namespace
{

using Place = contours::DoublePoint;

using Contours = std::vector<std::vector<Place>>;

/// A glyph built from an outline, judged.
struct Built
{
    bool noCaps = false;
    bool falseHoles = false;
    int contours = 0;
    int wrongWay = 0;
    double capArea = 0;
};

Contours ContoursOf(const OrvGlyph& glyph)
{
    Contours contours;
    for (int k = 0; k < glyph.GetContourCount(); ++k)
    {
        const TTPolyContour contour = glyph.contours.GetAt(k);
        std::vector<Place>& places = contours.emplace_back();
        for (int i = 0; i < contour.GetVertexCount(); ++i)
        {
            const Vector point = contour.GetVertexOutlinePoint(i);
            places.push_back({point.x, point.y});
        }
    }
    return contours;
}

double CapArea(const OrvGlyph& glyph)
{
    double twice = 0;
    for (int n = 0; n < glyph.facePolygons.GetSize(); ++n)
    {
        const VertexIndexPolygon& polygon = *glyph.facePolygons.GetElement(n);
        const auto at = [&](int i) { return glyph.vertices.GetAt(polygon.GetAt(i)).GetPoint(); };
        for (int i = 2; i < polygon.GetSize(); i += polygon.GetType() == GL_TRIANGLES ? 3 : 1)
        {
            const Vector2D a = at(polygon.GetType() == GL_TRIANGLE_FAN ? 0 : i - 2);
            const Vector2D b = at(i - 1);
            const Vector2D c = at(i);
            twice += std::fabs((double{b.x} - a.x) * (double{c.y} - a.y) -
                               (double{b.y} - a.y) * (double{c.x} - a.x));
        }
    }
    return twice / 2;
}

/// By the odd rule.
bool IsFilled(const Contours& contours, const Place& place)
{
    bool filled = false;
    for (const std::vector<Place>& contour : contours)
    {
        for (std::size_t i = 0; i < contour.size(); ++i)
        {
            const Place& a = contour[i];
            const Place& b = contour[i + 1 < contour.size() ? i + 1 : 0];
            if ((a.y > place.y) != (b.y > place.y) &&
                place.x < a.x + (place.y - a.y) * (b.x - a.x) / (b.y - a.y))
            {
                filled = !filled;
            }
        }
    }
    return filled;
}

/// How much of a contour has what is filled on its left and not on its right, less the opposite.
double WrongLength(const Contours& contours, const std::vector<Place>& contour)
{
    constexpr double aside = 0.02;
    const std::size_t count = contour.size();
    const auto next = [&](std::size_t i) { return i + 1 < count ? i + 1 : 0; };
    std::vector<double> lengths(count);
    std::vector<std::size_t> longest(count);
    for (std::size_t i = 0; i < count; ++i)
    {
        lengths[i] =
            std::hypot(contour[next(i)].x - contour[i].x, contour[next(i)].y - contour[i].y);
        longest[i] = i;
    }
    std::sort(longest.begin(), longest.end(),
              [&](std::size_t a, std::size_t b) { return lengths[a] > lengths[b]; });
    longest.resize(std::min<std::size_t>(longest.size(), 9));
    double wrong = 0;
    for (const std::size_t i : longest)
    {
        const Place& a = contour[i];
        const Place& b = contour[next(i)];
        const double size = lengths[i];
        if (size == 0)
        {
            continue;
        }
        const Place middle = {(a.x + b.x) / 2, (a.y + b.y) / 2};
        const Place left = {-(b.y - a.y) / size * aside, (b.x - a.x) / size * aside};
        const bool onLeft = IsFilled(contours, {middle.x + left.x, middle.y + left.y});
        const bool onRight = IsFilled(contours, {middle.x - left.x, middle.y - left.y});
        wrong += onLeft == onRight ? 0 : onLeft ? size : -size;
    }
    return wrong;
}

Built Build(const contours::NativeOutline& outline, int unitsPerEm)
{
    std::vector<BYTE> bytes = posix::NativePolygons(outline);
    TTGlyph native;
    native.FromGlyphOutline(bytes.data(), bytes.size());
    OrvGlyph glyph(bytes.size(), GLYPHMETRICS{});
    glyph.ConstructGlyph(native, static_cast<float>(unitsPerEm));

    Built built;
    const Contours contours = ContoursOf(glyph);
    built.capArea = CapArea(glyph);
    const double area = contours::NonZeroArea(contours::FlattenAndSeparate(outline, unitsPerEm));
    built.noCaps = glyph.facePolygons.GetSize() == 0 && glyph.vertices.GetSize() > 2 && area > 0.5;
    built.falseHoles =
        !built.noCaps && std::fabs(built.capArea - area) > 0.001 * std::max(area, built.capArea);
    for (const std::vector<Place>& contour : contours)
    {
        built.contours += contour.empty() ? 0 : 1;
        built.wrongWay += WrongLength(contours, contour) > 0 ? 1 : 0;
    }
    return built;
}

/// The contours in places so close together that what is between them is straight.
Contours Sampled(const contours::NativeOutline& outline)
{
    constexpr int samples = 16;  // of a curved piece
    Contours contours;
    std::size_t first = 0;
    for (const std::size_t end : outline.ends)
    {
        std::vector<Place>& places = contours.emplace_back();
        const auto at = [&](std::size_t n) {
            return Place{static_cast<double>(outline.points[n].x >> 6),
                         static_cast<double>(outline.points[n].y >> 6)};
        };
        for (std::size_t n = first; n < end; ++n)
        {
            if (outline.points[n].onCurve)
            {
                places.push_back(at(n));
                continue;
            }
            // A contour starts and ends on the curve, though its first piece may start at its end.
            const Place start = places.empty() ? at(end - 1) : places.back();
            const Place control = at(n);
            Place stop = at(n + 1);
            if (!outline.points[n + 1].onCurve)
            {
                stop = {(control.x + stop.x) / 2, (control.y + stop.y) / 2};
            }
            for (int k = 1; k <= samples; ++k)
            {
                const double t = static_cast<double>(k) / samples;
                const auto mix = [&](double a, double b, double c) {
                    return (1 - t) * (1 - t) * a + 2 * t * (1 - t) * b + t * t * c;
                };
                places.push_back(
                    {mix(start.x, control.x, stop.x), mix(start.y, control.y, stop.y)});
            }
        }
        first = end;
    }
    return contours;
}

struct Segment
{
    Place a;
    Place b;
};

/// Finds how far places lie from an outline at most.
class FarthestPlace
{
public:
    explicit FarthestPlace(const Contours& contours)
    {
        for (const std::vector<Place>& contour : contours)
        {
            for (std::size_t n = 0; n < contour.size(); ++n)
            {
                segments_.push_back({contour[n], contour[n + 1 < contour.size() ? n + 1 : 0]});
            }
        }
    }

    void Add(const Place& place)
    {
        // A place that follows another is mostly near the same segment, and one that is nearer than
        // the farthest so far needs no exact distance.
        double nearest = std::numeric_limits<double>::infinity();
        for (std::size_t n = 0; n < segments_.size() && nearest > square_; ++n)
        {
            const std::size_t index = (last_ + n) % segments_.size();
            const double square = SquareDistance_(segments_[index], place);
            if (square < nearest)
            {
                nearest = square;
                next_ = index;
            }
        }
        last_ = next_;
        square_ = std::max(square_, nearest);
    }

    double Distance() const { return std::sqrt(square_); }

private:
    static double SquareDistance_(const Segment& segment, const Place& place)
    {
        const double x = segment.b.x - segment.a.x;
        const double y = segment.b.y - segment.a.y;
        const double square = x * x + y * y;
        const double along = (place.x - segment.a.x) * x + (place.y - segment.a.y) * y;
        const double t = square > 0 ? std::clamp(along / square, 0.0, 1.0) : 0.0;
        const double dx = segment.a.x + t * x - place.x;
        const double dy = segment.a.y + t * y - place.y;
        return dx * dx + dy * dy;
    }

    std::vector<Segment> segments_;
    double square_ = 0;
    std::size_t last_ = 0;
    std::size_t next_ = 0;
};

/// How far the border of what an outline fills by the non-zero rule lies from a repaired outline at
/// most, in units. Loops thinner than a unit on average are what rounding leaves between edges: a
/// repair drops them. Nothing when there is no border to be had.
std::optional<double> Movement(const contours::NativeOutline& own,
                               const contours::NativeOutline& given)
{
    contours::OutlineUnion border;
    for (const std::vector<Place>& contour : Sampled(own))
    {
        border.BeginContour();
        for (const Place& place : contour)
        {
            border.AddVertex(place.x, place.y);
        }
    }
    if (!border.Unite())
    {
        return std::nullopt;
    }
    FarthestPlace farthest(Sampled(given));
    for (const auto& loop : border.Loops())
    {
        double length = 0;
        std::vector<Place> places;
        for (std::size_t n = 0; n < loop.size(); ++n)
        {
            const auto& a = loop[n]->place;
            const auto& b = loop[n + 1 < loop.size() ? n + 1 : 0]->place;
            length += std::hypot(b[0] - a[0], b[1] - a[1]);
            places.push_back({a[0], a[1]});
            places.push_back({(a[0] + b[0]) / 2, (a[1] + b[1]) / 2});
        }
        if (loop.size() < 3 || std::fabs(contours::SignedArea(loop)) < length / 2)
        {
            continue;
        }
        std::for_each(places.begin(), places.end(),
                      [&](const Place& place) { farthest.Add(place); });
    }
    return farthest.Distance();
}

struct Counts
{
    long noCaps = 0;
    long falseHoles = 0;
    long wrongContours = 0;
    long contours = 0;
    long wrongGlyphs = 0;

    void Add(const Built& built)
    {
        noCaps += built.noCaps ? 1 : 0;
        falseHoles += built.falseHoles ? 1 : 0;
        contours += built.contours;
        wrongContours += built.wrongWay;
        wrongGlyphs += built.wrongWay != 0 ? 1 : 0;
    }
};

struct Survey
{
    int faces = 0;
    int cubicFaces = 0;
    int otherFaces = 0;
    int instances = 0;
    long glyphs = 0;
    Counts before;
    Counts after;
    Counts beforeNative;  // of faces with TrueType outlines alone
    long nativeGlyphs = 0;
    long repaired = 0;
    long turned = 0;
    long converted = 0;
    long failed = 0;
    long curved = 0;  // repaired outlines that still have curves, of those that had
    long hadCurves = 0;
    long changedAreas = 0;
    std::vector<std::pair<double, std::string>> movements;  // of repaired outlines, in em
    long unmeasured = 0;
    long compared = 0;  // untouched glyphs asked for in both ways
    long different = 0;
    std::vector<std::string> failures;
};

bool HasCurves(const contours::NativeOutline& outline)
{
    return std::any_of(outline.points.begin(), outline.points.end(),
                       [](const contours::NativePoint& point) { return !point.onCurve; });
}

void LookAt(Survey& survey, const posix::InstalledFace& face, UINT index, int unitsPerEm,
            const contours::NativeOutline& own, const contours::ProvidedOutline& provided)
{
    const contours::NativeOutline& given = provided.outline ? *provided.outline : own;
    const Built before = Build(own, unitsPerEm);
    const Built after = provided.outline ? Build(given, unitsPerEm) : before;
    ++survey.glyphs;
    survey.before.Add(before);
    survey.after.Add(after);
    if (!provided.isConverted)
    {
        ++survey.nativeGlyphs;
        survey.beforeNative.Add(before);
    }
    survey.repaired += provided.isRepaired ? 1 : 0;
    survey.turned += provided.isTurned ? 1 : 0;
    survey.converted += provided.isConverted ? 1 : 0;
    survey.failed += provided.isFailed ? 1 : 0;
    const std::string name =
        face.full + " (" + face.file + "), glyph " + std::to_string(index) + ":";
    if (provided.isRepaired)
    {
        const std::optional<double> moved = Movement(own, given);
        survey.unmeasured += moved ? 0 : 1;
        if (moved)
        {
            survey.movements.emplace_back(*moved / unitsPerEm, name);
        }
    }
    if (provided.isRepaired && HasCurves(own))
    {
        ++survey.hadCurves;
        survey.curved += HasCurves(given) ? 1 : 0;
    }
    // What is filled must be what the font's own outline fills by the non-zero rule.
    const double area = contours::NonZeroArea(contours::FlattenAndSeparate(own, unitsPerEm));
    const double em = unitsPerEm;
    const bool changed = provided.outline && !after.noCaps &&
                         std::fabs(after.capArea - area) > 0.03 * area + 0.0005 * em * em;
    survey.changedAreas += changed ? 1 : 0;
    if (after.noCaps || after.falseHoles || after.wrongWay != 0 || changed)
    {
        survey.failures.push_back(
            name + (after.noCaps ? " no caps" : "") + (after.falseHoles ? " false holes" : "") +
            (after.wrongWay != 0 ? " wrong direction" : "") + (changed ? " area changed" : "") +
            (provided.isFailed ? " (not repaired)" : ""));
        std::fprintf(stderr, "\r%s\n", survey.failures.back().c_str());
    }
}

/// Asks for the western characters in both ways: untouched glyphs must be the same bytes.
void Compare(Survey& survey, const std::shared_ptr<const posix::InstalledFace>& face,
             int unitsPerEm, const std::vector<char32_t>& characters)
{
    for (std::size_t n = 0; n < characters.size(); ++n)
    {
        const auto code = static_cast<BYTE>(n + 32);
        std::vector<BYTE> asIs;
        std::vector<BYTE> repaired;
        const auto read = [&](UINT outlines, std::vector<BYTE>& bytes) {
            return posix::UseGlyph(
                face, unitsPerEm, characters[n], code, outlines,
                [&bytes](const posix::GlyphOutline& glyph) { bytes = glyph.polygons; });
        };
        if (!read(OUTLINES_AS_IS, asIs) || !read(OUTLINES_REPAIRED, repaired))
        {
            continue;
        }
        const contours::ProvidedOutline* const known =
            face->outlines->Find(posix::GlyphIndexOf(face, characters[n], code));
        if (known != nullptr && !known->outline)
        {
            ++survey.compared;
            survey.different += asIs != repaired ? 1 : 0;
        }
    }
}

std::vector<char32_t> WesternCharacters()
{
    std::vector<char32_t> characters;
    for (int code = 32; code < 256; ++code)
    {
        const std::string utf8 = CodePageToUtf8(std::string(1, static_cast<char>(code)), 1252);
        const auto lead = static_cast<unsigned char>(utf8[0]);
        char32_t character = utf8.size() == 1 ? lead : lead & (0x7Fu >> utf8.size());
        for (std::size_t n = 1; n < utf8.size(); ++n)
        {
            character = character << 6 | (static_cast<unsigned char>(utf8[n]) & 0x3Fu);
        }
        characters.push_back(character);
    }
    return characters;
}

void Print(const char* what, long before, long after, long glyphs)
{
    const auto percent = [glyphs](long count) {
        return glyphs == 0 ? 0.0 : 100.0 * static_cast<double>(count) / static_cast<double>(glyphs);
    };
    std::printf("%-44s %9ld %8.3f %%  %9ld %8.4f %%\n", what, before, percent(before), after,
                percent(after));
}

/// How far repaired outlines moved, and which moved farthest.
void PrintMovements(std::vector<std::pair<double, std::string>> movements, long unmeasured)
{
    if (movements.empty())
    {
        return;
    }
    std::sort(movements.begin(), movements.end(), std::greater());
    const auto beyond = [&](double most) {
        return std::count_if(movements.begin(), movements.end(),
                             [most](const auto& movement) { return movement.first > most; });
    };
    std::printf(
        "repaired outlines moved by at most %.5f em, 99.9 %% of them by %.5f em, half by %.5f em; "
        "%ld by more than 0.0008 em; not measured %ld\n",
        movements.front().first, movements[movements.size() / 1000].first,
        movements[movements.size() / 2].first, static_cast<long>(beyond(0.0008)), unmeasured);
    constexpr std::size_t shown = 20;
    std::printf("\nmoved farthest:\n");
    for (std::size_t n = 0; n < std::min(movements.size(), shown); ++n)
    {
        std::printf("  %s %.5f em\n", movements[n].second.c_str(), movements[n].first);
    }
}

void Report(const Survey& survey)
{
    std::printf(
        "%d faces (%d of them with cubic outlines, %d named instances), %ld glyphs; %d other"
        " faces\n\n",
        survey.faces, survey.cubicFaces, survey.instances, survey.glyphs, survey.otherFaces);
    std::printf("%-44s %20s  %20s\n", "what", "before repair", "after");
    Print("no caps (the tessellator refuses)", survey.before.noCaps, survey.after.noCaps,
          survey.glyphs);
    Print("false holes (odd rule is not the non-zero)", survey.before.falseHoles,
          survey.after.falseHoles, survey.glyphs);
    Print("glyphs with contours the wrong way", survey.before.wrongGlyphs, survey.after.wrongGlyphs,
          survey.glyphs);
    std::printf("%-44s %9ld %8.3f %%  %9ld %8.4f %%\n", "contours the wrong way",
                survey.before.wrongContours,
                100.0 * static_cast<double>(survey.before.wrongContours) /
                    std::max(1.0, static_cast<double>(survey.before.contours)),
                survey.after.wrongContours,
                100.0 * static_cast<double>(survey.after.wrongContours) /
                    std::max(1.0, static_cast<double>(survey.after.contours)));
    std::printf(
        "\nof %ld TrueType glyphs alone, before: %ld without caps, %ld with false holes, %ld "
        "with contours the wrong way\n",
        survey.nativeGlyphs, survey.beforeNative.noCaps, survey.beforeNative.falseHoles,
        survey.beforeNative.wrongGlyphs);
    std::printf("repaired %ld, turned %ld, converted %ld, could not be repaired %ld\n",
                survey.repaired, survey.turned, survey.converted, survey.failed);
    std::printf("repaired outlines with curves that keep some: %ld of %ld\n", survey.curved,
                survey.hadCurves);
    std::printf("outlines handed over that fill another area: %ld\n", survey.changedAreas);
    std::printf("untouched glyphs asked for in both ways: %ld, different: %ld\n", survey.compared,
                survey.different);
    PrintMovements(survey.movements, survey.unmeasured);
    std::printf("\nwrong after repair: %zu\n", survey.failures.size());
    for (const std::string& failure : survey.failures)
    {
        std::printf("  %s\n", failure.c_str());
    }
}

}  // namespace

int main(int argc, char** argv)
{
    bool lettersOnly = false;
    UINT every = 1;
    const char* filter = "";
    for (int n = 1; n < argc; ++n)
    {
        if (std::strcmp(argv[n], "--letters") == 0)
        {
            lettersOnly = true;
        }
        else if (std::strcmp(argv[n], "--every") == 0 && n + 1 < argc)
        {
            every = static_cast<UINT>(std::max(1, std::atoi(argv[++n])));
        }
        else
        {
            filter = argv[n];
        }
    }
    const std::vector<char32_t> western = WesternCharacters();
    Survey survey;
    auto faces = posix::ListInstalledFaces();
    std::sort(faces.begin(), faces.end(), [](const auto& a, const auto& b) {
        return std::tie(a->full, a->file, a->index) < std::tie(b->full, b->file, b->index);
    });
    for (const auto& face : faces)
    {
        if (face->full.find(filter) == std::string::npos)
        {
            continue;
        }
        const auto design = posix::DesignOf(face);
        if (!design)
        {
            ++survey.otherFaces;
            continue;
        }
        ++survey.faces;
        survey.cubicFaces += face->kind == posix::OutlineKind::Cubic ? 1 : 0;
        survey.instances += face->index >> 16 != 0 ? 1 : 0;
        std::set<UINT> glyphs;
        if (lettersOnly)
        {
            for (std::size_t n = 0; n < western.size(); ++n)
            {
                glyphs.insert(posix::GlyphIndexOf(face, western[n], static_cast<BYTE>(n + 32)));
            }
        }
        else
        {
            for (UINT index = 0; index < posix::GlyphCountOf(face); index += every)
            {
                glyphs.insert(index);
            }
        }
        for (const UINT index : glyphs)
        {
            posix::InspectGlyph(
                face, index,
                [&](const contours::NativeOutline& own, const contours::ProvidedOutline& provided) {
                    LookAt(survey, *face, index, design->unitsPerEm, own, provided);
                });
        }
        Compare(survey, face, design->unitsPerEm, western);
        std::fprintf(stderr, "\r%d faces", survey.faces);
    }
    std::fprintf(stderr, "\n");
    Report(survey);
    return survey.different == 0 ? 0 : 1;
}
