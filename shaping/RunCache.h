// SPDX-License-Identifier: MIT
#pragma once

#include "orvane/Error.h"
#include "platform/ShapingFace.h"

#include <cstddef>
#include <list>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace orvane
{

/// The glyphs of a run from left to right. Clusters are counted from the run's first character.
using RunGlyphs = std::shared_ptr<const std::vector<ShapedGlyph>>;

/// The error of a font that makes more glyphs of some characters than limits::MaxGlyphs.
Error TooManyGlyphs(const ShapingFace& face, std::size_t characters);

/// Shapes runs and keeps the latest, up to a number of bytes. Only one thread at a time may use an
/// object.
class RunCache
{
public:
    explicit RunCache(std::size_t mostBytes) : mostBytes_(mostBytes) {}

    /// Throws TooManyGlyphs.
    RunGlyphs Shape(const ShapingFace& face, const ShapingRun& run);

    std::size_t Bytes() const { return bytes_; }
    void Clear();

private:
    struct Entry
    {
        std::u32string key;
        RunGlyphs glyphs;
        std::size_t bytes;
    };

    std::size_t mostBytes_;
    std::size_t bytes_ = 0;
    std::list<Entry> entries_;  // the last used first
    std::unordered_map<std::u32string_view, std::list<Entry>::iterator> byKey_;
};

}  // namespace orvane
