// SPDX-License-Identifier: MIT
#include "document/poster/PosterStrips.h"

#include "document/poster/PosterTarget.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace orvane
{

namespace
{

constexpr std::size_t diskBlockBytes = 4096;

// There are as many strips as fit into 64 MiB, but at least 2, so that one can be drawn while
// another is written, and at most 8.
constexpr std::size_t maxStripBytes = 64 << 20;
constexpr std::size_t minStripCount = 2;
constexpr std::size_t maxStripCount = 8;

}  // namespace

void Strip::Resize(std::size_t rowBytes, int height, std::uint64_t offset)
{
    rowBytes_ = rowBytes;
    height_ = height;
    const std::size_t needed = rowBytes * static_cast<std::size_t>(height) + diskBlockBytes;
    memory_.resize(needed + diskBlockBytes);
    std::size_t space = memory_.size();
    void* block = memory_.data();
    lowest_ = static_cast<BYTE*>(std::align(diskBlockBytes, needed, block, space)) +
              offset % diskBlockBytes;
}

PosterStrips::PosterStrips(PosterTarget& target, std::size_t rowBytes, int height,
                           std::function<bool()> goOn)
    : target_(target), rowBytes_(rowBytes), goOn_(std::move(goOn))
{
    // With several strips the drawing can run ahead of a slow disk.
    const std::size_t stripBytes = rowBytes * static_cast<std::size_t>(height);
    slots_ =
        std::vector<Slot>(std::clamp(maxStripBytes / stripBytes, minStripCount, maxStripCount));
}

PosterStrips::~PosterStrips()
{
    for (const Slot& slot : slots_)
    {
        if (slot.written.valid())
        {
            slot.written.wait();
        }
    }
}

Strip& PosterStrips::Begin(int top, int height)
{
    top_ = top;
    Slot& slot = slots_[drawn_];
    if (slot.written.valid())
    {
        slot.written.get();
    }
    slot.strip.Resize(rowBytes_, height, target_.OffsetOf(top, height));
    return slot.strip;
}

void PosterStrips::End()
{
    Slot& slot = slots_[drawn_];
    auto write = [this, above = slots_[(drawn_ + slots_.size() - 1) % slots_.size()].written,
                  top = top_, &slot]() mutable {
        if (above.valid())
        {
            above.get();
        }
        above = {};  // so that no chain of futures keeps the results of all earlier writes
        target_.WriteRows(top, slot.strip, goOn_);
    };
    // When the system refuses another thread, this thread writes the strip when it is needed.
    slot.written = std::async(std::launch::async | std::launch::deferred, std::move(write));
    drawn_ = (drawn_ + 1) % slots_.size();
}

void PosterStrips::Finish()
{
    for (const Slot& slot : slots_)
    {
        if (slot.written.valid())
        {
            slot.written.get();
        }
    }
}

}  // namespace orvane
