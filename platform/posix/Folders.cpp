// SPDX-License-Identifier: MIT
#include "platform/Folders.h"

#include <dirent.h>

#include <memory>
#include <string_view>

namespace orvane
{

std::vector<std::string> NamesIn(const std::string& folder)
{
    std::vector<std::string> names;
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(opendir(folder.c_str()), closedir);
    while (const dirent* const entry = entries != nullptr ? readdir(entries.get()) : nullptr)
    {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..")
        {
            names.emplace_back(name);
        }
    }
    return names;
}

}  // namespace orvane
