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

/// Some consecutive rows of a picture, in memory as in a bitmap of that height: the lowest first.
class Strip
{
public:
    /// \param offset of the strip in its file. The memory is aligned like the file, so that the
    /// system can write whole disk blocks without copying parts together.
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

/// The strips of a picture. While one of them is drawn, another thread writes those above it, in
/// their order. Every function throws Error, also for a failure of the other thread.
class PosterStrips
{
public:
    /// \param target open, and used until this object ends
    /// \param height the most rows of a strip
    /// \param goOn asked now and then while a strip is written; its answer false ends the writing
    PosterStrips(PosterTarget& target, std::size_t rowBytes, int height,
                 std::function<bool()> goOn);
    ~PosterStrips();
    PosterStrips(const PosterStrips&) = delete;
    PosterStrips& operator=(const PosterStrips&) = delete;

    /// The strip for the next rows. Waits until there is memory for it.
    Strip& Begin(int top, int height);
    /// To be called when the strip is drawn: has it written.
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
    std::size_t drawn_ = 0;    ///< the slot of the strip that is drawn
    int top_ = 0;              ///< of that strip
};

}  // namespace orvane
