// SPDX-License-Identifier: MIT
#include "platform/posix/UnfinishedFiles.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>
#include <limits>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string_view>
#include <tuple>
#include <utility>

namespace posix
{
namespace
{

constexpr std::string_view namePrefix = ".orvane-";
constexpr std::string_view nameSuffix = ".part";

/// A path that a signal handler can read at any time. Few files are unfinished at once; those
/// beyond the places are removed by a later run instead.
struct ListedPath
{
    std::atomic<bool> isTaken = false;
    std::atomic<bool> isComplete = false;  ///< whether the text is whole and names a file
    std::array<char, 4096> text;           ///< as long as the longest path, with its final zero
};
constexpr int listedPaths = 16;
std::array<ListedPath, listedPaths> listed;
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler reads it");

/// What a name tells of the process that made the file.
struct Maker
{
    std::uint64_t process = 0;
    std::uint64_t start = 0;
};

/// The time at which a process started, in clock ticks since the system did. 0 when it is not
/// known: there is no such process, or /proc does not show it.
std::uint64_t StartOf(std::uint64_t process)
{
    constexpr int fieldsBeforeStart = 19;  // between the program's name and the start
    std::ifstream file("/proc/" + std::to_string(process) + "/stat");
    const std::string stat{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    // The name is in parentheses and can itself contain spaces and parentheses.
    std::size_t at = stat.rfind(')');
    if (at == std::string::npos)
    {
        return 0;
    }
    at += 2;
    for (int i = 0; i < fieldsBeforeStart && at != std::string::npos; ++i)
    {
        at = stat.find(' ', at);
        at += at == std::string::npos ? 0 : 1;
    }
    std::uint64_t start = 0;
    if (at != std::string::npos)
    {
        std::from_chars(stat.data() + at, stat.data() + stat.size(), start);
    }
    return start;
}

/// Takes a decimal number and the character behind it from the start of a text.
std::optional<std::uint64_t> TakeNumber(std::string_view& text, char behind)
{
    std::uint64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop == end || *stop != behind)
    {
        return std::nullopt;
    }
    text.remove_prefix(static_cast<std::size_t>(stop - text.data()) + 1);
    return number;
}

/// The process that a name tells of; nothing for every name that UnfinishedName does not choose.
std::optional<Maker> MakerOf(std::string_view name)
{
    if (!name.starts_with(namePrefix) || !name.ends_with(nameSuffix))
    {
        return std::nullopt;
    }
    name.remove_prefix(namePrefix.size());
    const auto process = TakeNumber(name, '-');
    const auto start = process ? TakeNumber(name, '-') : std::nullopt;
    const auto number = start ? TakeNumber(name, '.') : std::nullopt;
    if (!number || name != nameSuffix.substr(1) || *process == 0 ||
        *process > static_cast<std::uint64_t>(std::numeric_limits<pid_t>::max()))
    {
        return std::nullopt;
    }
    return Maker{*process, *start};
}

bool HasEnded(const Maker& maker)
{
    if (kill(static_cast<pid_t>(maker.process), 0) != 0 && errno == ESRCH)
    {
        return true;
    }
    const std::uint64_t start = StartOf(maker.process);
    return start != 0 && maker.start != 0 && start != maker.start;
}

/// A process in a container has other process numbers than one outside, so an ended process is not
/// enough: a living one, wherever it is, has its file locked.
void RemoveUnlessLocked(int folder, const char* name)
{
    const int file = openat(folder, name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (file < 0)
    {
        return;
    }
    struct stat status = {};
    if (fstat(file, &status) == 0 && S_ISREG(status.st_mode) &&
        (status.st_uid == geteuid() || geteuid() == 0) && flock(file, LOCK_EX | LOCK_NB) == 0)
    {
        unlinkat(folder, name, 0);
    }
    close(file);
}

/// True for the first call with this folder. A folder that was removed and made again counts as
/// another one when its path or its number differs.
bool IsFirstVisit(const std::string& path, int folder)
{
    struct Visited
    {
        std::mutex mutex;
        std::set<std::tuple<std::string, dev_t, ino_t>> folders;
    };
    static Visited* const visited = new Visited;  // never destroyed: files may be written late
    struct stat status = {};
    if (fstat(folder, &status) != 0)
    {
        return false;
    }
    const std::lock_guard lock(visited->mutex);
    return visited->folders.emplace(path, status.st_dev, status.st_ino).second;
}

}  // namespace

void UnfinishedName::Choose(const std::string& folder)
{
    static std::atomic<unsigned> count = 0;
    Forget();
    const auto process = static_cast<std::uint64_t>(getpid());
    std::string path = folder + "/" + std::string(namePrefix) + std::to_string(process) + "-" +
                       std::to_string(StartOf(process)) + "-" + std::to_string(++count) +
                       std::string(nameSuffix);
    for (int i = 0; i < listedPaths && path.size() < listed[0].text.size(); ++i)
    {
        if (!listed[i].isTaken.exchange(true))
        {
            std::memcpy(listed[i].text.data(), path.c_str(), path.size() + 1);
            listed[i].isComplete = true;
            place_ = i;
            break;
        }
    }
    path_ = std::move(path);
}

void UnfinishedName::Remove()
{
    if (!IsEmpty())
    {
        unlink(Path());
        Forget();
    }
}

void UnfinishedName::Forget()
{
    path_.clear();
    if (place_ != noPlace)
    {
        listed[place_].isComplete = false;
        listed[place_].isTaken = false;
        place_ = noPlace;
    }
}

void UnfinishedName::Swap(UnfinishedName& other) noexcept
{
    path_.swap(other.path_);
    std::swap(place_, other.place_);
}

void RemoveUnfinishedFiles()
{
    for (const ListedPath& path : listed)
    {
        if (path.isComplete)
        {
            unlink(path.text.data());
        }
    }
}

void RemoveDeadFiles(const std::string& folder)
{
    const std::unique_ptr<DIR, int (*)(DIR*)> names(opendir(folder.c_str()), closedir);
    if (names == nullptr || !IsFirstVisit(folder, dirfd(names.get())))
    {
        return;
    }
    while (const dirent* const entry = readdir(names.get()))
    {
        const std::optional<Maker> maker = MakerOf(entry->d_name);
        if (maker && HasEnded(*maker))
        {
            RemoveUnlessLocked(dirfd(names.get()), entry->d_name);
        }
    }
}

}  // namespace posix
