// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"
#include "platform/Types.h"

#include <cstddef>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

namespace orvane
{

/// New content for a regular file. It is written aside and takes the old file's place in one step,
/// so that under the file's name there is always either the whole old content or the whole new one,
/// also after a crash or a power cut. A FileReplacement that ends before Place leaves the old file
/// as it was.
///
/// A symbolic link stays, and the file that it leads to is replaced. The new file gets the old
/// one's permissions and, where the system allows it, its owner and group. Other hard links to the
/// old file keep the old content.
///
/// The unfinished file has no name where the file system can do that, so that nothing is left of it
/// when the process is killed. Elsewhere, and for the moment between Finish and Place, it is called
/// .orvane-PROCESS-START-NUMBER.part, with the number of the process and the time at which the
/// process started. Begin removes such files from the folder when their process has ended, but at
/// most once for each folder and process, because a folder can have very many files.
class ORVANE_API FileReplacement
{
public:
    FileReplacement();
    ~FileReplacement();
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    // Every function returns the system's error, which is false on success.

    /// Makes the unfinished file in the folder of \p path. Fails when the old file may not be
    /// written to or is not a regular file, and when no file can be made in the folder.
    std::error_code Begin(const std::string& path);

    /// Appends bytes.
    std::error_code Write(const void* bytes, std::size_t count);

    /// Opens the unfinished file once more, for a caller that writes through a handle instead of
    /// calling Write. The caller closes the handle before Finish. INVALID_HANDLE_VALUE, with the
    /// reason as the last error, when it cannot be opened.
    /// \param flags FILE_FLAG_SEQUENTIAL_SCAN or 0, see CreateFileA
    HANDLE OpenHandle(DWORD flags) const;

    /// To be called when everything is written. Returns when all bytes are on the disk.
    std::error_code Finish();

    /// Puts a finished file in its place.
    std::error_code Place();

    /// Puts several finished files in their places, or none: when one cannot be placed, those
    /// before it are taken back. An interruption of the process waits meanwhile.
    /// \param refused set to the file that could not be placed; may be null
    static std::error_code PlaceAll(const std::vector<FileReplacement*>& files,
                                    const FileReplacement** refused);

private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace orvane
