// SPDX-License-Identifier: MIT
// orvane: solid text to pictures, from the command line.

#include "apps/cli/Commands.h"
#include "apps/cli/Errors.h"
#include "apps/cli/Terminal.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <exception>

namespace
{

constexpr int couldNotBeDone = 1;
constexpr int wrongUsage = 2;

int Complain(const std::exception& error, int status)
{
    ClearProgress();
    std::fprintf(stderr, "orvane: %s\n", error.what());
    return status;
}

}  // namespace

int main(int argc, char** argv)
{
    CLI::App app("Turns text into solid letters and draws them.", "orvane");
    app.require_subcommand(1);
    app.set_version_flag("--version", ORVANE_VERSION);
    AddRenderCommand(app);
    AddFontsCommand(app);
    AddShowcaseCommand(app);

    try
    {
        app.parse(argc, argv);
    }
    catch (const CLI::Success& help)
    {
        return app.exit(help);
    }
    catch (const CLI::ParseError& error)
    {
        app.exit(error);
        return wrongUsage;
    }
    catch (const UsageError& error)
    {
        return Complain(error, wrongUsage);
    }
    catch (const std::exception& error)
    {
        return Complain(error, couldNotBeDone);
    }
    return 0;
}
