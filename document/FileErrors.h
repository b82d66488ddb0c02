// SPDX-License-Identifier: MIT
#pragma once

#include "orvane/Error.h"
#include "platform/Export.h"

#include <string>

class CException;
class CFile;

namespace orvane
{

/// Describes the next two bytes of a file for a message: "found 4D 4D", or that the file ends.
ORVANE_API std::string FileStart(CFile& file);

/// The error of a failed reader, whose place begins with the file as the user names it.
/// \param place the file's name, with more about the place if more is known
/// \param knownName the name under which the reader knows the file, when it may be in the text
ORVANE_API Error FileError(const std::string& place, const std::string& knownName,
                           const CException& error);

}  // namespace orvane
