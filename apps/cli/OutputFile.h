// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdio>
#include <string>

/// A file that appears only when it is complete: it is written beside its place under another name
/// and renamed by Commit. Destroyed without that, it leaves nothing behind. The path "-" is
/// standard output.
class OutputFile
{
public:
    /// Throws Failure when the file cannot be made.
    explicit OutputFile(std::string path);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    /// Throws Failure when the bytes cannot be written.
    void Write(const void* bytes, std::size_t count);

    /// Puts the file in its place. Throws Failure when the system refuses.
    void Commit();

    bool IsStandardOutput() const { return path_ == "-"; }

private:
    [[noreturn]] void Fail() const;

    std::string path_;
    std::string temporary_;
    std::FILE* file_ = nullptr;
};
