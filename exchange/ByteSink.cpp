// SPDX-License-Identifier: MIT
#include "exchange/ByteSink.h"

#include <charconv>
#include <cstring>

namespace orvane
{

void BufferedSink::Bytes(const void* bytes, std::size_t count)
{
    if (count > buffer_.size() - used_)
    {
        Flush();
    }
    if (count > buffer_.size())
    {
        sink_.Write(bytes, count);
        return;
    }
    std::memcpy(buffer_.data() + used_, bytes, count);
    used_ += count;
}

void BufferedSink::Number(float number)
{
    char digits[32];
    Bytes(digits, static_cast<std::size_t>(
                      std::to_chars(digits, digits + sizeof(digits), number).ptr - digits));
}

void BufferedSink::Number(std::size_t number)
{
    char digits[32];
    Bytes(digits, static_cast<std::size_t>(
                      std::to_chars(digits, digits + sizeof(digits), number).ptr - digits));
}

void BufferedSink::Flush()
{
    sink_.Write(buffer_.data(), used_);
    used_ = 0;
}

}  // namespace orvane
