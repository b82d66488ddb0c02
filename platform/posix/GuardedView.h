// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <memory>

namespace posix
{

struct GuardedRange;

/// Bytes of a file that are mapped to be read, and that stay readable when another program makes
/// the file shorter. The bytes that the file loses read as 0.
///
/// Reading beyond the end of a mapped file raises the signal SIGBUS, which would end the process.
/// So the first view installs a handler for SIGBUS, which stays for the rest of the process. For an
/// address in a view it puts zeros there; for every other address it does what was set before it. A
/// program that sets its own handler later must pass the signal on.
///
/// The first page of the file is copied, because it holds headers: what has been checked in them
/// cannot be changed by another program any more.
class GuardedView
{
public:
    /// Maps \p length bytes from \p offset on, a multiple of the page size. Null when the system
    /// refuses.
    static std::shared_ptr<GuardedView> Map(int descriptor, off_t offset, std::size_t length);
    ~GuardedView();
    GuardedView(const GuardedView&) = delete;
    GuardedView& operator=(const GuardedView&) = delete;

    void* Start() const { return start_; }

private:
    GuardedView();

    void* start_;             ///< MAP_FAILED for none
    std::size_t length_ = 0;  ///< whole pages, in bytes
    GuardedRange* const range_;
};

}  // namespace posix
