// SPDX-License-Identifier: MIT
#include "tests/support/ToolRun.h"

#include <poll.h>
#include <sys/inotify.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

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

constexpr int millisecondsBetweenLooks = 2;

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

/// Closes a file descriptor at its end.
class FileDescriptor
{
public:
    explicit FileDescriptor(int descriptor) : descriptor_(descriptor)
    {
        if (descriptor_ == -1)
        {
            throw std::runtime_error("the operating system opens no further file");
        }
    }
    ~FileDescriptor() { close(descriptor_); }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;

    int Get() const { return descriptor_; }

private:
    int descriptor_;
};

/// A descriptor that can be read from the moment at which the process has ended.
int OpenProcess(pid_t process)
{
    return static_cast<int>(syscall(SYS_pidfd_open, process, 0));
}

/// All bytes that this process, and every process that it has waited for, have handed to the
/// operating system for writing. Every user may read this; only the superuser may read it of a
/// process that has ended.
std::uint64_t BytesWritten()
{
    std::ifstream counters("/proc/self/io");
    for (std::string line; std::getline(counters, line);)
    {
        if (line.starts_with("wchar:"))
        {
            return std::stoull(line.substr(6));
        }
    }
    throw std::runtime_error("/proc/self/io: has no line wchar");
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
    const FileDescriptor changes(inotify_init1(IN_CLOEXEC));
    if (inotify_add_watch(changes.Get(), folder_.c_str(), IN_MODIFY) == -1)
    {
        throw std::runtime_error(folder_ + ": its changes cannot be watched");
    }
    const int process = Start(ToolWith(arguments));
    const FileDescriptor end(OpenProcess(process));
    pollfd events[] = {{changes.Get(), POLLIN, 0}, {end.Get(), POLLIN, 0}};
    poll(events, 2, -1);
    kill(process, signal);
    return Finish(process);
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
        for (const int signal : {SIGHUP, SIGINT, SIGTERM, SIGPIPE})
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
    ToolResult result;
    const FileDescriptor end(OpenProcess(process));
    pollfd event = {end.Get(), POLLIN, 0};
    do
    {
        // The account that waitpid gives begins with the memory of this process, which forked the
        // other one. So the peak is read from time to time until the process ends.
        if (const long peak = PeakKiBOf(process); peak != 0)
        {
            result.peakKiB = peak;
        }
    } while (poll(&event, 1, millisecondsBetweenLooks) == 0);
    const std::uint64_t writtenBefore = BytesWritten();
    int status = 0;
    waitpid(process, &status, 0);
    result.writtenBytes = BytesWritten() - writtenBefore;
    result.status = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
    result.out = ReadFile(logs_ + "/out");
    if (fs::is_regular_file(standardError_))
    {
        result.err = ReadFile(standardError_);
    }
    return result;
}
