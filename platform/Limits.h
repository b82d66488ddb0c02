// SPDX-License-Identifier: MIT
#pragma once

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

}  // namespace orvane::limits
