// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace posix
{

/// The name of an unfinished file, .orvane-PROCESS-START-NUMBER.part. The file is removed when this
/// object ends, and also when an interruption ends the process. Destruction allocates nothing.
class UnfinishedName
{
public:
    UnfinishedName() = default;
    ~UnfinishedName() { Remove(); }
    UnfinishedName(const UnfinishedName&) = delete;
    UnfinishedName& operator=(const UnfinishedName&) = delete;

    /// Chooses a name in a folder. No other object of this process has the same one.
    void Choose(const std::string& folder);
    /// Removes the file, if there is one, and forgets the name.
    void Remove();
    /// Forgets the name, because no file has it.
    void Forget();
    void Swap(UnfinishedName& other) noexcept;

    bool IsEmpty() const { return path_.empty(); }
    const char* Path() const { return path_.c_str(); }

private:
    static constexpr int noPlace = -1;

    std::string path_;
    int place_ = noPlace;  ///< in the list of the files to remove; noPlace when the list was full
};

/// Removes the files of all UnfinishedNames. May be called from a signal handler.
void RemoveUnfinishedFiles();

/// Removes the unfinished files in a folder whose processes have ended. A file stays when its
/// process lives, when any process has it locked, or when another user owns it. Only the first call
/// for a folder does anything.
void RemoveDeadFiles(const std::string& folder);

}  // namespace posix
