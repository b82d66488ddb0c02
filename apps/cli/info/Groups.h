// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <map>
#include <utility>
#include <vector>

namespace orvane
{

/// Collects elements into groups of equal keys. The groups keep the order in which their keys were
/// first seen. Finding a group takes about log2(number of groups) comparisons of keys with `<`.
template <typename Key, typename Group>
class Groups
{
public:
    using Entry = std::pair<Key, Group>;

    /// Returns the group of a key. Adds an empty group when the key is new.
    Group& Of(const Key& key)
    {
        const auto [found, isNew] = indices_.try_emplace(key, entries_.size());
        if (isNew)
        {
            entries_.emplace_back(key, Group());
        }
        return entries_[found->second].second;
    }

    const std::vector<Entry>& Entries() const { return entries_; }

private:
    std::map<Key, std::size_t> indices_;
    std::vector<Entry> entries_;
};

}  // namespace orvane
