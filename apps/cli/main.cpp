// SPDX-License-Identifier: MIT
// The tool `orvane`: turns text into pictures of solid letters.

#include "apps/cli/Errors.h"
#include "apps/cli/Terminal.h"
#include "apps/cli/commands/Commands.h"
#include "document/OutputFile.h"
#include "orvane/Error.h"
#include "orvane/version.h"
#include "platform/Messages.h"
#include "platform/Process.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <exception>
#include <new>
#include <string>

namespace orvane
{

namespace
{

constexpr int couldNotBeDone = 1;
constexpr int wrongUsage = 2;
constexpr int helpColumn = 40;

int Complain(const std::string& message, int status)
{
    Say(message);
    return status;
}

/// The library shows a message box for each letter that it cannot build. The commands tell these
/// letters themselves, on one line each.
int IgnoreMessageBox(HWND, LPCSTR, LPCSTR, UINT)
{
    return IDOK;
}

int ComplainAboutUsage(const CLI::App& app, const std::string& message)
{
    const auto chosen = app.get_subcommands();
    const std::string name = chosen.empty() ? "" : " " + chosen.front()->get_name();
    Say(message, "\"orvane" + name + " --help\" shows what is possible");
    return wrongUsage;
}

/// Prints the text that --help or --version asks for.
void Answer(const CLI::App& app, const CLI::Success& question)
{
    std::ostringstream text;
    app.exit(question, text, text);
    WriteToStandardOutput(text.str());
}

int Run(CLI::App& app, int argc, char** argv)
{
    try
    {
        app.parse(argc, argv);
        if (app.get_subcommands().empty())
        {
            std::string names;
            for (const CLI::App* const command : app.get_subcommands({}))
            {
                names += (names.empty() ? "" : ", ") + command->get_name();
            }
            throw UsageError("a subcommand is needed: " + names);
        }
    }
    catch (const CLI::Success& question)
    {
        Answer(app, question);
    }
    catch (const CLI::ParseError& error)
    {
        return ComplainAboutUsage(app, error.what());
    }
    catch (const UsageError& error)
    {
        return ComplainAboutUsage(app, error.what());
    }
    catch (const OptionError& error)
    {
        // The message begins with the name of the field, which is also the name of the option.
        // CLI11 has checked the values of all options whose names differ from the field's.
        return ComplainAboutUsage(app, std::string("--") + error.what());
    }
    return 0;
}

}  // namespace

}  // namespace orvane

int main(int argc, char** argv)
{
    using namespace orvane;

    PrepareProcess();
    SetMessageBoxHandler(IgnoreMessageBox);
    RemoveUnfinishedFilesWhenInterrupted();
    try
    {
        CLI::App app("Turns text into solid letters, and draws or writes them.", "orvane");
        // Allow at most one subcommand, so that the name of another subcommand after it is ordinary
        // text.
        app.require_subcommand(0, 1);
        app.set_version_flag("--version", ORVANE_VERSION);
        app.get_formatter()->column_width(helpColumn);
        AddRenderCommand(app);
        AddExportCommand(app);
        AddInfoCommand(app);
        AddPickCommand(app);
#if defined(ORVANE_WITH_SHAPING)
        AddLayoutCommand(app);
#endif
        AddFontsCommand(app);
        AddMaterialsCommand(app);
        AddShowcaseCommand(app);
        return Run(app, argc, argv);
    }
    catch (const std::bad_alloc&)
    {
        return Complain("out of memory", couldNotBeDone);
    }
    catch (const std::exception& error)
    {
        EndIfInterrupted();  // unfinished files are removed by now
        return Complain(error.what(), couldNotBeDone);
    }
}
