// SPDX-License-Identifier: MIT
#pragma once

#include "orvane/Options.h"
#include "platform/Export.h"
#include "platform/Types.h"

namespace orvane
{

/// The event that a cancellation signals; it lives as long as the cancellation or a copy of it.
ORVANE_API HANDLE EventOf(const Cancellation& cancellation);

}  // namespace orvane
