// SPDX-License-Identifier: MIT
#pragma once

namespace posix
{

/// Whether the pixel format with this index has a stencil buffer.
bool HasStencil(int format);

}  // namespace posix
