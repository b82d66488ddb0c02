// SPDX-License-Identifier: MIT
#include "contours/FaceOutlines.h"

#include <utility>

namespace orvane::contours
{
namespace
{

const ProvidedOutline untouched;

}  // namespace

const ProvidedOutline* FaceOutlines::Find(std::uint32_t glyph) const
{
    if (glyph < isUntouched_.size() && isUntouched_[glyph])
    {
        return &untouched;
    }
    const auto known = others_.find(glyph);
    return known != others_.end() ? &known->second : nullptr;
}

const ProvidedOutline& FaceOutlines::Keep(std::uint32_t glyph, ProvidedOutline provided)
{
    if (provided.outline || provided.isFailed)
    {
        return others_.insert_or_assign(glyph, std::move(provided)).first->second;
    }
    if (glyph >= isUntouched_.size())
    {
        isUntouched_.resize(std::size_t{glyph} + 1);
    }
    isUntouched_[glyph] = true;
    return untouched;
}

}  // namespace orvane::contours
