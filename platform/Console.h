// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"

/// Whether the process's standard error is a terminal that a person looks at.
ORVANE_API bool IsErrorOutputTerminal();
