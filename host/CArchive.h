// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// CArchive, which stores and loads values and objects in a CFile, and CArchiveException. All
/// values are little-endian. docs/archive.md describes the bytes.

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
    /// The causes. The enumeration has no name, so that programs use the causes as constants of the
    /// class: CArchiveException::badIndex.
    enum
    {
        none,
        generic,    ///< too deep nesting of objects, a text of 16-bit characters, use after Close
        readOnly,   ///< storing into an archive that loads
        endOfFile,  ///< the input ends inside a value
        writeOnly,  ///< loading from an archive that stores
        badIndex,   ///< a reference to a number that no object or class has
        badClass,   ///< an unknown class, or an object of an unexpected class
        badSchema   ///< a record of a version that the class does not know
    };

    explicit CArchiveException(int cause = none, std::string message = {});

    int m_cause;
};

/// Throws a CArchiveException with the cause.
[[noreturn]] ORVANE_API void AfxThrowArchiveException(int cause, const std::string& message = {});

/// The types that the stream operators accept: integers of 8 to 32 bits and floating-point numbers
/// of 32 or 64 bits. 64-bit integers are left out because long has 64 bits on some systems and 32
/// bits on others. bool is left out because its size is not fixed.
template <typename Value>
concept ArchiveValue = std::is_arithmetic_v<Value> && !std::is_same_v<Value, bool> &&
                       (std::is_floating_point_v<Value> ? sizeof(Value) <= 8 : sizeof(Value) <= 4);

/// Stores values and objects in a file, or loads them, through a buffer. The file is borrowed. The
/// destructor calls Flush and ignores its errors, except with bNoFlushOnDelete and after Close or
/// Abort.
class ORVANE_API CArchive
{
public:
    enum Mode
    {
        store = 0,
        load = 1,
        bNoFlushOnDelete = 2
    };

    /// \param mode store or load, either of them alone or combined with bNoFlushOnDelete by |.
    /// \param bufferSize in bytes; less than 128 counts as 128.
    CArchive(CFile* file, UINT mode, int bufferSize = 4096);
    ~CArchive();
    CArchive(const CArchive&) = delete;
    CArchive& operator=(const CArchive&) = delete;

    BOOL IsStoring() const;
    BOOL IsLoading() const;
    CFile* GetFile() const;

    /// Reads up to \p count bytes and returns how many bytes it read: fewer only at the end of the
    /// file.
    UINT Read(void* buffer, UINT count);
    /// Reads \p count bytes. Throws endOfFile when the file ends before them.
    void ReadExactly(void* buffer, UINT count);
    /// Skips \p count bytes. Throws endOfFile when the file ends before them.
    void Skip(DWORD count);
    void Write(const void* buffer, UINT count);

    /// An archive that stores writes the buffered bytes to the file. An archive that loads moves
    /// the file's position back to the first byte that no caller has read.
    void Flush();
    /// Calls Flush and ends the use of the file. The file stays open; the archive cannot be used
    /// afterwards.
    void Close();
    /// Ends the use of the file without Flush. Throws nothing.
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

    /// Writes a reference to an object: the mark of a null pointer, or the number of an object that
    /// was written before, or the class and the record of a new object. The archive recognises
    /// objects by their address, so an object must stay alive until the last reference to it is
    /// written.
    void WriteObject(const CObject* object);

    /// Reads a reference to an object. For a new object, creates it and loads its record; the
    /// caller owns it. For an object that was loaded before, returns the same pointer; a caller
    /// that cannot share the object must refuse it (see ReadNewObject). A damaged file can even
    /// refer to an object from inside that object's own record. When loading the record throws, the
    /// object is deleted, and its number and all later numbers refer to nothing. Objects nest up to
    /// 512 deep.
    /// \param requested the class that the object must be or derive from; null for any.
    CObject* ReadObject(const CRuntimeClass* requested);

    /// Reads a reference to an object and makes the caller its owner. Throws badClass for a null
    /// reference and for an object that was loaded before, because such an object already has an
    /// owner.
    CObject* ReadNewObject(const CRuntimeClass* requested);

    /// The number of classes and objects that have been loaded so far. The class or object loaded
    /// last has this number.
    DWORD GetLoadedCount() const;
    /// Forgets all loaded objects whose numbers are greater than \p count. Later references to them
    /// read as null. Callers use this when they delete such objects.
    void ForgetObjects(DWORD count);

    void WriteClass(const CRuntimeClass* runtimeClass);
    /// Reads the class of the next object.
    /// \param requested the class that the class read must be or derive from; null for any.
    /// \param schema receives the version of the class in this archive. If it is null,
    /// GetObjectSchema returns the version.
    /// \param objectIndex if not null, a reference to an earlier object or a null reference is
    /// accepted, too: *objectIndex receives the object's number or 0, and the result is null.
    CRuntimeClass* ReadClass(const CRuntimeClass* requested = nullptr, UINT* schema = nullptr,
                             DWORD* objectIndex = nullptr);

    /// Writes the characters without a length and without a final zero.
    void WriteString(LPCSTR text);
    void WriteCount(DWORD count);
    DWORD ReadCount();

    /// Gives an object a number without writing or reading the object, so that references to it can
    /// be stored. Programs must call this at the same place when they store and when they load. A
    /// null object changes nothing.
    void MapObject(const CObject* object);

    /// The version of the record that is being read. A second call for the same object returns
    /// 0xFFFFFFFF.
    UINT GetObjectSchema();
    void SetObjectSchema(UINT schema);

    /// A function that is called for each record with the record's class and version, in the order
    /// of the file. It is also called for the records of base classes and of member objects, but
    /// not for a record whose version is unknown and therefore refused.
    using VersionObserver = std::function<void(const CRuntimeClass* recordClass, DWORD version)>;
    /// Sets the function. An empty function ends the calls.
    void ObserveVersions(VersionObserver observer);
    /// Calls the observer, if there is one. ReadRecordVersion does this for every record.
    void NoteVersion(const CRuntimeClass* recordClass, DWORD version) const;

    /// Throws a CArchiveException. Its message begins with the file's path and, on loading, the
    /// position in the file.
    [[noreturn]] void Fail(int cause, const std::string& message) const;

private:
    struct State;

    void RequireLoading() const;
    void RequireStoring() const;
    UINT FillBuffer();
    void EmptyBuffer();
    void WriteNumber(DWORD index, bool isClass);
    DWORD NextNumber() const;
    void AssignNumber(const void* classOrObject);

    // The bytes from readNext_ to readEnd_ are buffered and not read yet. The bytes from writeNext_
    // to writeEnd_ are the free part of the buffer. The write range is empty while the archive
    // loads, and the read range is empty while it stores, so the stream operators need not check
    // the direction.
    const BYTE* readNext_ = nullptr;
    const BYTE* readEnd_ = nullptr;
    BYTE* writeNext_ = nullptr;
    BYTE* writeEnd_ = nullptr;
    std::unique_ptr<State> state_;
};
