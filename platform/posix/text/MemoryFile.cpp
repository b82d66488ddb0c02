// SPDX-License-Identifier: MIT
#include "platform/MemoryFile.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>

namespace orvane
{

struct MemoryFile::Parts
{
    Parts() : descriptor(memfd_create("orvane", MFD_CLOEXEC)) {}
    ~Parts()
    {
        if (descriptor >= 0)
        {
            close(descriptor);
        }
    }
    Parts(const Parts&) = delete;
    Parts& operator=(const Parts&) = delete;

    int descriptor;
    std::string path = "/proc/self/fd/" + std::to_string(descriptor);
};

MemoryFile::MemoryFile(std::unique_ptr<Parts> parts) : parts_(std::move(parts)) {}

MemoryFile::~MemoryFile() = default;

std::unique_ptr<MemoryFile> MemoryFile::Make(const std::string& bytes)
{
    auto parts = std::make_unique<Parts>();
    std::size_t written = 0;
    while (parts->descriptor >= 0 && written < bytes.size())
    {
        const ssize_t count =
            write(parts->descriptor, bytes.data() + written, bytes.size() - written);
        if (count < 0 && errno != EINTR)
        {
            return nullptr;
        }
        written += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    return parts->descriptor >= 0 ? std::unique_ptr<MemoryFile>(new MemoryFile(std::move(parts)))
                                  : nullptr;
}

const std::string& MemoryFile::Path() const
{
    return parts_->path;
}

}  // namespace orvane
