// SPDX-License-Identifier: MIT
#include "document/OutputFile.h"

#include "orvane/Error.h"
#include "platform/Errors.h"
#include "platform/Files.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <utility>

namespace orvane
{

OutputFile::OutputFile(std::string path) : path_(std::move(path))
{
    if (path_ == "-")
    {
        kind_ = Kind::StandardOutput;
        return;
    }
    std::error_code ignored;
    const std::filesystem::file_status status = std::filesystem::status(path_, ignored);
    if (std::filesystem::is_directory(status))
    {
        Fail(EISDIR);
    }
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status))
    {
        kind_ = Kind::Device;
        return;
    }
    if (const std::error_code error = replacement_.Begin(path_))
    {
        Fail(error.value());
    }
}

OutputFile::~OutputFile()
{
    if (stream_ != nullptr && stream_ != stdout)
    {
        std::fclose(stream_);
    }
}

void OutputFile::OpenStream()
{
    if (stream_ == nullptr)
    {
        stream_ = kind_ == Kind::StandardOutput ? stdout : std::fopen(path_.c_str(), "wb");
    }
    if (stream_ == nullptr)
    {
        Fail(errno);
    }
}

void OutputFile::Write(const void* bytes, std::size_t count)
{
    if (kind_ == Kind::Regular)
    {
        if (const std::error_code error = replacement_.Write(bytes, count))
        {
            Fail(error.value());
        }
        return;
    }
    OpenStream();
    if (std::fwrite(bytes, 1, count, stream_) != count)
    {
        Fail(errno);
    }
}

HANDLE OutputFile::OpenHandle() const
{
    if (kind_ != Kind::Regular)
    {
        throw Error(
            path_,
            "a BMP can only be written into a regular file, and this is not one; write a PNG");
    }
    const HANDLE handle = replacement_.OpenHandle(FILE_FLAG_SEQUENTIAL_SCAN);
    if (handle == INVALID_HANDLE_VALUE)
    {
        throw Error(path_, GetLastErrorText());
    }
    return handle;
}

void OutputFile::Finish()
{
    if (std::exchange(isFinished_, true))
    {
        return;
    }
    if (kind_ == Kind::Regular)
    {
        if (const std::error_code error = replacement_.Finish())
        {
            Fail(error.value());
        }
        return;
    }
    OpenStream();
    if (std::fflush(stream_) != 0)
    {
        Fail(errno);
    }
    if (kind_ == Kind::Device && std::fclose(std::exchange(stream_, nullptr)) != 0)
    {
        Fail(errno);
    }
}

void OutputFile::Commit()
{
    Finish();
    if (kind_ != Kind::Regular)
    {
        return;
    }
    if (const std::error_code error = replacement_.Place())
    {
        Fail(error.value());
    }
}

void OutputFile::CommitAll(const std::vector<OutputFile*>& files)
{
    // Streams go last, because they take nothing back.
    std::vector<OutputFile*> regular;
    std::vector<FileReplacement*> replacements;
    for (OutputFile* const file : files)
    {
        if (file->IsRegular())
        {
            file->Finish();
            regular.push_back(file);
            replacements.push_back(&file->replacement_);
        }
    }
    for (OutputFile* const file : files)
    {
        file->Finish();
    }
    const FileReplacement* refused = nullptr;
    if (const std::error_code error = FileReplacement::PlaceAll(replacements, &refused))
    {
        const auto place = std::find(replacements.begin(), replacements.end(), refused);
        regular[static_cast<std::size_t>(place - replacements.begin())]->Fail(error.value());
    }
}

void OutputFile::Fail(int error) const
{
    throw Error(kind_ == Kind::StandardOutput ? "standard output" : path_, std::strerror(error));
}

void WriteToStandardOutput(const std::string& text)
{
    OutputFile output("-");
    output.Write(text.data(), text.size());
    output.Commit();
}

}  // namespace orvane
