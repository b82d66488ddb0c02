// SPDX-License-Identifier: MIT
#include "document/OutputFile.h"

#include "orvane/Error.h"

#include <atomic>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <random>
#include <utility>

namespace orvane
{

namespace
{

std::atomic<void (*)(const char*)> watchUnfinished = nullptr;

void TellWatcher(const char* path)
{
    if (void (*const watch)(const char*) = watchUnfinished)
    {
        watch(path);
    }
}

/// Returns the path at the end of a chain of symbolic links. No file needs to exist there.
std::filesystem::path FollowLinks(std::filesystem::path path)
{
    constexpr int longestChain = 40;
    std::error_code error;
    for (int i = 0; i < longestChain && std::filesystem::is_symlink(path, error); ++i)
    {
        path = path.parent_path() / std::filesystem::read_symlink(path, error);
    }
    return path;
}

/// A random name in the folder of the target. The unfinished file lies there because renaming is a
/// single step only within one file system.
std::string NameBeside(const std::string& target)
{
    return std::filesystem::path(target).replace_filename(
        ".orvane-" + std::to_string(std::random_device{}()) + ".part");
}

}  // namespace

OutputFile::OutputFile(std::string path) : path_(std::move(path))
{
    if (path_ == "-")
    {
        kind_ = Kind::StandardOutput;
        return;
    }
    target_ = FollowLinks(path_);
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(target_, error);
    if (std::filesystem::is_directory(status))
    {
        Fail(EISDIR);
    }
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status))
    {
        kind_ = Kind::Device;
        return;
    }
    CheckTarget();
}

OutputFile::~OutputFile()
{
    if (file_ != nullptr && file_ != stdout)
    {
        std::fclose(file_);
    }
    if (!temporary_.empty())
    {
        std::remove(temporary_.c_str());
        TellWatcher(nullptr);
    }
}

void OutputFile::CheckTarget() const
{
    // Renaming could replace a file that the user has no permission to write to. Refuse such a
    // target.
    if (std::FILE* const present = std::fopen(target_.c_str(), "r+b"))
    {
        std::fclose(present);
    }
    else if (errno != ENOENT)
    {
        Fail(errno);
    }
    const std::string trial = NameBeside(target_);
    std::FILE* const file = std::fopen(trial.c_str(), "wbx");
    if (file == nullptr)
    {
        Fail(errno);
    }
    std::fclose(file);
    std::remove(trial.c_str());
}

void OutputFile::Open()
{
    if (kind_ == Kind::StandardOutput)
    {
        file_ = stdout;
        return;
    }
    if (kind_ == Kind::Device)
    {
        file_ = std::fopen(target_.c_str(), "wb");
    }
    else
    {
        BeginTemporary();
        file_ = std::fopen(temporary_.c_str(), "wbx");
    }
    if (file_ == nullptr)
    {
        Fail(errno);
    }
}

void OutputFile::BeginTemporary()
{
    temporary_ = NameBeside(target_);
    TellWatcher(temporary_.c_str());
}

void OutputFile::Write(const void* bytes, std::size_t count)
{
    if (file_ == nullptr)
    {
        Open();
    }
    if (std::fwrite(bytes, 1, count, file_) != count)
    {
        Fail(errno);
    }
}

std::string OutputFile::OpenOutside()
{
    if (kind_ != Kind::Regular)
    {
        throw Error(
            path_,
            "a BMP can only be written into a regular file, and this is not one; write a PNG");
    }
    BeginTemporary();
    return temporary_;
}

void OutputFile::Commit()
{
    const bool writtenOutside = file_ == nullptr && !temporary_.empty();
    if (writtenOutside)
    {
        MoveIntoPlace();
        return;
    }
    if (file_ == nullptr)
    {
        Open();
    }
    if (std::fflush(file_) != 0)
    {
        Fail(errno);
    }
    if (kind_ == Kind::StandardOutput)
    {
        return;
    }
    if (std::fclose(std::exchange(file_, nullptr)) != 0)
    {
        Fail(errno);
    }
    if (kind_ == Kind::Regular)
    {
        MoveIntoPlace();
    }
}

void OutputFile::MoveIntoPlace()
{
    if (std::rename(temporary_.c_str(), target_.c_str()) != 0)
    {
        Fail(errno);
    }
    temporary_.clear();
    TellWatcher(nullptr);
}

void OutputFile::Fail(int error) const
{
    throw Error(kind_ == Kind::StandardOutput ? "standard output" : path_, std::strerror(error));
}

void OutputFile::WatchUnfinishedFiles(void (*watch)(const char*))
{
    watchUnfinished = watch;
}

void WriteToStandardOutput(const std::string& text)
{
    OutputFile output("-");
    output.Write(text.data(), text.size());
    output.Commit();
}

}  // namespace orvane
