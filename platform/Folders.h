// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"

#include <string>
#include <vector>

namespace orvane
{

/// The names of everything in a folder except "." and "..", in no order. Empty when the folder
/// cannot be read. Throws std::bad_alloc when there is too little memory, where
/// std::filesystem::directory_iterator ends the process.
std::vector<std::string> NamesIn(const std::string& folder);

}  // namespace orvane
