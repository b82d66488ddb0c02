// SPDX-License-Identifier: MIT
#pragma once

#include "host/CObject.h"
#include "host/CString.h"

#include <memory>

/// The host application and its profile: settings by section and entry, kept in an INI file.
///
/// The file is $XDG_CONFIG_HOME/orvane/orvane.ini until SetProfilePath says otherwise
/// ($HOME/.config, or else $APPDATA, when that variable is unset or relative; the variables are
/// read when the object is made, and where there is none of them nothing can be written). It is
/// read on first use; each write replaces it at once by a new file that was written aside, so a
/// crash leaves the old or the new one whole.
///
/// Sections and entries are found without regard to the case of A to Z. Names and values may hold
/// any characters: what an INI file cannot hold as it is, such as a line break, a space at an end,
/// or a = in an entry's name, is written as % and two hexadecimal digits, and a % that two of these
/// follow as %25. A backslash in a section's name is an ordinary character. Comments in the file
/// are kept. Null texts count as empty unless said otherwise.
///
/// Its functions may be called from any thread.
class ORVANE_API CWinApp : public CObject
{
    DECLARE_DYNAMIC(CWinApp)

public:
    /// The first application object made becomes the one that AfxGetApp returns, until it is
    /// destroyed.
    CWinApp();
    ~CWinApp() override;
    CWinApp(const CWinApp&) = delete;
    CWinApp& operator=(const CWinApp&) = delete;

    /// Uses another file from now on. Nothing is written by this call.
    void SetProfilePath(LPCSTR path);
    CString GetProfilePath() const;

    /// The default when there is no such entry or it is no decimal number of 32 bits.
    UINT GetProfileInt(LPCSTR section, LPCSTR entry, int defaultValue) const;
    BOOL WriteProfileInt(LPCSTR section, LPCSTR entry, int value);
    CString GetProfileString(LPCSTR section, LPCSTR entry, LPCSTR defaultValue = "") const;
    /// A null value removes the entry; a null entry removes the section. FALSE, changing nothing,
    /// when the file cannot be read or written or the entry's name is empty.
    BOOL WriteProfileString(LPCSTR section, LPCSTR entry, LPCSTR value);

private:
    friend CWinApp* AfxGetApp();

    enum class Role
    {
        host,
        fallback
    };
    struct Profile;

    explicit CWinApp(Role role);

    std::unique_ptr<Profile> profile_;
};

/// The application object. While the host has none, one with the default profile, which is never
/// destroyed.
ORVANE_API CWinApp* AfxGetApp();

/// Shows a message through MessageBoxA, captioned "Orvane".
ORVANE_API int AfxMessageBox(LPCSTR text, UINT type = 0);
