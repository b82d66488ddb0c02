// SPDX-License-Identifier: MIT
#pragma once

#include "orvane/Error.h"
#include "platform/Export.h"

#include <string>

class CException;
class CFile;

namespace orvane
{

/// Describes the first two bytes of a file for a message: "found 4D 4D", or that the file is empty
/// or has only one byte. The file must be at its beginning.
ORVANE_API std::string FileStart(CFile& file);

/// Opens a file for reading. Throws Error when it cannot be opened or is no regular file: opening a
/// pipe would wait until a program writes into it, perhaps forever.
ORVANE_API void OpenRegularFile(CFile& file, const std::string& path);

/// Makes an Error from the exception that a reader threw.
/// \param place the file as the user names it, and the byte if it is known
/// \param knownName the file as the reader names it; if the text of the exception begins with this
/// name, the name is cut off
ORVANE_API Error FileError(const std::string& place, const std::string& knownName,
                           const CException& error);

}  // namespace orvane
