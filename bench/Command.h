// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

/// Runs a command of the shell. Ends the benchmark when the command fails.
inline void RunCommand(const std::string& command)
{
    if (std::system(command.c_str()) != 0)
    {
        std::fprintf(stderr, "bench: %s: failed\n", command.c_str());
        std::exit(1);
    }
}
