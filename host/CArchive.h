// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// CArchive, a buffered binary stream of values and object records over a CFile, and
/// CArchiveException. All numbers are little-endian. The framing of objects is described in
/// docs/archive.md.

#include "host/CException.h"
#include "host/CString.h"

#include <cstddef>
#include <cstring>
#include <functional>
#include <memory>
#include <type_traits>

class CFile;

/// Thrown by value when an archive cannot be read or written.
class ORVANE_API CArchiveException : public CException
{
    DECLARE_DYNAMIC(CArchiveException)

public:
    /// Causes. An unscoped enumeration without a name, so that they read as the class's own
    /// constants.
    enum
    {
        none,
        generic,    ///< objects that nest too deep, 16-bit text, an archive already closed
        readOnly,   ///< storing into an archive that loads
        endOfFile,  ///< the input ends inside a value
        writeOnly,  ///< loading from an archive that stores
        badIndex,   ///< an object or class index that no object has
        badClass,   ///< an unknown class, or an object of an unexpected one
        badSchema   ///< a record version that the class does not know
    };

    explicit CArchiveException(int cause = none, std::string message = {});

    int m_cause;
};

/// Throws a CArchiveException with the cause.
[[noreturn]] ORVANE_API void AfxThrowArchiveException(int cause, const std::string& message = {});

/// What the stream operators take: the scalars of fixed width. (A long is 64 bits on some systems
/// and has no place in a record.)
template <typename Value>
concept ArchiveValue = std::is_arithmetic_v<Value> && !std::is_same_v<Value, bool> &&
                       (std::is_floating_point_v<Value> ? sizeof(Value) <= 8 : sizeof(Value) <= 4);

/// A stream of values and objects. Borrows its file. Destroying it flushes what was stored unless
/// bNoFlushOnDelete is given or it was aborted.
class ORVANE_API CArchive
{
public:
    enum Mode
    {
        store = 0,
        load = 1,
        bNoFlushOnDelete = 2
    };

    /// \param mode store or load, with bNoFlushOnDelete or not. \param bufferSize bytes, at least
    /// 128.
    CArchive(CFile* file, UINT mode, int bufferSize = 4096);
    ~CArchive();
    CArchive(const CArchive&) = delete;
    CArchive& operator=(const CArchive&) = delete;

    BOOL IsStoring() const;
    BOOL IsLoading() const;
    CFile* GetFile() const;

    /// Up to \p count bytes; the number read is less only at the end of the file.
    UINT Read(void* buffer, UINT count);
    /// Exactly \p count bytes, else endOfFile is thrown.
    void ReadExactly(void* buffer, UINT count);
    /// Reads and drops \p count bytes in chunks; endOfFile when there are fewer.
    void Skip(DWORD count);
    void Write(const void* buffer, UINT count);

    /// Storing: writes what is buffered to the file. Loading: sets the file back to the first
    /// unread byte.
    void Flush();
    /// Flushes and lets go of the file, which stays open. Afterwards nothing can be read or
    /// written.
    void Close();
    /// Lets go of the file without flushing; throws nothing.
    void Abort();

    template <ArchiveValue Value>
    CArchive& operator<<(Value value)
    {
        if (static_cast<std::size_t>(writeEnd_ - writeNext_) < sizeof value)
        {
            Write(&value, sizeof value);
            return *this;
        }
        std::memcpy(writeNext_, &value, sizeof value);
        writeNext_ += sizeof value;
        return *this;
    }
    template <ArchiveValue Value>
    CArchive& operator>>(Value& value)
    {
        if (static_cast<std::size_t>(readEnd_ - readNext_) < sizeof value)
        {
            ReadExactly(&value, sizeof value);
            return *this;
        }
        std::memcpy(&value, readNext_, sizeof value);
        readNext_ += sizeof value;
        return *this;
    }
    CArchive& operator<<(const CString& text);
    CArchive& operator>>(CString& text);
    CArchive& operator<<(const CObject* object);
    CArchive& operator>>(CObject*& object);

    /// Writes a reference: null, the index of an object that this archive already has, or the
    /// object's class and record. Objects are known by their address: they stay alive until the
    /// last reference is written.
    void WriteObject(const CObject* object);

    /// Reads a reference. A new object is created and loads its record. Who receives the object
    /// first owns it; references to it from elsewhere, also from inside its own record, are the
    /// reader's to refuse. When its record throws, the object is deleted and its index, with all
    /// later ones, leads nowhere any more. Objects nest up to 512 deep.
    /// \param requested the class that the object must be or derive from; null for any.
    CObject* ReadObject(const CRuntimeClass* requested);

    /// Reads a reference to an object that the caller is to own: null and an object met before are
    /// refused with badClass.
    CObject* ReadNewObject(const CRuntimeClass* requested);

    /// How many indices are given so far.
    DWORD GetLoadedCount() const;
    /// Drops the objects behind the first \p count indices because they are about to be deleted;
    /// later references to them read as null.
    void ForgetObjects(DWORD count);

    void WriteClass(const CRuntimeClass* runtimeClass);
    /// The class that the next object has. \p schema receives its stored schema; \p objectIndex
    /// receives the index when an earlier object follows instead of a class, and the result is then
    /// null.
    CRuntimeClass* ReadClass(const CRuntimeClass* requested = nullptr, UINT* schema = nullptr,
                             DWORD* objectIndex = nullptr);

    /// Writes the characters alone, without a length.
    void WriteString(LPCSTR text);
    void WriteCount(DWORD count);
    DWORD ReadCount();

    /// Gives an object an index without writing or reading it, so that others can refer to it. Done
    /// in the same order on storing and on loading. Null changes nothing.
    void MapObject(const CObject* object);

    /// The schema of the record being read, without its versionable bit; each call after the first
    /// gives -1 until the next object.
    UINT GetObjectSchema();
    void SetObjectSchema(UINT schema);

    /// Called with the class and the version of each record whose version is read and known, base
    /// classes' records and member objects' included, in the order of the file.
    using VersionObserver = std::function<void(const CRuntimeClass* recordClass, DWORD version)>;
    /// An empty one ends it.
    void ObserveVersions(VersionObserver observer);
    /// For readers of records, of a version that they know; see ReadRecordVersion.
    void NoteVersion(const CRuntimeClass* recordClass, DWORD version) const;

    /// Throws a CArchiveException whose message begins with the file and, on loading, the place in
    /// it.
    [[noreturn]] void Fail(int cause, const std::string& message) const;

private:
    struct State;

    void RequireLoading() const;
    void RequireStoring() const;
    UINT Fill();
    void Drain();
    void WriteIndex(DWORD index, bool isClass);
    DWORD NextIndex() const;
    void Number(const void* classOrObject);

    // What is left to read in the buffer, and the room left to write in it. The pair that the
    // archive's direction does not use stays empty, so that the stream operators need no other
    // question.
    const BYTE* readNext_ = nullptr;
    const BYTE* readEnd_ = nullptr;
    BYTE* writeNext_ = nullptr;
    BYTE* writeEnd_ = nullptr;
    std::unique_ptr<State> state_;
};
