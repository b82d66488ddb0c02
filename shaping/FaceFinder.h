// SPDX-License-Identifier: MIT
#pragma once

#include "shaping/FontChain.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace orvane
{

/// The face for letters that are set together.
struct FoundFace
{
    std::shared_ptr<const ShapingFace> face;  ///< never null
    bool hasAll = true;                       ///< whether it has all characters
};

/// Finds the faces for characters, and remembers which installed fonts it found. Only one thread at
/// a time may use an object.
class FaceFinder
{
public:
    /// \param cluster characters that are set in one face, as ClusterEnd joins them
    /// \param language a BCP 47 tag; may be empty
    FoundFace Find(const FontChain& chain, std::u32string_view cluster,
                   const std::string& language);

    /// Whether a face has a character. Asking the same face again is quick.
    bool IsInFace(const ShapingFace& face, char32_t character)
    {
        return (lastFace_ == face.Id() && character < isInLastFace_.size() &&
                isInLastFace_[character] != 0) ||
               LookIntoFace(face, character);
    }

private:
    bool LookIntoFace(const ShapingFace& face, char32_t character);
    FoundFace FindInstalled(const ShapingFace& first, std::u32string_view cluster,
                            const std::string& language);

    std::uint64_t lastFace_ = 0;      // the face that was asked last
    std::vector<char> isInLastFace_;  // by character; 0 also where that is not known
    std::unordered_map<std::string, FoundFace> found_;  // the face is null where none was found
};

}  // namespace orvane
