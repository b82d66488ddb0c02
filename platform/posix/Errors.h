// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Errors.h"

namespace posix
{

/// Leaves a number and a text of one's own, for a refusal whose number says too little.
void SetError(DWORD error, std::string text);

}  // namespace posix
