// SPDX-License-Identifier: MIT
#include "apps/cli/OutputFile.h"

#include "apps/cli/Errors.h"
#include "platform/Process.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <random>
#include <utility>

namespace
{

/// Where a chain of symbolic links leads; the last one may lead to nothing yet.
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

/// A name that nobody uses, in the same folder, so that it can be renamed to the target.
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
        RemoveWhenInterrupted(nullptr);
    }
}

void OutputFile::CheckTarget() const
{
    // A file that may not be written is not replaced either, though renaming would do it.
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
        temporary_ = NameBeside(target_);
        RemoveWhenInterrupted(temporary_.c_str());
        file_ = std::fopen(temporary_.c_str(), "wbx");
    }
    if (file_ == nullptr)
    {
        Fail(errno);
    }
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
        throw Failure(path_ + ": is no ordinary file, which this format needs; write a PNG");
    }
    temporary_ = NameBeside(target_);
    RemoveWhenInterrupted(temporary_.c_str());
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
    RemoveWhenInterrupted(nullptr);
}

void OutputFile::Fail(int error) const
{
    throw Failure((kind_ == Kind::StandardOutput ? "standard output" : path_) + ": " +
                  std::strerror(error));
}

void WriteToStandardOutput(const std::string& text)
{
    OutputFile output("-");
    output.Write(text.data(), text.size());
    output.Commit();
}
