// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"

#include <cstddef>
#include <cstdio>
#include <string>

namespace orvane
{

/// A file that appears under its name only when it is complete. It is written beside its place
/// under another name (.orvane-NUMBER.part), and Commit renames it. If an OutputFile ends without
/// Commit, the file that had the name before is still there, unchanged.
///
/// The path "-" is standard output. A symbolic link stays, and the file that it leads to is
/// replaced. A device or a pipe is written to directly.
class ORVANE_API OutputFile
{
public:
    /// Makes sure that the file can be made: makes a file beside it and removes that file again.
    /// Throws Error when this fails.
    explicit OutputFile(std::string path);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    /// Writes the next bytes. The first call makes the file. Throws Error when the bytes cannot be
    /// written.
    void Write(const void* bytes, std::size_t count);

    /// Returns the temporary name of the file, for a caller that makes the file itself instead of
    /// calling Write. Throws Error for standard output, devices and pipes.
    std::string OpenOutside();

    /// Puts the file in its place. Throws Error when it cannot.
    void Commit();

    /// Sets a function that is called with the temporary name of each file that any OutputFile of
    /// the process begins, and with null when that file is complete or removed. A program can then
    /// remove an unfinished file when it is interrupted. A null function ends these calls.
    static void WatchUnfinishedFiles(void (*watch)(const char* path));

private:
    enum class Kind
    {
        StandardOutput,
        Device,  ///< or a pipe
        Regular
    };

    void CheckTarget() const;
    void Open();
    void BeginTemporary();
    void MoveIntoPlace();
    [[noreturn]] void Fail(int error) const;

    std::string path_;       ///< as the user names it
    std::string target_;     ///< the path at the end of all symbolic links
    std::string temporary_;  ///< the name while the file is unfinished; empty before and after
    Kind kind_ = Kind::Regular;
    std::FILE* file_ = nullptr;  ///< owned, unless it is standard output
};

/// Writes a whole text to standard output. Throws Error when it cannot be written.
ORVANE_API void WriteToStandardOutput(const std::string& text);

}  // namespace orvane
