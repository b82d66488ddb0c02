// SPDX-License-Identifier: MIT
#pragma once

#include "host/CObject.h"
#include "host/CString.h"

#include <memory>

/// The host application and its profile: settings by section and entry, kept in an INI file.
///
/// The file is $XDG_CONFIG_HOME/orvane/orvane.ini ($HOME/.config when that variable is unset) until
/// SetProfilePath says otherwise. It is read on first use; each write replaces it at once by a new
/// file that was written aside, so a crash leaves the old or the new one whole. A backslash in a
/// section's name is an ordinary character.
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

    /// The default when there is no such entry or it is no number.
    UINT GetProfileInt(LPCSTR section, LPCSTR entry, int defaultValue) const;
    BOOL WriteProfileInt(LPCSTR section, LPCSTR entry, int value);
    CString GetProfileString(LPCSTR section, LPCSTR entry, LPCSTR defaultValue = "") const;
    /// A null value removes the entry; a null entry removes the section. FALSE when the file cannot
    /// be written.
    BOOL WriteProfileString(LPCSTR section, LPCSTR entry, LPCSTR value);

private:
    struct Profile;
    std::unique_ptr<Profile> profile_;
};

/// The application object. When the host has made none, one with the default profile.
ORVANE_API CWinApp* AfxGetApp();

/// Shows a message through MessageBoxA, captioned "Orvane".
ORVANE_API int AfxMessageBox(LPCSTR text, UINT type = 0);
