// SPDX-License-Identifier: MIT
#include "geometry/SurfaceRecorder.h"

#include <utility>

namespace orvane
{

namespace
{
constexpr std::size_t firstSlotCount = 1024;  // a power of 2

/// Faster than vector's insert of three elements.
void Append(std::vector<std::uint32_t>& indices, std::uint32_t a, std::uint32_t b, std::uint32_t c)
{
    indices.push_back(a);
    indices.push_back(b);
    indices.push_back(c);
}
}  // namespace

std::size_t SurfaceRecorder::HashOf(const VertexBits& vertex)
{
    // Large odd multipliers, another one for each word, spread neighbouring numbers over the upper
    // bits (Knuth, The Art of Computer Programming, volume 3, section 6.4).
    constexpr VertexBits multipliers = {0x9E3779B97F4A7C15u, 0xC2B2AE3D27D4EB4Fu,
                                        0x165667B19E3779F9u, 0xD6E8FEB86659FD93u};
    std::uint64_t hash = 0;
    for (std::size_t i = 0; i < vertex.size(); ++i)
    {
        hash += (vertex[i] ^ vertex[i] >> 32) * multipliers[i];
    }
    return static_cast<std::size_t>(hash ^ hash >> 32);
}

bool SurfaceRecorder::IsNext(std::uint32_t index) const
{
    const VertexBits vertex = std::bit_cast<VertexBits>(vertices_[index]);
    std::uint64_t difference = 0;
    for (std::size_t i = 0; i < vertex.size(); ++i)
    {
        difference |= vertex[i] ^ next_[i];
    }
    return difference == 0;
}

SurfaceRecorder::SurfaceRecorder(Diagonals diagonals)
    : slots_(firstSlotCount), diagonals_(diagonals)
{}

void SurfaceRecorder::Clear()
{
    vertices_.clear();
    indices_.clear();
    runs_.clear();
    renderedIndices_.clear();
    slots_.assign(slots_.size(), 0);
    next_ = {};
    normalX_ = 0;
}

void SurfaceRecorder::Begin(GLenum primitive)
{
    primitive_ = primitive;
    count_ = 0;
}

void SurfaceRecorder::Vertex(float x, float y, float z)
{
    next_[0] = PairOf(x, y);
    next_[1] = PairOf(z, normalX_);
    const std::size_t corner = count_++;
    const std::uint32_t index =
        IsCornerOfQuadBefore(corner) ? corners_[3 - corner % 4] : IndexOfNext();
    switch (primitive_)
    {
        case GL_QUADS:
            corners_[corner % 4] = index;
            if (corner % 4 == 3)
            {
                AddQuad();
            }
            break;
        case GL_TRIANGLE_FAN:
            if (corner >= 2)
            {
                AddTriangle(corners_[0], corners_[1], index);
            }
            corners_[corner == 0 ? 0 : 1] = index;
            break;
        case GL_TRIANGLE_STRIP:
            // The two corners before this one are in both slots, in turn, so that every other
            // triangle takes them in the opposite order, as a strip does.
            if (corner >= 2)
            {
                AddTriangle(corners_[0], corners_[1], index);
            }
            corners_[corner % 2] = index;
            break;
        default:  // GL_TRIANGLES, the only other primitive of a letter
            corners_[corner % 3] = index;
            if (corner % 3 == 2)
            {
                AddTriangle(corners_[0], corners_[1], corners_[2]);
            }
            break;
    }
}

bool SurfaceRecorder::IsCornerOfQuadBefore(std::size_t corner) const
{
    return primitive_ == GL_QUADS && corner >= 4 && corner % 4 < 2 &&
           IsNext(corners_[3 - corner % 4]);
}

std::uint32_t SurfaceRecorder::IndexOfNext()
{
    const std::size_t mask = slots_.size() - 1;
    for (std::size_t slot = HashOf(next_) & mask;; slot = (slot + 1) & mask)
    {
        if (slots_[slot] == 0)
        {
            vertices_.push_back(std::bit_cast<MeshVertex>(next_));
            const auto index = static_cast<std::uint32_t>(vertices_.size() - 1);
            slots_[slot] = index + 1;
            if (2 * vertices_.size() > slots_.size())
            {
                Grow();
            }
            return index;
        }
        if (IsNext(slots_[slot] - 1))
        {
            return slots_[slot] - 1;
        }
    }
}

void SurfaceRecorder::Grow()
{
    std::vector<std::uint32_t> slots(2 * slots_.size());
    const std::size_t mask = slots.size() - 1;
    for (std::size_t i = 0; i < vertices_.size(); ++i)
    {
        std::size_t slot = HashOf(std::bit_cast<VertexBits>(vertices_[i])) & mask;
        while (slots[slot] != 0)
        {
            slot = (slot + 1) & mask;
        }
        slots[slot] = static_cast<std::uint32_t>(i + 1);
    }
    slots_ = std::move(slots);
}

void SurfaceRecorder::AddQuad()
{
    const auto [a, b, c, d] = corners_;
    AddToRun(6);
    Append(indices_, a, clockwise_ ? d : b, clockwise_ ? b : d);
    Append(indices_, b, clockwise_ ? d : c, clockwise_ ? c : d);
    if (diagonals_ == Diagonals::UsualAndRendered)
    {
        Append(renderedIndices_, clockwise_ ? b : a, clockwise_ ? a : b, c);
        Append(renderedIndices_, clockwise_ ? c : a, clockwise_ ? a : c, d);
    }
}

void SurfaceRecorder::AddTriangle(std::uint32_t a, std::uint32_t b, std::uint32_t c)
{
    AddToRun(3);
    Append(indices_, a, clockwise_ ? c : b, clockwise_ ? b : c);
    if (diagonals_ == Diagonals::UsualAndRendered)
    {
        Append(renderedIndices_, clockwise_ ? b : a, clockwise_ ? a : b, c);
    }
}

void SurfaceRecorder::AddToRun(std::size_t indexCount)
{
    if (runs_.empty() || runs_.back().part != part_ || runs_.back().material != material_)
    {
        runs_.push_back({part_, material_, indices_.size(), 0});
    }
    runs_.back().indexCount += indexCount;
}

}  // namespace orvane
