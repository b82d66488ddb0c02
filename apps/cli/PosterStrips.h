// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Types.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <future>
#include <vector>

class PosterTarget;

/// Some rows of the picture, as they lie in a bitmap of that height.
class Strip
{
public:
    /// \param place where they go in a file: blocks of the disk are blocks in memory too, and need
    /// not be copied together.
    void Resize(std::size_t rowBytes, int height, std::uint64_t place);

    int Height() const { return height_; }
    /// Rows count from the top; the lowest one comes first in memory.
    BYTE* Row(int y) { return lowest_ + rowBytes_ * static_cast<std::size_t>(height_ - 1 - y); }
    const BYTE* Row(int y) const { return const_cast<Strip*>(this)->Row(y); }

private:
    std::vector<BYTE> memory_;
    BYTE* lowest_ = nullptr;
    std::size_t rowBytes_ = 0;
    int height_ = 0;
};

/// The strips of a picture, of which one is drawn while those above it are written, in order, by
/// another thread. Everything throws Failure, also for what failed there.
class PosterStrips
{
public:
    /// \param target open; lives longer. \param goOn is asked now and then while a strip is
    /// written; false ends that.
    PosterStrips(PosterTarget& target, std::size_t rowBytes, int height,
                 std::function<bool()> goOn);
    ~PosterStrips();
    PosterStrips(const PosterStrips&) = delete;
    PosterStrips& operator=(const PosterStrips&) = delete;

    /// The rows that are drawn next, no more than \p height at once.
    Strip& Begin(int top, int height);
    /// They are drawn.
    void End();
    /// All are: waits until they are written.
    void Finish();

private:
    struct Slot
    {
        Strip strip;
        std::shared_future<void> written;
    };

    PosterTarget& target_;
    std::size_t rowBytes_;
    std::function<bool()> goOn_;
    std::vector<Slot> slots_;  // in turns
    std::size_t drawn_ = 0;
    int top_ = 0;
};
