// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"

#include <array>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace orvane
{

/// Where the bytes of a file go: a file, standard output or memory.
class ORVANE_API ByteSink
{
public:
    virtual ~ByteSink() = default;
    /// Takes the next bytes. Throws Error when they cannot be written.
    virtual void Write(const void* bytes, std::size_t count) = 0;
};

/// A sink that keeps its bytes in memory.
class MemorySink : public ByteSink
{
public:
    void Write(const void* newBytes, std::size_t count) override
    {
        const auto* const first = static_cast<const unsigned char*>(newBytes);
        bytes.insert(bytes.end(), first, first + count);
    }

    std::vector<unsigned char> bytes;
};

/// Collects small pieces of a file and passes them on in blocks. Numbers are written alike
/// whatever the locale and the byte order of the machine are.
class ORVANE_API BufferedSink
{
public:
    /// \param sink borrowed
    explicit BufferedSink(ByteSink& sink) : sink_(sink) {}
    BufferedSink(const BufferedSink&) = delete;
    BufferedSink& operator=(const BufferedSink&) = delete;

    void Bytes(const void* bytes, std::size_t count);
    void Text(std::string_view text) { Bytes(text.data(), text.size()); }
    /// A number as text, with the fewest digits from which the same number is read again.
    void Number(float number);
    void Number(std::size_t number);
    /// A number as bytes, the lowest byte first.
    void LittleEndian(std::unsigned_integral auto number)
    {
        std::array<unsigned char, sizeof(number)> bytes;
        for (unsigned char& byte : bytes)
        {
            byte = static_cast<unsigned char>(number);
            number = static_cast<decltype(number)>(number >> 4 >> 4);  // of a byte, too
        }
        Bytes(bytes.data(), bytes.size());
    }
    void LittleEndian(float number) { LittleEndian(std::bit_cast<std::uint32_t>(number)); }

    /// To be called after the last byte: passes on what is still here.
    void Flush();

private:
    ByteSink& sink_;
    std::size_t used_ = 0;
    std::array<char, 65536> buffer_;
};

}  // namespace orvane
