// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// CFile, a binary file on disk; CMemFile, the same in memory; CFileException.

#include "host/CException.h"
#include "host/CString.h"

#include <cstdint>
#include <cstdio>
#include <memory>
#include <vector>

/// Thrown by value when a file cannot be opened, read or written. what() names the file.
class ORVANE_API CFileException : public CException
{
    DECLARE_DYNAMIC(CFileException)

public:
    enum
    {
        none,
        genericException,
        fileNotFound,
        badPath,
        tooManyOpenFiles,
        accessDenied,
        invalidFile,
        removeCurrentDir,
        directoryFull,
        badSeek,
        hardIO,
        sharingViolation,
        lockViolation,
        diskFull,
        endOfFile
    };

    explicit CFileException(int cause = none, LONG osError = -1, LPCSTR fileName = nullptr);

    int m_cause;
    LONG m_lOsError;  ///< the system's own number, -1 when there is none
    CString m_strFileName;
};

[[noreturn]] ORVANE_API void AfxThrowFileException(int cause, LONG osError = -1,
                                                   LPCSTR fileName = nullptr);

/// A file on disk. Owns its descriptor and closes it. Not copyable.
class ORVANE_API CFile : public CObject
{
    DECLARE_DYNAMIC(CFile)

public:
    /// How to open: one of the first three, and the others joined to it. Sharing is accepted and
    /// means nothing here.
    enum OpenFlags
    {
        modeRead = 0x0000,
        modeWrite = 0x0001,
        modeReadWrite = 0x0002,
        shareCompat = 0x0000,
        shareExclusive = 0x0010,
        shareDenyWrite = 0x0020,
        shareDenyRead = 0x0030,
        shareDenyNone = 0x0040,
        modeCreate = 0x1000,
        modeNoTruncate = 0x2000,
        typeBinary = 0x8000
    };
    enum SeekPosition
    {
        begin = 0,
        current = 1,
        end = 2
    };

    CFile() = default;
    /// Throws CFileException when the file cannot be opened.
    CFile(LPCSTR fileName, UINT openFlags);
    ~CFile() override;
    CFile(const CFile&) = delete;
    CFile& operator=(const CFile&) = delete;

    /// FALSE when it cannot be opened, with the reason in \p error when that is given.
    /// Without modeCreate the file must exist. With it, the file is made or emptied; with
    /// modeNoTruncate too, one that exists keeps its content. A file already open is closed first.
    virtual BOOL Open(LPCSTR fileName, UINT openFlags, CFileException* error = nullptr);

    // The operations below throw CFileException: invalidFile while no file is open, and
    // accessDenied against the way it was opened.

    /// The number of bytes read, less than \p count only at the end.
    virtual UINT Read(void* buffer, UINT count);
    virtual void Write(const void* buffer, UINT count);
    /// The new position from the start; it may lie behind the end. Throws badSeek before the start.
    virtual std::int64_t Seek(std::int64_t offset, UINT from);
    virtual std::uint64_t GetPosition() const
    {
        // There is a buffer only while the file is open.
        return static_cast<std::uint64_t>(buffer_ != nullptr ? bufferStart_ + bufferAt_
                                                             : StreamPosition());
    }
    virtual std::uint64_t GetLength() const;
    /// Cuts the file or fills it up with zeros. The position is then its end.
    virtual void SetLength(std::uint64_t length);
    virtual void Flush();
    /// Does nothing while no file is open.
    virtual void Close();
    /// Closes without throwing.
    virtual void Abort();
    /// The absolute path, empty while no file is open.
    virtual CString GetFilePath() const;

    std::int64_t SeekToEnd() { return Seek(0, end); }
    void SeekToBegin() { Seek(0, begin); }

private:
    enum class Operation
    {
        none,
        read,
        write
    };

    std::FILE* Require(Operation operation);
    std::FILE* RequireOpen() const;
    [[noreturn]] void ThrowSystemError() const;
    std::size_t ReadStream(std::FILE* file, void* buffer, std::size_t count) const;
    UINT ReadBuffered(std::FILE* file, char* buffer, UINT count);
    std::int64_t StreamPosition() const;
    void EmptyBuffer(std::int64_t start);

    // Of a file that is open for reading alone: what was read ahead, from bufferStart_ in the file
    // on. The stream stands behind it.
    std::unique_ptr<char[]> buffer_;
    std::int64_t bufferStart_ = 0;
    UINT bufferCount_ = 0;
    UINT bufferAt_ = 0;

    std::FILE* file_ = nullptr;
    UINT access_ = modeRead;
    Operation last_ = Operation::none;
    CString path_;
};

/// A file in memory that grows as it is written. It is always open for reading and writing, and
/// Close empties it.
class ORVANE_API CMemFile : public CFile
{
    DECLARE_DYNAMIC(CMemFile)

public:
    /// \param growBytes the room made at first.
    explicit CMemFile(UINT growBytes = 1024);
    /// Starts with a copy of the bytes, positioned at the start. It grows like any other.
    CMemFile(const BYTE* bytes, UINT count, UINT growBytes = 0);

    /// Always FALSE: there is nothing to open.
    BOOL Open(LPCSTR fileName, UINT openFlags, CFileException* error = nullptr) override;
    UINT Read(void* buffer, UINT count) override;
    void Write(const void* buffer, UINT count) override;
    std::int64_t Seek(std::int64_t offset, UINT from) override;
    std::uint64_t GetPosition() const override;
    std::uint64_t GetLength() const override;
    void SetLength(std::uint64_t length) override;
    void Flush() override;
    void Close() override;
    void Abort() override;
    CString GetFilePath() const override;

    const std::vector<BYTE>& Bytes() const { return bytes_; }

private:
    std::vector<BYTE> bytes_;
    std::size_t position_ = 0;
};
