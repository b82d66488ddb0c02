// SPDX-License-Identifier: MIT
#include "apps/cli/OutputFile.h"

#include "apps/cli/Errors.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <random>
#include <utility>

OutputFile::OutputFile(std::string path) : path_(std::move(path))
{
    if (IsStandardOutput())
    {
        file_ = stdout;
        return;
    }
    if (std::filesystem::is_directory(path_))
    {
        throw Failure(path_ + ": is a directory");
    }
    temporary_ = path_ + ".part-" + std::to_string(std::random_device{}());
    file_ = std::fopen(temporary_.c_str(), "wbx");
    if (file_ == nullptr)
    {
        temporary_.clear();
        Fail();
    }
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
    }
}

void OutputFile::Write(const void* bytes, std::size_t count)
{
    if (std::fwrite(bytes, 1, count, file_) != count)
    {
        Fail();
    }
}

void OutputFile::Commit()
{
    if (std::fflush(file_) != 0)
    {
        Fail();
    }
    if (IsStandardOutput())
    {
        return;
    }
    if (std::fclose(std::exchange(file_, nullptr)) != 0 ||
        std::rename(temporary_.c_str(), path_.c_str()) != 0)
    {
        Fail();
    }
    temporary_.clear();
}

void OutputFile::Fail() const
{
    throw Failure((IsStandardOutput() ? "standard output" : path_) + ": " + std::strerror(errno));
}
