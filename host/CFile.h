// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// CFile, a binary file on disk; CMemFile, a file in memory with the same functions;
/// CFileException.

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
    LONG m_lOsError;  ///< the system's error number; -1 for an error without a number
    CString m_strFileName;
};

[[noreturn]] ORVANE_API void AfxThrowFileException(int cause, LONG osError = -1,
                                                   LPCSTR fileName = nullptr);

/// A file on disk. Owns the open file; the destructor closes it without reporting errors. Not
/// copyable.
class ORVANE_API CFile : public CObject
{
    DECLARE_DYNAMIC(CFile)

public:
    /// How to open a file: one of modeRead, modeWrite and modeReadWrite, combined by | with any of
    /// the other flags. The share flags have no effect.
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

    /// Opens a file. If this object has a file open, that file is closed first. Returns FALSE when
    /// the file cannot be opened; \p error, if given, then receives the reason. With modeCreate, a
    /// new file is made, and an existing one is emptied unless modeNoTruncate is given. Without
    /// modeCreate, the file must exist.
    virtual BOOL Open(LPCSTR fileName, UINT openFlags, CFileException* error = nullptr);

    // The functions below throw CFileException: with cause invalidFile while no file is open, and
    // with cause accessDenied when a file opened with modeWrite is read or a file opened with
    // modeRead is written.

    /// Reads up to \p count bytes and returns how many bytes it read: fewer only at the end of the
    /// file.
    virtual UINT Read(void* buffer, UINT count);
    virtual void Write(const void* buffer, UINT count);
    /// Moves the position by \p offset bytes from a SeekPosition and returns the new position,
    /// counted from the start of the file. The new position may lie behind the end of the file.
    /// Throws badSeek for a position before the start.
    virtual std::int64_t Seek(std::int64_t offset, UINT from);
    /// The position where the next byte is read or written, in bytes from the start.
    virtual std::uint64_t GetPosition() const
    {
        // There is a buffer only while a file is open.
        return static_cast<std::uint64_t>(buffer_ != nullptr ? bufferStart_ + bufferAt_
                                                             : StreamPosition());
    }
    virtual std::uint64_t GetLength() const;
    /// Sets the length in bytes: cuts the file off or extends it with zeros. Then moves the
    /// position to the end of the file.
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
        None,
        Read,
        Write
    };

    std::FILE* PrepareFor(Operation operation);
    std::FILE* RequireOpen() const;
    [[noreturn]] void ThrowSystemError() const;
    std::size_t ReadStream(std::FILE* file, void* buffer, std::size_t count) const;
    UINT ReadBuffered(std::FILE* file, char* buffer, UINT count);
    std::int64_t StreamPosition() const;
    /// Drops the bytes that were read ahead. \p start is the position in the file of the byte that
    /// is read next.
    void EmptyBuffer(std::int64_t start);

    // The bytes that were read ahead while a file is open with modeRead; otherwise null. The
    // position of file_ is behind the last of these bytes.
    std::unique_ptr<char[]> buffer_;
    std::int64_t bufferStart_ = 0;  // the position in the file of the first byte of the buffer
    UINT bufferCount_ = 0;          // how many bytes the buffer holds
    UINT bufferAt_ = 0;             // how many of these bytes have been read

    std::FILE* file_ = nullptr;
    UINT access_ = modeRead;
    Operation last_ = Operation::None;
    CString path_;
};

/// A file in memory, which grows when it is written to. A file in memory is always open for reading
/// and writing. Close and Abort empty it.
class ORVANE_API CMemFile : public CFile
{
    DECLARE_DYNAMIC(CMemFile)

public:
    /// \param growBytes the number of bytes for which memory is reserved at first.
    explicit CMemFile(UINT growBytes = 1024);
    /// The file starts with a copy of the \p count bytes and the position 0. Memory is reserved for
    /// \p growBytes further bytes.
    CMemFile(const BYTE* bytes, UINT count, UINT growBytes = 0);

    /// Returns FALSE, because a file in memory cannot be opened.
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
