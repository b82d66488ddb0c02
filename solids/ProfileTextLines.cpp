// SPDX-License-Identifier: MIT
// The lines that show the shape of a profiled solid.
#include "geometry/MeshVertex.h"
#include "solids/NodeTransform.h"
#include "solids/PositionWelder.h"
#include "solids/ProfileTextSolids.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>

namespace orvane
{

namespace
{

using Corner = SolidSurface::Corner;

/// One side of a triangle, from one of its corners to the next.
struct Side
{
    std::uint64_t ends;    ///< the numbers of the two positions, the smaller one in the upper half
    std::uint32_t corner;  ///< the first one's index
    std::uint32_t next;    ///< the other one's index
};

class LineFinder
{
public:
    LineFinder(const SolidSurface& solid, const SolidSettings& settings);
    SolidLines Find() const;

private:
    bool IsStep(float z) const;
    bool IsFlat(std::uint32_t corner) const;
    MeshPart PartOf(std::uint32_t corner) const;
    bool IsShown(const Side& a, const Side& b) const;
    /// Whether two corners at the same place, of triangles that meet there, are shaded differently.
    bool AreApart(std::uint32_t a, std::uint32_t b) const;
    /// Whether the surface has an edge along the common side of two triangles.
    bool IsSharp(const Side& a, const Side& b) const;
    MeshPoint NormalOf(std::uint32_t corner) const;

    const SolidSurface& solid_;
    std::vector<double> heights_;  ///< of the rings of the profile's steps
    double cosine_;                ///< of the smooth angle
};

LineFinder::LineFinder(const SolidSurface& solid, const SolidSettings& settings)
    : solid_(solid), cosine_(std::cos(settings.smoothAngle * std::numbers::pi / 180))
{
    for (const ProfileStep& step : settings.profile.steps)
    {
        if (settings.sides != ProfileSides::Back)
        {
            heights_.push_back(settings.stretchZ * step.height);
        }
        if (settings.sides != ProfileSides::Front)
        {
            heights_.push_back(settings.stretchZ * (-settings.depth - step.height));
        }
    }
}

bool LineFinder::IsStep(float z) const
{
    constexpr double rounding = 1e-5;  // ems
    return std::any_of(heights_.begin(), heights_.end(),
                       [z](double height) { return std::fabs(z - height) < rounding; });
}

bool LineFinder::IsFlat(std::uint32_t corner) const
{
    const Corner* const triangle = &solid_.corners[corner - corner % 3];
    return triangle[0].place[2] == triangle[1].place[2] &&
           triangle[0].place[2] == triangle[2].place[2];
}

MeshPart LineFinder::PartOf(std::uint32_t corner) const
{
    return corner < solid_.firstOfEdge    ? MeshPart::Face
           : corner < solid_.firstOfBevel ? MeshPart::Edge
                                          : MeshPart::Bevel;
}

MeshPoint LineFinder::NormalOf(std::uint32_t corner) const
{
    MeshPoint places[3];
    for (std::size_t k = 0; k < 3; ++k)
    {
        const float(&place)[3] = solid_.corners[corner - corner % 3 + k].place;
        places[k] = {place[0], place[1], place[2]};
    }
    return Unit(Cross(Minus(places[1], places[0]), Minus(places[2], places[0])));
}

bool LineFinder::AreApart(std::uint32_t a, std::uint32_t b) const
{
    // Triangles that are shaded as one surface may have slightly different normals at a corner,
    // because each takes those of its own neighbours.
    constexpr float cosine = 0.985f;  // of 10 degrees
    const float(&first)[3] = solid_.corners[a].normal;
    const float(&second)[3] = solid_.corners[b].normal;
    return first[0] * second[0] + first[1] * second[1] + first[2] * second[2] < cosine;
}

bool LineFinder::IsSharp(const Side& a, const Side& b) const
{
    // The two triangles run along their common side in opposite directions.
    const bool areStartsApart = AreApart(a.corner, b.next);
    const bool areEndsApart = AreApart(a.next, b.corner);
    if (areStartsApart && areEndsApart)
    {
        return true;
    }
    // A sharp edge that ends in a face has the face's normal there. A smooth surface that ends in a
    // ridge has different normals there; its triangles meet at a small angle.
    // However flat the profile is, a corner of the outline is seen from the front.
    const MeshPoint first = NormalOf(a.corner);
    const MeshPoint second = NormalOf(b.corner);
    const double turn = first[0] * second[0] + first[1] * second[1];
    const double level = std::hypot(first[0], first[1]) * std::hypot(second[0], second[1]);
    return (areStartsApart || areEndsApart) &&
           (Dot(first, second) < cosine_ || turn < cosine_ * level);
}

bool LineFinder::IsShown(const Side& a, const Side& b) const
{
    if (PartOf(a.corner) != PartOf(b.corner))
    {
        return true;
    }
    if (IsSharp(a, b))
    {
        return true;
    }
    const float z = solid_.corners[a.corner].place[2];
    return PartOf(a.corner) == MeshPart::Bevel && z == solid_.corners[a.next].place[2] &&
           IsStep(z) && !(IsFlat(a.corner) && IsFlat(b.corner));
}

SolidLines LineFinder::Find() const
{
    PositionWelder welder;
    std::vector<std::uint32_t> numbers;
    for (const Corner& corner : solid_.corners)
    {
        numbers.push_back(welder.NumberOf(corner.place));
    }
    std::vector<Side> sides;
    for (std::uint32_t corner = 0; corner < numbers.size(); ++corner)
    {
        const std::uint32_t next = corner % 3 == 2 ? corner - 2 : corner + 1;
        const auto [low, high] = std::minmax(numbers[corner], numbers[next]);
        sides.push_back({std::uint64_t{low} << 32 | high, corner, next});
    }
    std::sort(sides.begin(), sides.end(),
              [](const Side& a, const Side& b) { return a.ends < b.ends; });
    SolidLines lines;
    for (std::size_t first = 0; first < sides.size();)
    {
        std::size_t end = first;
        while (end < sides.size() && sides[end].ends == sides[first].ends)
        {
            ++end;
        }
        // Where a solid touches itself, more than two triangles share a side.
        if (end - first != 2 || IsShown(sides[first], sides[first + 1]))
        {
            for (const std::uint32_t corner : {sides[first].corner, sides[first].next})
            {
                const float(&place)[3] = solid_.corners[corner].place;
                lines.push_back({place[0], place[1], place[2]});
            }
        }
        first = end;
    }
    return lines;
}

}  // namespace

SolidLines LinesOf(const SolidSurface& solid, const SolidSettings& settings)
{
    return LineFinder(solid, settings).Find();
}

}  // namespace orvane
