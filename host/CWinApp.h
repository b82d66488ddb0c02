// SPDX-License-Identifier: MIT
#pragma once

#include "host/CObject.h"
#include "host/CString.h"

#include <functional>
#include <memory>

/// The host application and its profile: settings that are kept in an INI file. The name of a
/// setting is called its entry. Each setting belongs to a section.
///
/// The file is orvane/orvane.ini in the first of these folders whose variable is set and gives an
/// absolute path: $XDG_CONFIG_HOME, $HOME/.config, $APPDATA. The variables are read when this
/// object is created. If none of them is set, there is no file and nothing can be written.
/// SetProfilePath chooses another file.
///
/// The file is read when a setting is first used, and again for each write, which changes one entry
/// and keeps those that other processes have written since. They wait for each other, but no longer
/// than 10 seconds. The new file takes the old one's place when it is complete and on the disk (see
/// FileReplacement), so after a crash one of the two is there. Comments in the file are kept.
///
/// An application that keeps its profile elsewhere overrides GetProfileString and
/// WriteProfileString; the functions for numbers call these.
///
/// Sections and entries are found in any case of the letters A to Z. Names and values may contain
/// any characters. Those that an INI file cannot hold, such as a line break, a space at either end
/// or a = in an entry's name, are written as % and two hexadecimal digits; a % that is followed by
/// two such digits is written as %25. A backslash in a section's name has no special meaning. Null
/// texts count as empty, except where a function says otherwise.
///
/// All functions may be called from any thread.
class ORVANE_API CWinApp : public CObject
{
    DECLARE_DYNAMIC(CWinApp)

public:
    /// AfxGetApp returns the object that was created first, until it is destroyed.
    CWinApp();
    ~CWinApp() override;
    CWinApp(const CWinApp&) = delete;
    CWinApp& operator=(const CWinApp&) = delete;

    /// Makes another file the profile's file. The call writes nothing to either file.
    void SetProfilePath(LPCSTR path);
    CString GetProfilePath() const;

    /// The entry's value, or the default value if the entry is missing or is not a decimal number
    /// of 32 bits.
    virtual UINT GetProfileInt(LPCSTR section, LPCSTR entry, int defaultValue) const;
    virtual BOOL WriteProfileInt(LPCSTR section, LPCSTR entry, int value);
    virtual CString GetProfileString(LPCSTR section, LPCSTR entry, LPCSTR defaultValue = "") const;
    /// A null value removes the entry; a null entry removes the whole section. Returns FALSE and
    /// changes nothing when the file cannot be read or written, when another process keeps it
    /// locked, or when the entry's name is empty.
    virtual BOOL WriteProfileString(LPCSTR section, LPCSTR entry, LPCSTR value);
    /// Calls \p changes and puts all entries that are written meanwhile into the file in one step.
    /// A write by itself waits for the disk, so many writes take seconds. Returns FALSE and changes
    /// nothing in the cases in which WriteProfileString does. If \p changes throws, the entries
    /// that it had written before are kept.
    BOOL ChangeProfile(const std::function<void()>& changes);

private:
    friend CWinApp* AfxGetApp();

    enum class Role
    {
        Host,
        Fallback
    };
    struct Profile;

    explicit CWinApp(Role role);

    std::unique_ptr<Profile> profile_;
};

/// Returns the host's application object. While the host has no application object, returns an
/// object of the library, which has the default profile and is never destroyed.
ORVANE_API CWinApp* AfxGetApp();

/// Shows a message box with the caption "Orvane", through MessageBoxA. Returns its result.
ORVANE_API int AfxMessageBox(LPCSTR text, UINT type = 0);
