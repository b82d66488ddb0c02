// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

/// The largest inputs that the library takes, in one place. A file from a stranger may name any
/// number; a number above its limit here is refused with an error that names the limit. Each limit
/// gives its unit and its reason.
namespace orvane::limits
{

/// The number of bytes that a program may use for a file of \p fileBytes bytes: 64 MiB, and 20
/// bytes for each byte of the file. A small file that asks for more is refused.
constexpr std::uint64_t MemoryForFile(std::uint64_t fileBytes)
{
    return (std::uint64_t{64} << 20) + 20 * fileBytes;
}

/// Pixels: the largest width and the largest height of a picture, whoever asks for it: options, a
/// scene's stored size or a host. At 300 dots per inch this is 8.5 metres. The most pixels of a
/// picture are the square of it, 10 thousand million.
constexpr int maxPictureSide = 100'000;

/// Bytes of UTF-8: the longest text of a node, its line ends included. Drawing a text takes about
/// 50 microseconds for each letter even in a small picture, so this many take a few seconds.
constexpr std::size_t maxTextBytes = 65'536;

/// Bytes of UTF-8: the longest name of a font or of a view that is looked for. An unknown name is
/// compared with every known name, letter by letter. Fonts have names of at most 63 bytes.
constexpr std::size_t maxNameBytes = 1'024;

}  // namespace orvane::limits
