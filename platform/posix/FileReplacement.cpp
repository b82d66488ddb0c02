// SPDX-License-Identifier: MIT
#include "platform/FileReplacement.h"

#include "platform/Files.h"
#include "platform/posix/ErrorText.h"
#include "platform/posix/FileMapping.h"
#include "platform/posix/Interruption.h"
#include "platform/posix/UnfinishedFiles.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <utility>

namespace orvane
{

namespace
{

namespace fs = std::filesystem;

constexpr mode_t permissionBits = 07777;
constexpr int mostNameTrials = 100;  // names in use are those of another run with the same number

std::error_code SystemError(int error = errno)
{
    return {error, std::generic_category()};
}

/// The path at the end of a chain of symbolic links. No file needs to exist there.
fs::path FollowLinks(fs::path path)
{
    constexpr int longestChain = 40;  // as the system's own
    std::error_code error;
    for (int i = 0; i < longestChain && fs::is_symlink(path, error); ++i)
    {
        path = path.parent_path() / fs::read_symlink(path, error);
    }
    return path;
}

/// The way to a file that has no name.
std::string PathOfDescriptor(int descriptor)
{
    return "/proc/self/fd/" + std::to_string(descriptor);
}

/// Gives a file that replaces another one the owner, group and permissions of the old one. Without
/// the old owner or group, permissions that were meant for these are not given to others.
std::error_code TakeAccess(int file, const struct stat& old)
{
    struct stat now = {};
    if (fstat(file, &now) != 0)
    {
        return SystemError();
    }
    mode_t mode = old.st_mode & permissionBits;
    if (now.st_uid != old.st_uid && fchown(file, old.st_uid, static_cast<gid_t>(-1)) != 0)
    {
        mode &= ~static_cast<mode_t>(S_ISUID);
    }
    if (now.st_gid != old.st_gid && fchown(file, static_cast<uid_t>(-1), old.st_gid) != 0)
    {
        const mode_t others = mode & S_IRWXO;
        mode &= ~static_cast<mode_t>(S_ISGID) & (~static_cast<mode_t>(S_IRWXG) | others << 3);
    }
    return fchmod(file, mode) == 0 ? std::error_code() : SystemError();
}

/// Flushes a file or folder to the disk. Some file systems cannot do that and need not.
std::error_code Flush(int descriptor)
{
    if (fsync(descriptor) == 0 || errno == EINVAL || errno == ENOTSUP)
    {
        return {};
    }
    return SystemError();
}

/// Flushes the names in a folder. Failure is no error: the file under the name is whole either way,
/// and only a power cut soon after may bring the old one back.
void FlushNames(const std::string& folder)
{
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor >= 0)
    {
        static_cast<void>(fsync(descriptor));
        close(descriptor);
    }
}

}  // namespace

struct FileReplacement::State
{
    /// What is under the name of the unfinished file.
    enum class Aside
    {
        Nothing,  ///< no file; the new one has no name yet or has the target's
        New,      ///< the new file
        Old       ///< the old file, while the new one has the target's name
    };

    ~State() { Close(); }

    std::error_code MakeFile();
    std::error_code MakeNamedFile(mode_t mode);
    bool LinkFile(int trials);
    std::error_code Exchange();
    std::error_code Replace();
    void TakeBack();
    void Complete();
    void Close();

    std::string target;           ///< at the end of all symbolic links
    std::string folder;           ///< of the target
    bool hadOld = false;          ///< whether there was a file when the new one was begun
    std::FILE* stream = nullptr;  ///< owned
    int descriptor = -1;          ///< the stream's; owned while there is no stream
    Aside aside = Aside::Nothing;
    posix::UnfinishedName name;
};

void FileReplacement::State::Close()
{
    // The descriptor's lock tells other processes that this one is still at work, so the name goes
    // first.
    name.Remove();
    if (stream != nullptr)
    {
        std::fclose(std::exchange(stream, nullptr));
    }
    else if (descriptor >= 0)
    {
        close(descriptor);
    }
    descriptor = -1;
}

std::error_code FileReplacement::State::MakeFile()
{
    // Unfinished content of a secret file must not be readable for more people than the old one.
    const mode_t mode = hadOld ? S_IRUSR | S_IWUSR : 0666;
    descriptor = open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, mode);
    if (descriptor >= 0 && access(PathOfDescriptor(descriptor).c_str(), F_OK) != 0)
    {
        close(std::exchange(descriptor, -1));  // without /proc it could never get a name
    }
    if (descriptor >= 0)
    {
        static_cast<void>(flock(descriptor, LOCK_EX | LOCK_NB));
    }
    else if (const std::error_code error = MakeNamedFile(mode))
    {
        return error;
    }
    stream = fdopen(descriptor, "wb");
    return stream != nullptr ? std::error_code() : SystemError();
}

std::error_code FileReplacement::State::MakeNamedFile(mode_t mode)
{
    for (int i = 0; i < mostNameTrials; ++i)
    {
        name.Choose(folder);
        descriptor = open(name.Path(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode);
        if (descriptor < 0)
        {
            const std::error_code error = SystemError();
            name.Forget();
            if (error.value() != EEXIST)
            {
                return error;
            }
            continue;
        }
        // Another process that clears the folder may have removed the file before it was locked.
        struct stat status = {};
        if (flock(descriptor, LOCK_EX) != 0 || fstat(descriptor, &status) != 0 ||
            status.st_nlink != 0)
        {
            aside = Aside::New;
            return {};
        }
        close(std::exchange(descriptor, -1));
    }
    return SystemError(EEXIST);
}

/// Gives the file a name, unless it has one.
bool FileReplacement::State::LinkFile(int trials)
{
    const std::string self = PathOfDescriptor(descriptor);
    for (int i = 0; i < trials && aside == Aside::Nothing; ++i)
    {
        name.Choose(folder);
        if (linkat(AT_FDCWD, self.c_str(), AT_FDCWD, name.Path(), AT_SYMLINK_FOLLOW) == 0)
        {
            aside = Aside::New;
        }
        else
        {
            name.Forget();
            if (errno != EEXIST)
            {
                return false;
            }
        }
    }
    return aside == Aside::New;
}

/// Puts the file in its place so that TakeBack can undo it, as far as the file system can do that.
std::error_code FileReplacement::State::Exchange()
{
    if (renameat2(AT_FDCWD, name.Path(), AT_FDCWD, target.c_str(), RENAME_EXCHANGE) == 0)
    {
        aside = Aside::Old;
        return {};
    }
    // There is no old file, or the file system cannot exchange two names. In the second case the
    // old file gets another name first.
    posix::UnfinishedName backup;
    backup.Choose(folder);
    const bool isKept = link(target.c_str(), backup.Path()) == 0;
    const std::error_code error = Replace();
    if (isKept && !error)
    {
        name.Swap(backup);
        aside = Aside::Old;
    }
    return error;
}

std::error_code FileReplacement::State::Replace()
{
    if (rename(name.Path(), target.c_str()) != 0)
    {
        return SystemError();
    }
    aside = Aside::Nothing;
    return {};
}

void FileReplacement::State::TakeBack()
{
    if (aside == Aside::Old)
    {
        static_cast<void>(rename(name.Path(), target.c_str()));
    }
    else if (!hadOld)
    {
        unlink(target.c_str());
    }
    aside = Aside::Nothing;
}

/// The new file is in its place for good: removes the old one.
void FileReplacement::State::Complete()
{
    name.Remove();
    FlushNames(folder);
    Close();
}

FileReplacement::FileReplacement() : state_(std::make_unique<State>()) {}
FileReplacement::~FileReplacement() = default;

std::error_code FileReplacement::Begin(const std::string& path)
{
    // Opened by the path that the caller gives, so that the system's own rules for links apply.
    const int present = open(path.c_str(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (present >= 0)
    {
        struct stat status = {};
        const bool isRegular = fstat(present, &status) == 0 && S_ISREG(status.st_mode);
        close(present);
        if (!isRegular)
        {
            return SystemError(EINVAL);
        }
        state_->hadOld = true;
    }
    else if (errno != ENOENT)
    {
        return SystemError();
    }
    const fs::path target = FollowLinks(path);
    const fs::path folder = target.parent_path();
    state_->target = target.string();
    state_->folder = folder.empty() ? "." : folder.string();
    posix::RemoveDeadFiles(state_->folder);
    return state_->MakeFile();
}

std::error_code FileReplacement::Write(const void* bytes, std::size_t count)
{
    return std::fwrite(bytes, 1, count, state_->stream) == count ? std::error_code()
                                                                 : SystemError();
}

HANDLE FileReplacement::OpenHandle(DWORD flags) const
{
    const auto file = std::make_shared<posix::File>();
    file->descriptor = fcntl(state_->descriptor, F_DUPFD_CLOEXEC, 0);
    if (file->descriptor < 0)
    {
        posix::SetError(static_cast<DWORD>(errno), std::strerror(errno));
        return INVALID_HANDLE_VALUE;
    }
    file->isWritable = true;
    file->isPastCache = (flags & FILE_FLAG_SEQUENTIAL_SCAN) != 0;
    return posix::AddHandle(file);
}

std::error_code FileReplacement::Finish()
{
    State& state = *state_;
    if (std::fflush(state.stream) != 0)
    {
        return SystemError();
    }
    struct stat old = {};
    if (stat(state.target.c_str(), &old) == 0)
    {
        if (const std::error_code error = TakeAccess(state.descriptor, old))
        {
            return error;
        }
    }
    if (const std::error_code error = Flush(state.descriptor))
    {
        return error;
    }
    return state.LinkFile(mostNameTrials) ? std::error_code() : SystemError();
}

std::error_code FileReplacement::Place()
{
    return PlaceAll({this}, nullptr);
}

std::error_code FileReplacement::PlaceAll(const std::vector<FileReplacement*>& files,
                                          const FileReplacement** refused)
{
    {
        const posix::InterruptionHold hold;
        for (auto file = files.begin(); file != files.end(); ++file)
        {
            State& state = *(*file)->state_;
            const bool isLast = file + 1 == files.end();
            const std::error_code error = isLast ? state.Replace() : state.Exchange();
            if (!error)
            {
                continue;
            }
            if (refused != nullptr)
            {
                *refused = *file;
            }
            while (file != files.begin())
            {
                (*--file)->state_->TakeBack();
            }
            return error;
        }
    }
    for (FileReplacement* const file : files)
    {
        file->state_->Complete();
    }
    return {};
}

}  // namespace orvane
