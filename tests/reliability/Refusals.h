// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Refuses calls of the library into the system. Only the library's own calls are counted and
/// refused, not those that OpenGL, FreeType or fontconfig make.

/// What a call asks the system for.
enum class CallKind
{
    Memory,   ///< `new` and calloc, and objects that other libraries allocate for this one
    Open,     ///< opening files and folders, also fonts through FreeType
    Read,     ///< reading a file
    Write,    ///< writing a file, and growing or reserving its space
    Flush,    ///< fsync
    Rename,   ///< giving a file a name: rename and link
    Mapping,  ///< mapping a file or memory
    Thread,   ///< starting a thread
    Context   ///< making an OpenGL context or its surface, and making it current
};

constexpr CallKind callKinds[] = {CallKind::Memory,  CallKind::Open,   CallKind::Read,
                                  CallKind::Write,   CallKind::Flush,  CallKind::Rename,
                                  CallKind::Mapping, CallKind::Thread, CallKind::Context};

const char* NameOf(CallKind kind);

/// How many calls are refused.
enum class Extent
{
    One,
    AllFromThere  ///< as when the memory or the disk stays full
};

/// While an object of this class lives, calls of a kind are refused on all threads. One object at a
/// time.
class Refusals
{
public:
    /// \param number of the first call that is refused, counted from 1
    Refusals(CallKind kind, long number, Extent extent);
    ~Refusals();
    Refusals(const Refusals&) = delete;
    Refusals& operator=(const Refusals&) = delete;

    /// How many calls have been refused until now.
    static long Refused();

    /// Called before each call. Returns whether the call is to fail.
    static bool Refuse(CallKind kind);
};
