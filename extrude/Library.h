// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The library as a whole: loading and unloading it, the mutex that lets only one thread at a time
/// build a glyph, and the registry of installed fonts.

#include "platform/Export.h"
#include "platform/Types.h"

class CWnd;
class OrvFontList;

/// Registers the library with the host framework and creates the glyph mutex, which no thread owns
/// at first. Returns 1. Does nothing when the library is attached already. Loading the library
/// calls this; a host needs to call it only after DetachLibrary.
ORVANE_API int AttachLibrary();

/// Deletes every font of the registry, closes the glyph mutex and ends the registration with the
/// host framework. Returns 1, also when the library is not attached. Unloading the library calls
/// this.
ORVANE_API int DetachLibrary();

/// The mutex that a thread holds while it builds a glyph. The process has only one, and the library
/// owns it. Null while the library is not attached.
ORVANE_API HANDLE GetGlyphMutex();

extern "C"
{
    /// Enters every installed TrueType face into the registry, sorted by full name. A face whose
    /// name is in the registry already is skipped, so a second call adds only the faces installed
    /// since the first. Set the process's code page before the first call, because the names are
    /// stored in that code page. Returns 1.
    ///
    /// Several threads may call this at the same time; each call returns when every face is in the
    /// registry. A thread may read the registry after its own call has returned. Nothing else may
    /// be done to the registry in one thread while another thread uses it.
    /// \param progress nonzero to show the name of each face as the text of \p status.
    /// \param status borrowed, used only during the call; may be null.
    ORVANE_API int WINAPI CreateFontList(int progress, CWnd* status);

    /// The registry of fonts, owned by the library. It is empty until CreateFontList has run.
    ORVANE_API OrvFontList* WINAPI GetFontList();
}
