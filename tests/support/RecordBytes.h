// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Archive records in tests: literal bytes built field by field, and objects stored to and loaded
/// from bytes.

#include "host/CArchive.h"
#include "host/CFile.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

using Bytes = std::vector<BYTE>;

/// The bytes as the content of a file.
inline std::string AsText(const Bytes& bytes)
{
    return {bytes.begin(), bytes.end()};
}

/// Builds the little-endian bytes that a record must have.
class RecordBytes
{
public:
    RecordBytes& Byte(BYTE value) { return Raw(&value, sizeof value); }
    RecordBytes& Word(WORD value) { return Raw(&value, sizeof value); }
    RecordBytes& Dword(DWORD value) { return Raw(&value, sizeof value); }
    RecordBytes& Long(LONG value) { return Raw(&value, sizeof value); }
    RecordBytes& Float(float value) { return Raw(&value, sizeof value); }
    RecordBytes& Double(double value) { return Raw(&value, sizeof value); }
    RecordBytes& Floats(std::initializer_list<float> values)
    {
        for (const float value : values)
        {
            Float(value);
        }
        return *this;
    }
    RecordBytes& Doubles(std::initializer_list<double> values)
    {
        for (const double value : values)
        {
            Double(value);
        }
        return *this;
    }
    /// A text shorter than 255 characters: its length in a byte, then the characters.
    RecordBytes& String(const char* text)
    {
        Byte(static_cast<BYTE>(std::strlen(text)));
        return Raw(text, std::strlen(text));
    }
    /// The first object of a class: the new-class mark, the schema, the class name. Its record
    /// follows.
    RecordBytes& NewClass(const char* name, WORD schema)
    {
        Word(0xFFFF).Word(schema).Word(static_cast<WORD>(std::strlen(name)));
        return Raw(name, std::strlen(name));
    }
    RecordBytes& Append(const RecordBytes& other)
    {
        return Raw(other.bytes_.data(), other.bytes_.size());
    }
    RecordBytes& Raw(const void* data, std::size_t count)
    {
        // Not insert(): GCC 12 warns of an overflow where it inlines that.
        const std::size_t at = bytes_.size();
        bytes_.resize(at + count);
        std::copy_n(static_cast<const BYTE*>(data), count, bytes_.begin() + at);
        return *this;
    }

    operator const Bytes&() const { return bytes_; }
    const Bytes& Get() const { return bytes_; }

private:
    Bytes bytes_;
};

/// The record that the object's Serialize writes.
template <typename Object>
Bytes Stored(Object& object)
{
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    object.Serialize(archive);
    archive.Close();
    return file.Bytes();
}

/// Lets the object load a record. Throws what Serialize throws.
template <typename Object>
void LoadRecord(Object& object, const Bytes& bytes)
{
    CMemFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    CArchive archive(&file, CArchive::load);
    object.Serialize(archive);
}

/// The cause of the CArchiveException that loading the record throws; CArchiveException::none when
/// it throws none.
template <typename Object>
int LoadCause(Object& object, const Bytes& bytes)
{
    try
    {
        LoadRecord(object, bytes);
    }
    catch (const CArchiveException& exception)
    {
        return exception.m_cause;
    }
    return CArchiveException::none;
}
