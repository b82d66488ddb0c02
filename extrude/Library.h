// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The library's frame: what happens when it is loaded and unloaded, the mutex that serializes the
/// building of glyphs, and the registry of installed fonts.

#include "platform/Export.h"
#include "platform/Types.h"

class CWnd;
class OrvFontList;

/// Registers the library with the host framework and creates the glyph mutex, not owned. Returns 1,
/// also when it was attached already, which changes nothing. Loading the library does this; a host
/// calls it only after DetachLibrary.
ORVANE_API int AttachLibrary();

/// Deletes every font of the registry and closes the glyph mutex. Returns 1, also when the library
/// is not attached. Unloading the library does this.
ORVANE_API int DetachLibrary();

/// The process-wide mutex held while a glyph is built; borrowed. Null while the library is not
/// attached.
ORVANE_API HANDLE GetGlyphMutex();

extern "C"
{
    /// Enters every installed TrueType face into the registry, in the order of the full names; a
    /// name that is there already is passed over, so a second call adds only what is new, faces
    /// installed since included. Choose the process's code page before. Not to be called by two
    /// threads at once. Returns 1. \param progress non-zero to show each face in \p status. \param
    /// status borrowed, may be null; must live as long as the library's use of it: until the next
    /// call.
    ORVANE_API int WINAPI CreateFontList(int progress, CWnd* status);

    /// The registry, owned by the library; empty until CreateFontList has run.
    ORVANE_API OrvFontList* WINAPI GetFontList();
}
