// SPDX-License-Identifier: MIT
#pragma once

namespace posix
{

/// Whether a pixel format comes with a stencil buffer.
bool HasStencil(int format);

}  // namespace posix
