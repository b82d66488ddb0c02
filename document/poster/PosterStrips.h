// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Types.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <future>
#include <vector>

namespace orvane
{

class PosterTarget;

/// Some consecutive rows of a picture, in memory as in a bitmap of that height: the lowest row
/// first.
class Strip
{
public:
    /// \param offset of the strip in its file, in bytes. The memory has the same alignment to disk
    /// blocks as the offset, so that the system can write whole blocks without copying them first.
    void Resize(std::size_t rowBytes, int height, std::uint64_t offset);

    int Height() const { return height_; }
    /// \param y from the top
    BYTE* Row(int y) { return lowest_ + rowBytes_ * static_cast<std::size_t>(height_ - 1 - y); }
    const BYTE* Row(int y) const { return const_cast<Strip*>(this)->Row(y); }

private:
    std::vector<BYTE> memory_;
    BYTE* lowest_ = nullptr;  ///< the lowest row, in memory_
    std::size_t rowBytes_ = 0;
    int height_ = 0;
};

/// The strips of a picture. While a strip is drawn, another thread writes the strips above it, from
/// top to bottom. Every function throws Error, also when the other thread has failed.
class PosterStrips
{
public:
    /// \param target must be open; it is used until this object ends
    /// \param height the largest number of rows in a strip
    /// \param goOn called now and then while a strip is written; when it returns false, the writing
    /// ends
    PosterStrips(PosterTarget& target, std::size_t rowBytes, int height,
                 std::function<bool()> goOn);
    ~PosterStrips();
    PosterStrips(const PosterStrips&) = delete;
    PosterStrips& operator=(const PosterStrips&) = delete;

    /// Returns the strip for the next rows. Waits until an earlier strip is written and its memory
    /// is free.
    Strip& Begin(int top, int height);
    /// To be called when the strip is completely drawn: the other thread then writes it.
    void End();
    /// To be called after the last strip: waits until all are written.
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
    std::vector<Slot> slots_;  ///< used in turn
    std::size_t drawn_ = 0;    ///< the slot of the strip that is drawn now
    int top_ = 0;              ///< the first row of that strip in the picture
};

}  // namespace orvane
