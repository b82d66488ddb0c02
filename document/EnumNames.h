// SPDX-License-Identifier: MIT
#pragma once

#include "orvane/orvane.h"

#include <array>
#include <string>

namespace orvane
{

/// The names of an enumeration's values in options, JSON and messages, in the order of the values.
template <typename Enum>
struct EnumNames;

template <>
struct EnumNames<EdgeStyle>
{
    static constexpr std::array names = {"square", "bevel", "round"};
};

template <>
struct EnumNames<BevelSides>
{
    static constexpr std::array names = {"front", "back", "both"};
};

template <>
struct EnumNames<LetterFusion>
{
    static constexpr std::array names = {"none", "line", "text"};
};

template <>
struct EnumNames<Alignment>
{
    static constexpr std::array names = {"left", "center", "right"};
};

template <>
struct EnumNames<TextureQuality>
{
    static constexpr std::array names = {"nearest", "linear", "mipmap"};
};

template <>
struct EnumNames<BackgroundPlacement>
{
    static constexpr std::array names = {"stretch", "tile", "center"};
};

template <>
struct EnumNames<DrawingMode>
{
    static constexpr std::array names = {"solid", "outline", "boxes"};
};

template <>
struct EnumNames<LightsFollow>
{
    static constexpr std::array names = {"scene", "camera"};
};

template <>
struct EnumNames<LetterPart>
{
    static constexpr std::array names = {"face", "edge", "bevel", "outline"};
};

template <>
struct EnumNames<MeshFormat>
{
    static constexpr std::array names = {"glb", "gltf", "stl", "3mf", "obj", "ply"};
};

template <>
struct EnumNames<LengthUnit>
{
    static constexpr std::array names = {"none", "mm", "cm", "in"};
};

template <>
struct EnumNames<UpAxis>
{
    static constexpr std::array names = {"y", "z"};
};

/// The name of a value that may come from a file; the number itself when it has no name.
template <typename Enum>
std::string NameOfNumber(unsigned long number)
{
    constexpr auto& names = EnumNames<Enum>::names;
    return number < names.size() ? names[number] : std::to_string(number);
}

template <typename Enum>
std::string NameOf(Enum value)
{
    return NameOfNumber<Enum>(static_cast<unsigned long>(value));
}

}  // namespace orvane
