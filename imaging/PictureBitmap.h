// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"

#include <string>

class CString;
class MemoryMappedDIB;

namespace orvane
{

/// Reads a PNG, JPEG, WebP or TIFF file, whatever its name is, and makes a 24-bit bitmap of it, the
/// lowest row first. Transparent pixels show white behind them. A picture that is too large for a
/// texture is reduced (see ReadPictureBytes).
/// \return the reason why the file cannot be read, with its name; empty after a success
ORVANE_API std::string ReadAsBitmap(const CString& name, MemoryMappedDIB& bitmap);

}  // namespace orvane
