// SPDX-License-Identifier: MIT
#include "host/CFile.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>
#include <stdexcept>

IMPLEMENT_DYNAMIC(CMemFile, CFile)

CMemFile::CMemFile(UINT growBytes)
{
    bytes_.reserve(growBytes);
}

CMemFile::CMemFile(const BYTE* bytes, UINT count, UINT growBytes)
{
    bytes_.reserve(std::size_t{count} + growBytes);
    bytes_.insert(bytes_.end(), bytes, bytes + count);
}

BOOL CMemFile::Open(LPCSTR fileName, UINT, CFileException* error)
{
    if (error != nullptr)
    {
        *error = CFileException(CFileException::genericException, -1, fileName);
    }
    return FALSE;
}

UINT CMemFile::Read(void* buffer, UINT count)
{
    const std::size_t left = position_ < bytes_.size() ? bytes_.size() - position_ : 0;
    const UINT got = static_cast<UINT>(std::min<std::size_t>(count, left));
    if (got > 0)
    {
        std::memcpy(buffer, bytes_.data() + position_, got);
        position_ += got;
    }
    return got;
}

void CMemFile::Write(const void* buffer, UINT count)
{
    if (count == 0)
    {
        return;
    }
    if (bytes_.size() < position_ + count)
    {
        const std::size_t position = position_;
        SetLength(position + count);
        position_ = position;
    }
    std::memcpy(bytes_.data() + position_, buffer, count);
    position_ += count;
}

std::int64_t CMemFile::Seek(std::int64_t offset, UINT from)
{
    const std::int64_t origin = from == begin     ? 0
                                : from == current ? static_cast<std::int64_t>(position_)
                                                  : static_cast<std::int64_t>(bytes_.size());
    if (from > end || offset < -origin ||
        offset > std::numeric_limits<std::int64_t>::max() - origin)
    {
        AfxThrowFileException(CFileException::badSeek);
    }
    position_ = static_cast<std::size_t>(origin + offset);
    return origin + offset;
}

std::uint64_t CMemFile::GetPosition() const
{
    return position_;
}

std::uint64_t CMemFile::GetLength() const
{
    return bytes_.size();
}

void CMemFile::SetLength(std::uint64_t length)
{
    try
    {
        bytes_.resize(length);
    }
    catch (const std::length_error&)
    {
        AfxThrowFileException(CFileException::diskFull);
    }
    catch (const std::bad_alloc&)
    {
        AfxThrowFileException(CFileException::diskFull);
    }
    position_ = bytes_.size();
}

void CMemFile::Flush() {}

void CMemFile::Close()
{
    bytes_.clear();
    position_ = 0;
}

void CMemFile::Abort()
{
    CMemFile::Close();
}

CString CMemFile::GetFilePath() const
{
    return CString();
}
