// SPDX-License-Identifier: MIT
#include "tests/support/ToolRun.h"

#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <thread>

namespace fs = std::filesystem;

namespace
{

std::string ReadFile(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

std::vector<std::string> ToolWith(const std::vector<std::string>& arguments)
{
    std::vector<std::string> command = {ORVANE_TOOL};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return command;
}

/// The most memory that was resident since the process began its program; 0 when it has ended.
long PeakKiBOf(pid_t process)
{
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    for (std::string line; std::getline(status, line);)
    {
        if (line.starts_with("VmHWM:"))
        {
            return std::atol(line.c_str() + 6);
        }
    }
    return 0;
}

}  // namespace

ToolFolder::ToolFolder()
{
    std::string name = fs::temp_directory_path() / "orvane-tool-XXXXXX";
    if (mkdtemp(name.data()) == nullptr)
    {
        throw std::runtime_error(name + ": no folder could be made");
    }
    folder_ = name + "/folder";
    logs_ = name + "/logs";
    fs::create_directory(folder_);
    fs::create_directory(logs_);
    standardError_ = logs_ + "/err";
}

ToolFolder::~ToolFolder()
{
    std::error_code ignored;
    fs::remove_all(fs::path(folder_).parent_path(), ignored);
}

ToolResult ToolFolder::Run(const std::vector<std::string>& arguments)
{
    return Finish(Start(ToolWith(arguments)));
}

ToolResult ToolFolder::RunInShell(const std::string& script,
                                  const std::vector<std::string>& arguments)
{
    std::vector<std::string> command = {"/bin/sh", "-c", script, "sh"};
    const std::vector<std::string> tool = ToolWith(arguments);
    command.insert(command.end(), tool.begin(), tool.end());
    return Finish(Start(command));
}

ToolResult ToolFolder::InterruptWriting(const std::vector<std::string>& arguments, int signal)
{
    const int process = Start(ToolWith(arguments));
    const auto hasBytes = [](const fs::directory_entry& entry) {
        std::error_code gone;
        const std::uintmax_t size = entry.file_size(gone);
        return !gone && size > 0;
    };
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    bool writing = false;
    while (!writing && std::chrono::steady_clock::now() < deadline)
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        for (const fs::directory_entry& entry : fs::directory_iterator(folder_))
        {
            writing = writing || hasBytes(entry);
        }
    }
    const auto interrupted = std::chrono::steady_clock::now();
    kill(process, signal);
    ToolResult result = Finish(process);
    result.seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - interrupted).count();
    return result;
}

void ToolFolder::UseFonts(const std::vector<std::string>& files)
{
    const std::string fonts = logs_ + "/fonts";
    fs::create_directory(fonts);
    for (const std::string& file : files)
    {
        fs::copy_file(file, fonts + "/" + fs::path(file).filename().string());
    }
    const std::string configuration = logs_ + "/fonts.conf";
    std::ofstream(configuration) << "<?xml version=\"1.0\"?>\n<fontconfig>\n<dir>" << fonts
                                 << "</dir>\n<cachedir>" << logs_
                                 << "/cache</cachedir>\n</fontconfig>\n";
    environment_.push_back("FONTCONFIG_FILE=" + configuration);
}

void ToolFolder::Write(const std::string& name, const std::string& content) const
{
    std::ofstream(Path(name), std::ios::binary) << content;
}

std::string ToolFolder::Read(const std::string& name) const
{
    return ReadFile(Path(name));
}

bool ToolFolder::Has(const std::string& name) const
{
    return fs::exists(Path(name));
}

std::vector<std::string> ToolFolder::Names() const
{
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder_))
    {
        names.push_back(entry.path().filename());
    }
    return names;
}

int ToolFolder::Start(const std::vector<std::string>& command) const
{
    const std::string out = logs_ + "/out";
    const pid_t process = fork();
    if (process == -1)
    {
        throw std::runtime_error("no process could be started");
    }
    if (process == 0)
    {
        const auto ignored = [](const void*) {};
        ignored(std::freopen(out.c_str(), "wb", stdout));
        ignored(std::freopen(standardError_.c_str(), "wb", stderr));
        std::vector<char*> arguments;
        for (const std::string& argument : command)
        {
            arguments.push_back(const_cast<char*>(argument.c_str()));
        }
        arguments.push_back(nullptr);
        for (const std::string& variable : environment_)
        {
            putenv(const_cast<char*>(variable.c_str()));
        }
        for (const int signal : {SIGINT, SIGTERM, SIGPIPE})
        {
            std::signal(signal, SIG_DFL);
        }
        if (chdir(folder_.c_str()) == 0)
        {
            execv(arguments[0], arguments.data());
        }
        _exit(127);
    }
    return process;
}

ToolResult ToolFolder::Finish(int process) const
{
    int status = 0;
    ToolResult result;
    while (waitpid(process, &status, WNOHANG) == 0)
    {
        // The system's own account begins with the memory of this process, which forked it.
        if (const long peak = PeakKiBOf(process); peak != 0)
        {
            result.peakKiB = peak;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    result.status = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
    result.out = ReadFile(logs_ + "/out");
    if (fs::is_regular_file(standardError_))
    {
        result.err = ReadFile(standardError_);
    }
    return result;
}
