// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"

#include <chrono>
#include <string>

namespace orvane
{

/// Keeps others that lock the same folder waiting, in this process and in every other one, so that
/// one of them at a time reads a file in it and replaces the file. The lock ends with this object,
/// and when the process ends in any way. Nothing is left in the folder, except on a file system
/// that cannot lock folders: there an empty file .orvane.lock is made and stays.
class ORVANE_API FolderLock
{
public:
    /// Waits for the lock, but no longer than \p longestWait: its owner may have been stopped. A
    /// wait of 0 asks once.
    explicit FolderLock(const std::string& folder,
                        std::chrono::milliseconds longestWait = std::chrono::seconds(10));
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

    /// False when somebody else has kept the lock for the whole wait, or when there is no such
    /// folder. True also where the system has no locks at all.
    bool IsHeld() const { return isHeld_; }

private:
    int descriptor_ = -1;  ///< owned; -1 for none
    bool isHeld_ = false;
};

}  // namespace orvane
