// SPDX-License-Identifier: MIT
#include "host/CFile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <limits>
#include <string>
#include <system_error>

IMPLEMENT_DYNAMIC(CFileException, CException)
IMPLEMENT_DYNAMIC(CFile, CObject)

namespace
{

constexpr std::size_t readBufferSize = std::size_t{64} * 1024;  // in bytes

const char* CauseText(int cause)
{
    switch (cause)
    {
        case CFileException::none:
            return "no error";
        case CFileException::fileNotFound:
            return "there is no such file";
        case CFileException::badPath:
            return "the path is not valid";
        case CFileException::tooManyOpenFiles:
            return "too many files are open";
        case CFileException::accessDenied:
            return "access is denied";
        case CFileException::invalidFile:
            return "no file is open";
        case CFileException::badSeek:
            return "there is no such position";
        case CFileException::hardIO:
            return "the device reports an error";
        case CFileException::diskFull:
            return "there is no space left";
        case CFileException::endOfFile:
            return "the file ends";
        default:
            return "the file cannot be used";
    }
}

std::string FileMessage(int cause, LONG osError, LPCSTR fileName)
{
    std::string message = fileName == nullptr || *fileName == '\0' ? "file" : fileName;
    message += std::string(": ") + CauseText(cause);
    if (osError != -1)
    {
        message += " (" + std::generic_category().message(osError) + ")";
    }
    return message;
}

int CauseOf(std::errc error)
{
    switch (error)
    {
        case std::errc::no_such_file_or_directory:
            return CFileException::fileNotFound;
        case std::errc::not_a_directory:
        case std::errc::filename_too_long:
        case std::errc::too_many_symbolic_link_levels:
            return CFileException::badPath;
        case std::errc::too_many_files_open:
        case std::errc::too_many_files_open_in_system:
            return CFileException::tooManyOpenFiles;
        case std::errc::permission_denied:
        case std::errc::operation_not_permitted:
        case std::errc::read_only_file_system:
        case std::errc::is_a_directory:
            return CFileException::accessDenied;
        case std::errc::no_space_on_device:
        case std::errc::file_too_large:
            return CFileException::diskFull;
        case std::errc::io_error:
            return CFileException::hardIO;
        case std::errc::invalid_argument:
        case std::errc::invalid_seek:
            return CFileException::badSeek;
        default:
            return CFileException::genericException;
    }
}

CFileException SystemError(int osError, LPCSTR fileName)
{
    return CFileException(CauseOf(static_cast<std::errc>(osError)), osError, fileName);
}

std::FILE* OpenStream(LPCSTR fileName, UINT openFlags)
{
    const bool create = (openFlags & CFile::modeCreate) != 0;
    const bool keep = (openFlags & CFile::modeNoTruncate) != 0;
    const bool write = (openFlags & (CFile::modeWrite | CFile::modeReadWrite)) != 0;
    if (create && !keep)
    {
        return std::fopen(fileName, "w+b");
    }
    std::FILE* const existing = std::fopen(fileName, write ? "r+b" : "rb");
    return existing == nullptr && create && errno == ENOENT ? std::fopen(fileName, "w+b")
                                                            : existing;
}

}  // namespace

CFileException::CFileException(int cause, LONG osError, LPCSTR fileName)
    : CException(FileMessage(cause, osError, fileName)),
      m_cause(cause),
      m_lOsError(osError),
      m_strFileName(fileName)
{}

void AfxThrowFileException(int cause, LONG osError, LPCSTR fileName)
{
    throw CFileException(cause, osError, fileName);
}

CFile::CFile(LPCSTR fileName, UINT openFlags)
{
    CFileException error;
    if (!CFile::Open(fileName, openFlags, &error))
    {
        throw error;
    }
}

CFile::~CFile()
{
    CFile::Abort();
}

BOOL CFile::Open(LPCSTR fileName, UINT openFlags, CFileException* error)
{
    CFile::Abort();
    errno = 0;
    file_ = OpenStream(fileName, openFlags);
    int osError = errno;
    std::error_code ignored;
    if (file_ != nullptr && std::filesystem::is_directory(fileName, ignored))
    {
        // Some systems open a directory for reading and report the error only when it is read.
        CFile::Abort();
        osError = EISDIR;
    }
    if (file_ == nullptr)
    {
        if (error != nullptr)
        {
            *error = SystemError(osError, fileName);
        }
        return FALSE;
    }
    access_ = openFlags & (modeWrite | modeReadWrite);
    last_ = Operation::None;
    if ((openFlags & (modeWrite | modeReadWrite)) == 0)
    {
        // Readers of records and of 3D Studio files read many small values, and ask for the
        // position or move it in between. A buffer of this class makes these calls cheap. With the
        // stream's own buffer, they are slower, because fread and ftell lock the stream and fseek
        // makes a system call.
        std::setvbuf(file_, nullptr, _IONBF, 0);
        buffer_ = std::make_unique_for_overwrite<char[]>(readBufferSize);
    }
    path_ = std::filesystem::absolute(fileName, ignored).string();
    return TRUE;
}

std::FILE* CFile::RequireOpen() const
{
    if (file_ == nullptr)
    {
        AfxThrowFileException(CFileException::invalidFile);
    }
    return file_;
}

// Returns the open stream, ready for the operation. The C library requires a seek between reading
// and writing the same stream.
std::FILE* CFile::PrepareFor(Operation operation)
{
    RequireOpen();
    const UINT refused = operation == Operation::Read ? modeWrite : modeRead;
    if (access_ == refused)
    {
        AfxThrowFileException(CFileException::accessDenied, -1, path_);
    }
    if (last_ != operation && last_ != Operation::None)
    {
        std::fseek(file_, 0, SEEK_CUR);
    }
    last_ = operation;
    return file_;
}

void CFile::ThrowSystemError() const
{
    throw SystemError(errno, path_);
}

UINT CFile::Read(void* buffer, UINT count)
{
    if (count != 0 && count <= bufferCount_ - bufferAt_)
    {
        std::memcpy(buffer, buffer_.get() + bufferAt_, count);
        bufferAt_ += count;
        return count;
    }
    std::FILE* const file = PrepareFor(Operation::Read);
    if (count == 0)
    {
        return 0;
    }
    return buffer_ != nullptr ? ReadBuffered(file, static_cast<char*>(buffer), count)
                              : static_cast<UINT>(ReadStream(file, buffer, count));
}

std::size_t CFile::ReadStream(std::FILE* file, void* buffer, std::size_t count) const
{
    const std::size_t got = std::fread(buffer, 1, count, file);
    if (got < count && std::ferror(file) != 0)
    {
        ThrowSystemError();
    }
    return got;
}

// Takes the unread bytes of the buffer, then reads the missing bytes from the file. If at least as
// many bytes are missing as the buffer can hold, reads them directly into the caller's memory.
UINT CFile::ReadBuffered(std::FILE* file, char* buffer, UINT count)
{
    UINT got = bufferCount_ - bufferAt_;
    std::memcpy(buffer, buffer_.get() + bufferAt_, got);
    EmptyBuffer(bufferStart_ + bufferCount_);
    if (count - got >= readBufferSize)
    {
        const std::size_t more = ReadStream(file, buffer + got, count - got);
        bufferStart_ += static_cast<std::int64_t>(more);
        return got + static_cast<UINT>(more);
    }
    bufferCount_ = static_cast<UINT>(ReadStream(file, buffer_.get(), readBufferSize));
    bufferAt_ = std::min(count - got, bufferCount_);
    std::memcpy(buffer + got, buffer_.get(), bufferAt_);
    return got + bufferAt_;
}

void CFile::Write(const void* buffer, UINT count)
{
    std::FILE* const file = PrepareFor(Operation::Write);
    if (count > 0 && std::fwrite(buffer, 1, count, file) != count)
    {
        ThrowSystemError();
    }
}

std::int64_t CFile::Seek(std::int64_t offset, UINT from)
{
    std::FILE* const file = RequireOpen();
    if (from > end || offset < std::numeric_limits<long>::min() ||
        offset > std::numeric_limits<long>::max())
    {
        AfxThrowFileException(CFileException::badSeek, -1, path_);
    }
    if (buffer_ != nullptr && from == current)
    {
        // The stream's own position is behind the buffer, so fseek with SEEK_CUR would go wrong.
        const std::int64_t position = static_cast<std::int64_t>(GetPosition());
        if (offset > std::numeric_limits<long>::max() - position)
        {
            AfxThrowFileException(CFileException::badSeek, -1, path_);
        }
        offset += position;
        from = begin;
    }
    if (from == begin && offset >= bufferStart_ && offset - bufferStart_ <= bufferCount_ &&
        buffer_ != nullptr)
    {
        bufferAt_ = static_cast<UINT>(offset - bufferStart_);
        return offset;
    }
    const int origin = from == begin ? SEEK_SET : from == current ? SEEK_CUR : SEEK_END;
    if (std::fseek(file, static_cast<long>(offset), origin) != 0)
    {
        ThrowSystemError();
    }
    last_ = Operation::None;
    const std::int64_t position = StreamPosition();
    EmptyBuffer(position);
    return position;
}

std::int64_t CFile::StreamPosition() const
{
    const long position = std::ftell(RequireOpen());
    if (position < 0)
    {
        ThrowSystemError();
    }
    return position;
}

void CFile::EmptyBuffer(std::int64_t start)
{
    bufferStart_ = start;
    bufferCount_ = bufferAt_ = 0;
}

std::uint64_t CFile::GetLength() const
{
    std::FILE* const file = RequireOpen();
    const long position = std::ftell(file);
    if (position < 0 || std::fseek(file, 0, SEEK_END) != 0)
    {
        ThrowSystemError();
    }
    const long length = std::ftell(file);
    if (std::fseek(file, position, SEEK_SET) != 0 || length < 0)
    {
        ThrowSystemError();
    }
    return static_cast<std::uint64_t>(length);
}

void CFile::SetLength(std::uint64_t length)
{
    PrepareFor(Operation::Write);
    Flush();
    std::error_code error;
    std::filesystem::resize_file(path_.Text(), length, error);
    if (error)
    {
        throw SystemError(error.value(), path_);
    }
    SeekToEnd();
}

void CFile::Flush()
{
    std::FILE* const file = RequireOpen();
    if (last_ == Operation::Write && std::fflush(file) != 0)
    {
        ThrowSystemError();
    }
}

void CFile::Close()
{
    if (file_ == nullptr)
    {
        return;
    }
    const int result = std::fclose(file_);
    const int osError = errno;
    file_ = nullptr;
    buffer_.reset();
    EmptyBuffer(0);
    const CString path = path_;
    path_.Empty();
    if (result != 0)
    {
        throw SystemError(osError, path);
    }
}

void CFile::Abort()
{
    if (file_ != nullptr)
    {
        std::fclose(file_);
        file_ = nullptr;
        buffer_.reset();
        EmptyBuffer(0);
        path_.Empty();
    }
}

CString CFile::GetFilePath() const
{
    return path_;
}
