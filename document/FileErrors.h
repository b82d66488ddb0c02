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

/// Makes an Error of a reader's exception.
/// \param place the file as the user names it, and the byte if it is known
/// \param knownName the file as the reader names it; the text of the exception may begin with it
ORVANE_API Error FileError(const std::string& place, const std::string& knownName,
                           const CException& error);

}  // namespace orvane
