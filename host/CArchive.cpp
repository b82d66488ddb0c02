// SPDX-License-Identifier: MIT
#include "host/CArchive.h"

#include "host/CArchiveState.h"
#include "host/CFile.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <utility>

// Values are copied between memory and file without conversion.
static_assert(std::endian::native == std::endian::little, "records are little-endian");

IMPLEMENT_DYNAMIC(CArchiveException, CException)

namespace
{

constexpr std::size_t smallestBuffer = 128;  // in bytes
constexpr std::size_t textChunk = 65536;     // in bytes

std::string CauseText(int cause)
{
    switch (cause)
    {
        case CArchiveException::none:
            return "no error";
        case CArchiveException::readOnly:
            return "a value was stored into an archive that loads";
        case CArchiveException::endOfFile:
            return "the input ends inside a value";
        case CArchiveException::writeOnly:
            return "a value was loaded from an archive that stores";
        case CArchiveException::badIndex:
            return "a reference number belongs to no object or class";
        case CArchiveException::badClass:
            return "an unknown class, or an object of an unexpected class";
        case CArchiveException::badSchema:
            return "the record's version is not known";
        default:
            return "the archive cannot be read or written";
    }
}

}  // namespace

CArchiveException::CArchiveException(int cause, std::string message)
    : CException(message.empty() ? CauseText(cause) : std::move(message)), m_cause(cause)
{}

void AfxThrowArchiveException(int cause, const std::string& message)
{
    throw CArchiveException(cause, message);
}

CArchive::CArchive(CFile* file, UINT mode, int bufferSize) : state_(std::make_unique<State>())
{
    state_->file = file;
    state_->mode = mode;
    state_->buffer.resize(std::max<std::size_t>(std::max(bufferSize, 0), smallestBuffer));
    if (IsStoring())
    {
        writeNext_ = state_->buffer.data();
        writeEnd_ = writeNext_ + state_->buffer.size();
    }
}

CArchive::~CArchive()
{
    if (state_->file != nullptr && (state_->mode & bNoFlushOnDelete) == 0)
    {
        try
        {
            Flush();
        }
        catch (...)
        {
            // A destructor cannot report an error. Programs that need the error call Close.
        }
    }
}

BOOL CArchive::IsStoring() const
{
    return (state_->mode & load) == 0;
}

BOOL CArchive::IsLoading() const
{
    return (state_->mode & load) != 0;
}

CFile* CArchive::GetFile() const
{
    return state_->file;
}

void CArchive::Fail(int cause, const std::string& message) const
{
    std::string place = "archive";
    if (state_->file != nullptr)
    {
        const CString path = state_->file->GetFilePath();
        place = path.IsEmpty() ? place : path.Text();
        if (IsLoading())
        {
            place += ": byte " + std::to_string(state_->file->GetPosition() -
                                                static_cast<std::size_t>(readEnd_ - readNext_));
        }
    }
    AfxThrowArchiveException(cause, place + ": " + message);
}

void CArchive::ObserveVersions(VersionObserver observer)
{
    state_->versionObserver = std::move(observer);
}

void CArchive::NoteVersion(const CRuntimeClass* recordClass, DWORD version) const
{
    if (state_->versionObserver)
    {
        state_->versionObserver(recordClass, version);
    }
}

void CArchive::RequireLoading() const
{
    if (!IsLoading())
    {
        Fail(CArchiveException::writeOnly, CauseText(CArchiveException::writeOnly));
    }
    if (state_->file == nullptr)
    {
        Fail(CArchiveException::generic, "read after it was closed");
    }
}

void CArchive::RequireStoring() const
{
    if (!IsStoring())
    {
        Fail(CArchiveException::readOnly, CauseText(CArchiveException::readOnly));
    }
    if (state_->file == nullptr)
    {
        Fail(CArchiveException::generic, "written after it was closed");
    }
}

// Fills the empty buffer from the file. Returns the number of bytes read, 0 at the end of the file.
UINT CArchive::FillBuffer()
{
    BYTE* const start = state_->buffer.data();
    readNext_ = readEnd_ = start;
    const UINT count = state_->file->Read(start, static_cast<UINT>(state_->buffer.size()));
    readEnd_ = start + count;
    return count;
}

// Writes the buffered bytes to the file. The buffer is empty afterwards even when the file throws,
// so that the destructor does not try the same bytes again.
void CArchive::EmptyBuffer()
{
    BYTE* const start = state_->buffer.data();
    const UINT count = static_cast<UINT>(writeNext_ - start);
    writeNext_ = start;
    if (count > 0)
    {
        state_->file->Write(start, count);
    }
}

UINT CArchive::Read(void* buffer, UINT count)
{
    RequireLoading();
    BYTE* const target = static_cast<BYTE*>(buffer);
    UINT done = 0;
    while (done < count)
    {
        const UINT wanted = count - done;
        const UINT buffered = static_cast<UINT>(readEnd_ - readNext_);
        if (buffered > 0)
        {
            const UINT taken = std::min(wanted, buffered);
            std::memcpy(target + done, readNext_, taken);
            readNext_ += taken;
            done += taken;
        }
        else if (wanted >= state_->buffer.size())
        {
            const UINT taken = state_->file->Read(target + done, wanted);
            if (taken == 0)
            {
                break;
            }
            done += taken;
        }
        else if (FillBuffer() == 0)
        {
            break;
        }
    }
    return done;
}

void CArchive::ReadExactly(void* buffer, UINT count)
{
    const UINT got = Read(buffer, count);
    if (got != count)
    {
        Fail(CArchiveException::endOfFile, "the input ends after " + std::to_string(got) +
                                               " of the " + std::to_string(count) +
                                               " bytes of a value");
    }
}

void CArchive::Skip(DWORD count)
{
    RequireLoading();
    while (count > 0)
    {
        if (readNext_ == readEnd_ && FillBuffer() == 0)
        {
            Fail(CArchiveException::endOfFile,
                 "the input ends " + std::to_string(count) + " bytes before the end of a block");
        }
        const DWORD taken = std::min(count, static_cast<DWORD>(readEnd_ - readNext_));
        readNext_ += taken;
        count -= taken;
    }
}

void CArchive::Write(const void* buffer, UINT count)
{
    RequireStoring();
    if (count > static_cast<std::size_t>(writeEnd_ - writeNext_))
    {
        EmptyBuffer();
        if (count >= state_->buffer.size())
        {
            state_->file->Write(buffer, count);
            return;
        }
    }
    if (count > 0)
    {
        std::memcpy(writeNext_, buffer, count);
        writeNext_ += count;
    }
}

void CArchive::Flush()
{
    if (state_->file == nullptr)
    {
        return;
    }
    if (IsStoring())
    {
        EmptyBuffer();
        state_->file->Flush();
        return;
    }
    const std::int64_t unread = readEnd_ - readNext_;
    readNext_ = readEnd_ = nullptr;
    if (unread > 0)
    {
        state_->file->Seek(-unread, CFile::current);
    }
}

void CArchive::Close()
{
    try
    {
        Flush();
    }
    catch (...)
    {
        Abort();
        throw;
    }
    Abort();
}

void CArchive::Abort()
{
    readNext_ = readEnd_ = nullptr;
    writeNext_ = writeEnd_ = nullptr;
    state_->file = nullptr;
}

CArchive& CArchive::operator<<(const CString& text)
{
    const std::string& bytes = text.Text();
    const DWORD length = static_cast<DWORD>(bytes.size());
    if (length < 0xFF)
    {
        *this << static_cast<BYTE>(length);
    }
    else if (length < 0xFFFE)
    {
        *this << BYTE{0xFF} << static_cast<WORD>(length);
    }
    else
    {
        *this << BYTE{0xFF} << WORD{0xFFFF} << length;
    }
    Write(bytes.data(), length);
    return *this;
}

CArchive& CArchive::operator>>(CString& text)
{
    BYTE shortLength;
    *this >> shortLength;
    DWORD length = shortLength;
    if (shortLength == 0xFF)
    {
        WORD middleLength;
        *this >> middleLength;
        length = middleLength;
        if (middleLength == 0xFFFE)
        {
            Fail(CArchiveException::generic,
                 "found a text of 16-bit characters, expected 8-bit characters");
        }
        if (middleLength == 0xFFFF)
        {
            *this >> length;
        }
    }
    // The text is read in chunks, so that a wrong length in the input cannot allocate much more
    // memory than the input has bytes.
    std::string bytes;
    while (bytes.size() < length)
    {
        const std::size_t done = bytes.size();
        const std::size_t chunk = std::min<std::size_t>(length - done, textChunk);
        if (done + chunk > static_cast<std::size_t>(std::numeric_limits<int>::max()))
        {
            Fail(CArchiveException::generic,
                 "a text has " + std::to_string(length) + " bytes, expected at most 2147483647");
        }
        bytes.resize(done + chunk);
        ReadExactly(bytes.data() + done, static_cast<UINT>(chunk));
    }
    text = CString(std::move(bytes));
    return *this;
}

void CArchive::WriteString(LPCSTR text)
{
    Write(text, static_cast<UINT>(std::strlen(text)));
}

void CArchive::WriteCount(DWORD count)
{
    if (count < 0xFFFF)
    {
        *this << static_cast<WORD>(count);
        return;
    }
    *this << WORD{0xFFFF} << count;
}

DWORD CArchive::ReadCount()
{
    WORD shortCount;
    *this >> shortCount;
    DWORD count = shortCount;
    if (shortCount == 0xFFFF)
    {
        *this >> count;
    }
    return count;
}
