// SPDX-License-Identifier: MIT
#include "apps/cli/PosterStrips.h"

#include "apps/cli/PosterTarget.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace
{

constexpr std::size_t blockBytes = 4096;
constexpr std::size_t worthBytes = 64 << 20;  // of all strips, unless they are fewer or more
constexpr std::size_t fewest = 2;
constexpr std::size_t most = 8;

}  // namespace

void Strip::Resize(std::size_t rowBytes, int height, std::uint64_t place)
{
    rowBytes_ = rowBytes;
    height_ = height;
    const std::size_t needed = rowBytes * static_cast<std::size_t>(height) + blockBytes;
    memory_.resize(needed + blockBytes);
    std::size_t space = memory_.size();
    void* block = memory_.data();
    lowest_ = static_cast<BYTE*>(std::align(blockBytes, needed, block, space)) + place % blockBytes;
}

PosterStrips::PosterStrips(PosterTarget& target, std::size_t rowBytes, int height,
                           std::function<bool()> goOn)
    : target_(target), rowBytes_(rowBytes), goOn_(std::move(goOn))
{
    // Where there is little to draw the drawing runs ahead of the disk.
    const std::size_t stripBytes = rowBytes * static_cast<std::size_t>(height);
    slots_ = std::vector<Slot>(std::clamp(worthBytes / stripBytes, fewest, most));
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
    slot.strip.Resize(rowBytes_, height, target_.PlaceOf(top, height));
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
        above = {};  // or the first strip's would be kept until the last one is written
        target_.WriteRows(top, slot.strip, goOn_);
    };
    slot.written = std::async(std::launch::async, std::move(write));
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
