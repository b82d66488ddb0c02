// SPDX-License-Identifier: MIT
// Writes entries into a profile, as an application does, for tools/kills-and-full-disks.
// usage: profile_writer FILE NAME COUNT
// The entries NAME.1 to NAME.COUNT of the section "Written" get their numbers as values. The number
// of each entry goes to standard output when the entry is written. Ends with 1 at the first entry
// that cannot be written.

#include "host/CWinApp.h"
#include "platform/Process.h"

#include <unistd.h>

#include <cstdlib>
#include <string>

int main(int argc, char** argv)
{
    if (argc != 4)
    {
        return 2;
    }
    PrepareProcess();
    CWinApp app;
    app.SetProfilePath(argv[1]);
    const int count = std::atoi(argv[3]);
    for (int i = 1; i <= count; ++i)
    {
        const std::string number = std::to_string(i);
        const std::string line = number + "\n";
        if (!app.WriteProfileInt("Written", (argv[2] + ("." + number)).c_str(), i) ||
            write(STDOUT_FILENO, line.c_str(), line.size()) < 0)
        {
            return 1;
        }
    }
    return 0;
}
