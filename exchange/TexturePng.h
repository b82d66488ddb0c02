// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

class TextureMap;

namespace orvane
{

/// The pixels of a texture as a PNG file. Throws Error when its picture cannot be read.
std::vector<unsigned char> EncodeAsPng(const TextureMap& texture);

/// The name of the file of a texture that lies beside a mesh file.
std::string TextureFileName(const std::string& stem, std::size_t index);

}  // namespace orvane
