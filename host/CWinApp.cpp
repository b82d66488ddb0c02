// SPDX-License-Identifier: MIT
#include "host/CWinApp.h"

#include "host/CFile.h"
#include "platform/FileReplacement.h"
#include "platform/FolderLock.h"
#include "platform/Messages.h"

// SI_NO_CONVERSION: the profile's texts are bytes of the process's code page and are not converted.
// SI_IMPLEMENTATION: in some packages, the header defines its functions only if this macro is
// defined.
#define SI_NO_CONVERSION
#define SI_IMPLEMENTATION
#include <SimpleIni.h>

#include <atomic>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <mutex>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

IMPLEMENT_DYNAMIC(CWinApp, CObject)

namespace
{

namespace fs = std::filesystem;

// Initialized at compile time, because the constructor of a static application object sets it.
std::atomic<CWinApp*> hostApplication{nullptr};

LPCSTR OrEmpty(LPCSTR text)
{
    return text == nullptr ? "" : text;
}

int HexDigit(char character)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    const std::size_t value = digits.find(character);
    return value == std::string_view::npos ? -1 : static_cast<int>(value);
}

bool IsEscape(std::string_view text)
{
    return text.size() >= 3 && text[0] == '%' && HexDigit(text[1]) >= 0 && HexDigit(text[2]) >= 0;
}

// Escapes the characters of a text that the file cannot hold, as the class comment describes. Also
// escapes the characters in `never` everywhere, and those in `notFirst` at the start.
std::string Escaped(std::string_view text, std::string_view never, std::string_view notFirst)
{
    constexpr char digits[] = "0123456789ABCDEF";
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        const unsigned char character = static_cast<unsigned char>(text[i]);
        const bool first = i == 0;
        const bool last = i + 1 == text.size();
        if (character < ' ' || (character == ' ' && (first || last)) ||
            never.find(text[i]) != std::string_view::npos ||
            (first && notFirst.find(text[i]) != std::string_view::npos) || IsEscape(text.substr(i)))
        {
            result += {'%', digits[character >> 4], digits[character & 15]};
        }
        else
        {
            result += text[i];
        }
    }
    return result;
}

std::string Unescaped(std::string_view text)
{
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        if (IsEscape(text.substr(i)))
        {
            result += static_cast<char>(HexDigit(text[i + 1]) * 16 + HexDigit(text[i + 2]));
            i += 2;
        }
        else
        {
            result += text[i];
        }
    }
    return result;
}

std::string SectionName(LPCSTR section)
{
    return Escaped(OrEmpty(section), "]", "");
}

std::string EntryName(LPCSTR entry)
{
    return Escaped(OrEmpty(entry), "=", ";#[");
}

std::string DefaultPath()
{
    const char* const configuration = std::getenv("XDG_CONFIG_HOME");
    const char* const home = std::getenv("HOME");
    const char* const roaming = std::getenv("APPDATA");
    fs::path folder = OrEmpty(configuration);
    if (!folder.is_absolute() && home != nullptr && *home != '\0')
    {
        folder = fs::path(home) / ".config";
    }
    if (!folder.is_absolute())
    {
        folder = OrEmpty(roaming);
    }
    return folder.is_absolute() ? (folder / "orvane" / "orvane.ini").string() : std::string();
}

/// The folder in which a file lies or is to be made, at the end of all symbolic links. Empty when
/// there is no such folder and none can be made.
std::string FolderOf(const std::string& path)
{
    std::error_code error;
    const fs::path target = fs::weakly_canonical(path, error);
    if (error)
    {
        return {};
    }
    fs::create_directories(target.parent_path(), error);
    return target.parent_path().string();
}

/// The bytes of a file; nothing when it cannot be read.
std::optional<std::string> ContentOf(const std::string& path)
{
    std::string content;
    CFile file;
    if (!file.Open(path.c_str(), CFile::modeRead, nullptr))
    {
        return std::nullopt;
    }
    try
    {
        content.resize(file.GetLength());
        content.resize(file.Read(content.data(), static_cast<UINT>(content.size())));
    }
    catch (const CFileException&)
    {
        return std::nullopt;
    }
    return content;
}

/// Replaces a file by a new one with this content. Returns false and leaves the old file unchanged
/// when any step fails.
bool ReplaceFile(const std::string& path, const std::string& content)
{
    orvane::FileReplacement file;
    return !file.Begin(path) && !file.Write(content.data(), content.size()) && !file.Finish() &&
           !file.Place();
}

}  // namespace

/// The profile's file and, once it has been read, its content.
struct CWinApp::Profile
{
    std::mutex mutex;
    std::string path = DefaultPath();
    bool isRead = false;
    CSimpleIniA ini;
    int openChanges = 0;  ///< calls of BeginChanges without their EndChanges
    bool canChange = false;
    bool isChanged = false;
    std::optional<orvane::FolderLock> folder;  ///< held while there are open changes

    /// Reads the file if it has not been read yet. Returns false when the file exists but cannot be
    /// read. The profile then counts as empty, and the file must not be replaced.
    bool Read();
    /// Drops the content, so that the file is read again.
    void Forget();
    /// Begins changes of the content. Other processes write their settings to the same file, so the
    /// file is read again, and none of them writes until EndChanges. Calls may be nested. Returns
    /// whether the file can be changed.
    bool BeginChanges();
    /// Ends changes. The outermost call writes the file if \c isChanged. Returns whether the
    /// changes are in the file, or will be at the end of the outermost call.
    bool EndChanges();
    /// Returns false when there is too little memory. The content may then be incomplete.
    bool Set(const std::string& section, const std::string& entry, const std::string& value);
    std::string Find(LPCSTR section, LPCSTR entry, bool* found);
};

bool CWinApp::Profile::Read()
{
    if (isRead)
    {
        return true;
    }
    ini.SetMultiLine(true);
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (status.type() != fs::file_type::not_found)
    {
        const std::optional<std::string> content =
            fs::is_regular_file(status) ? ContentOf(path) : std::nullopt;
        if (!content || ini.LoadData(*content) < 0)
        {
            ini.Reset();
            return false;
        }
    }
    isRead = true;
    return true;
}

void CWinApp::Profile::Forget()
{
    ini.Reset();
    isRead = false;
}

bool CWinApp::Profile::BeginChanges()
{
    if (openChanges == 0)
    {
        Forget();
        isChanged = false;
        canChange = false;
        folder.emplace(FolderOf(path));
        try
        {
            canChange = folder->IsHeld() && Read();
        }
        catch (...)
        {
            folder.reset();
            throw;
        }
    }
    ++openChanges;
    return canChange;
}

bool CWinApp::Profile::EndChanges()
{
    if (--openChanges > 0)
    {
        return canChange;
    }
    // The lock ends with the changes, also when there is no memory to write them.
    struct Unlocking
    {
        std::optional<orvane::FolderLock>& lock;
        ~Unlocking() { lock.reset(); }
    };
    const Unlocking unlocking{folder};
    if (!canChange)
    {
        Forget();
        return false;
    }
    if (!isChanged)
    {
        return true;
    }
    try
    {
        std::string content;
        if (ini.Save(content) >= 0 && ReplaceFile(path, content))
        {
            return true;
        }
    }
    catch (...)
    {
        Forget();
        throw;
    }
    Forget();
    return false;
}

bool CWinApp::Profile::Set(const std::string& section, const std::string& entry,
                           const std::string& value)
{
    try
    {
        return ini.SetValue(section.c_str(), entry.c_str(), value.c_str(), nullptr, true) >= 0;
    }
    catch (const std::bad_alloc&)
    {
        return false;
    }
}

std::string CWinApp::Profile::Find(LPCSTR section, LPCSTR entry, bool* found)
{
    const std::lock_guard lock(mutex);
    Read();
    const char* const value =
        ini.GetValue(SectionName(section).c_str(), EntryName(entry).c_str(), nullptr);
    *found = value != nullptr;
    return *found ? Unescaped(value) : std::string();
}

CWinApp::CWinApp() : CWinApp(Role::Host) {}

CWinApp::CWinApp(Role role) : profile_(std::make_unique<Profile>())
{
    CWinApp* none = nullptr;
    if (role == Role::Host)
    {
        hostApplication.compare_exchange_strong(none, this);
    }
}

CWinApp::~CWinApp()
{
    CWinApp* self = this;
    hostApplication.compare_exchange_strong(self, nullptr);
}

void CWinApp::SetProfilePath(LPCSTR path)
{
    const std::lock_guard lock(profile_->mutex);
    profile_->path = OrEmpty(path);
    profile_->Forget();
}

CString CWinApp::GetProfilePath() const
{
    const std::lock_guard lock(profile_->mutex);
    return profile_->path;
}

UINT CWinApp::GetProfileInt(LPCSTR section, LPCSTR entry, int defaultValue) const
{
    // An entry without a value counts like a missing one.
    const CString text = GetProfileString(section, entry, "");
    const char* const end = text.Text().data() + text.Text().size();
    std::int64_t value = 0;
    const auto result = std::from_chars(text.Text().data(), end, value);
    if (result.ec != std::errc() || result.ptr != end || value < std::numeric_limits<int>::min() ||
        value > std::numeric_limits<UINT>::max())
    {
        return static_cast<UINT>(defaultValue);
    }
    return static_cast<UINT>(value);
}

BOOL CWinApp::WriteProfileInt(LPCSTR section, LPCSTR entry, int value)
{
    return WriteProfileString(section, OrEmpty(entry), std::to_string(value).c_str());
}

CString CWinApp::GetProfileString(LPCSTR section, LPCSTR entry, LPCSTR defaultValue) const
{
    bool found;
    const std::string text = profile_->Find(section, entry, &found);
    return found ? CString(text) : CString(defaultValue);
}

BOOL CWinApp::WriteProfileString(LPCSTR section, LPCSTR entry, LPCSTR value)
{
    const std::lock_guard lock(profile_->mutex);
    CSimpleIniA& ini = profile_->ini;
    if (profile_->path.empty() || (entry != nullptr && *entry == '\0'))
    {
        return FALSE;
    }
    const std::string sectionName = SectionName(section);
    const std::string entryName = EntryName(entry);
    // A < at the start would be read as the beginning of a value of several lines.
    const std::string text = value != nullptr ? Escaped(value, "", "<") : std::string();
    if (!profile_->BeginChanges())
    {
        profile_->EndChanges();
        return FALSE;
    }
    profile_->isChanged = true;
    if (entry == nullptr || value == nullptr)
    {
        ini.Delete(sectionName.c_str(), entry == nullptr ? nullptr : entryName.c_str(), true);
    }
    else if (!profile_->Set(sectionName, entryName, text))
    {
        profile_->canChange = false;  // so that no part of several changes is written
    }
    return profile_->EndChanges() ? TRUE : FALSE;
}

BOOL CWinApp::ChangeProfile(const std::function<void()>& changes)
{
    const auto end = [this] {
        const std::lock_guard lock(profile_->mutex);
        return profile_->EndChanges() ? TRUE : FALSE;
    };
    {
        const std::lock_guard lock(profile_->mutex);
        profile_->BeginChanges();
    }
    try
    {
        changes();
    }
    catch (...)
    {
        end();
        throw;
    }
    return end();
}

CWinApp* AfxGetApp()
{
    CWinApp* const application = hostApplication.load();
    if (application != nullptr)
    {
        return application;
    }
    static CWinApp* const fallback = new CWinApp(CWinApp::Role::Fallback);
    return fallback;
}

int AfxMessageBox(LPCSTR text, UINT type)
{
    return MessageBoxA(nullptr, OrEmpty(text), "Orvane", type);
}
