// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"
#include "platform/FileReplacement.h"

#include <cstddef>
#include <cstdio>
#include <string>
#include <vector>

namespace orvane
{

/// A file that appears under its name only when it is complete and on the disk: a FileReplacement,
/// whose errors are thrown. If an OutputFile ends without Commit, the file that had the name before
/// is still there, unchanged.
///
/// The path "-" is standard output. A device or a pipe, also one at the end of a symbolic link, is
/// written to directly.
class ORVANE_API OutputFile
{
public:
    /// Makes the unfinished file, so that a place that cannot be written to is found before any
    /// other work. A device is opened by the first write. Throws Error when this fails.
    explicit OutputFile(std::string path);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    /// Writes the next bytes. Throws Error when the bytes cannot be written.
    void Write(const void* bytes, std::size_t count);

    /// Opens the unfinished file for a caller that writes through a handle instead of calling
    /// Write. The caller closes the handle before Finish. Throws Error for standard output, devices
    /// and pipes.
    HANDLE OpenHandle() const;

    /// To be called when everything is written. Returns when all bytes are on the disk; a device or
    /// a pipe has taken them all. Throws Error when that fails.
    void Finish();

    /// Puts the file in its place, after finishing it if need be. Throws Error when it cannot.
    void Commit();

    /// Commits all files or none: when one cannot be put in its place, those before it are taken
    /// back. Bytes on standard output, devices and pipes cannot be taken back.
    static void CommitAll(const std::vector<OutputFile*>& files);

    /// Whether the bytes go to a regular file, and not to standard output, a device or a pipe.
    bool IsRegular() const { return kind_ == Kind::Regular; }

private:
    enum class Kind
    {
        StandardOutput,
        Device,  ///< or a pipe
        Regular
    };

    void OpenStream();
    [[noreturn]] void Fail(int error) const;

    std::string path_;  ///< as the user names it
    Kind kind_ = Kind::Regular;
    bool isFinished_ = false;
    FileReplacement replacement_;  ///< of a regular file
    /// Of a device or standard output. Owned, unless it is standard output.
    std::FILE* stream_ = nullptr;
};

/// Writes a whole text to standard output. Throws Error when it cannot be written.
ORVANE_API void WriteToStandardOutput(const std::string& text);

}  // namespace orvane
