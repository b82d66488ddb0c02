// SPDX-License-Identifier: MIT
#include "solids/drawing/MeshDrawing.h"

#include <array>
#include <bit>
#include <cstdint>

namespace orvane
{

namespace
{
std::array<float, 17> NumbersOf(const NamedColor& material)
{
    std::array<float, 17> numbers;
    std::size_t next = 0;
    for (const ColorVector& color : {material.GetAmbientColor(), material.GetDiffuseColor(),
                                     material.GetEmissionColor(), material.GetSpecularColor()})
    {
        for (const float number : {color.red, color.green, color.blue, color.alpha})
        {
            numbers[next++] = number;
        }
    }
    numbers[next] = material.GetShininess();
    return numbers;
}
}  // namespace

bool MeshDrawing::AreSame(const NamedColor& a, const NamedColor& b)
{
    // Bit by bit: a number that is no number is equal to itself.
    using Bits = std::array<std::uint32_t, std::tuple_size_v<decltype(NumbersOf(a))>>;
    return std::bit_cast<Bits>(NumbersOf(a)) == std::bit_cast<Bits>(NumbersOf(b));
}

void MeshDrawing::SetCurrentAttributes(const MeshVertex& vertex, bool isTextured)
{
    glNormal3fv(vertex.normal);
    if (isTextured)
    {
        glTexCoord2fv(vertex.texture);
    }
}

void MeshDrawing::AppendVertex(const MeshVertex& vertex, bool isTextured,
                               std::vector<float>& numbers)
{
    if (isTextured)
    {
        numbers.insert(numbers.end(), std::begin(vertex.texture), std::end(vertex.texture));
    }
    numbers.insert(numbers.end(), std::begin(vertex.normal), std::end(vertex.normal));
    numbers.insert(numbers.end(), std::begin(vertex.position), std::end(vertex.position));
}

}  // namespace orvane
