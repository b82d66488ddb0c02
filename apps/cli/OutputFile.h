// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdio>
#include <string>

/// What a command puts out: the path "-" is standard output; any other a file that appears only
/// when it is complete. It is written beside its place under another name and renamed by Commit;
/// destroyed without that, or interrupted, it leaves what was there before. A symbolic link stays
/// and the file that it leads to is replaced; a device or pipe is written to as it is.
class OutputFile
{
public:
    /// Makes sure that the file can be made, leaving nothing. Throws Failure when it cannot.
    explicit OutputFile(std::string path);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    /// The first call opens the file. Throws Failure when the bytes cannot be written.
    void Write(const void* bytes, std::size_t count);

    /// For a writer of its own: the name under which it makes the file, in place of Write. Throws
    /// Failure for standard output, devices and pipes.
    std::string OpenOutside();

    /// Puts the file in its place. Throws Failure when the system refuses.
    void Commit();

private:
    enum class Kind
    {
        StandardOutput,
        Device,  // or a pipe: there is no place to put a file in
        Regular
    };

    void CheckTarget() const;
    void Open();
    void MoveIntoPlace();
    [[noreturn]] void Fail(int error) const;

    std::string path_;    // as the user names it
    std::string target_;  // where that leads
    std::string temporary_;
    Kind kind_ = Kind::Regular;
    std::FILE* file_ = nullptr;
};

/// Puts a whole answer out on standard output. Throws Failure when it cannot be written.
void WriteToStandardOutput(const std::string& text);
