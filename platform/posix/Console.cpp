// SPDX-License-Identifier: MIT
#include "platform/Console.h"

#include <unistd.h>

bool IsErrorOutputTerminal()
{
    return isatty(STDERR_FILENO) == 1;
}
