// SPDX-License-Identifier: MIT
#include "apps/cli/Terminal.h"

#include "platform/Console.h"

#include <cstdio>

bool IsErrorTerminal()
{
    static const bool terminal = IsErrorOutputTerminal();
    return terminal;
}

void ShowProgress(const std::string& text)
{
    if (IsErrorTerminal())
    {
        std::fprintf(stderr, "\r\033[K%.78s", text.c_str());
        std::fflush(stderr);
    }
}

void ClearProgress()
{
    ShowProgress("");
}
