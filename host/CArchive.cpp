// SPDX-License-Identifier: MIT
#include "host/CArchive.h"

#include "host/CFile.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <unordered_map>
#include <utility>
#include <vector>

// Values go between memory and file as they are.
static_assert(std::endian::native == std::endian::little, "records are little-endian");

IMPLEMENT_DYNAMIC(CArchiveException, CException)

namespace
{

// Marks in front of an object or a class; see docs/archive.md.
constexpr WORD nullMark = 0;
constexpr WORD newClassMark = 0xFFFF;
constexpr WORD classBit = 0x8000;
constexpr WORD longIndexMark = 0x7FFF;
constexpr DWORD longClassBit = 0x80000000;
constexpr DWORD largestIndex = 0x3FFFFFFE;

// Objects inside objects. Each level takes a few stack frames of its classes' readers, some
// kilobytes at worst; scenes stay far below, and so does the smallest usual stack.
constexpr int deepestNesting = 512;

constexpr std::size_t smallestBuffer = 128;
constexpr std::size_t chunkSize = 65536;

std::string CauseText(int cause)
{
    switch (cause)
    {
        case CArchiveException::none:
            return "no error";
        case CArchiveException::readOnly:
            return "stored into an archive that loads";
        case CArchiveException::endOfFile:
            return "the input ends inside a value";
        case CArchiveException::writeOnly:
            return "loaded from an archive that stores";
        case CArchiveException::badIndex:
            return "an index that no object or class has";
        case CArchiveException::badClass:
            return "an unknown class, or an object of an unexpected one";
        case CArchiveException::badSchema:
            return "a record version that is not known";
        default:
            return "the archive cannot be read or written";
    }
}

// Counts a level of nesting for as long as it lives.
class NestingLevel
{
public:
    explicit NestingLevel(int& depth) : depth_(depth) { ++depth_; }
    ~NestingLevel() { --depth_; }
    NestingLevel(const NestingLevel&) = delete;
    NestingLevel& operator=(const NestingLevel&) = delete;

private:
    int& depth_;
};

}  // namespace

CArchiveException::CArchiveException(int cause, std::string message)
    : CException(message.empty() ? CauseText(cause) : std::move(message)), m_cause(cause)
{}

void AfxThrowArchiveException(int cause, const std::string& message)
{
    throw CArchiveException(cause, message);
}

struct CArchive::State
{
    // What an index stands for on loading: a class with its stored schema, or an object.
    struct Entry
    {
        CRuntimeClass* runtimeClass;
        UINT schema;
        CObject* object;
    };

    CFile* file;
    UINT mode;
    std::vector<BYTE> buffer;
    std::unordered_map<const void*, DWORD> stored;  // classes and objects to their indices
    DWORD nextStored = 1;
    std::vector<Entry> loaded{Entry{nullptr, 0, nullptr}};  // by index; 0 is null
    UINT objectSchema = static_cast<UINT>(-1);
    int depth = 0;
    VersionObserver versionObserver;
};

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
            // A destructor has nobody to tell. Close reports what could not be written.
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

// Reads into the empty buffer. Returns the number of bytes, 0 at the end of the file.
UINT CArchive::Fill()
{
    BYTE* const start = state_->buffer.data();
    readNext_ = readEnd_ = start;
    const UINT count = state_->file->Read(start, static_cast<UINT>(state_->buffer.size()));
    readEnd_ = start + count;
    return count;
}

// Writes the buffer out. It is empty afterwards also when that throws: bytes that were refused are
// not tried again.
void CArchive::Drain()
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
        else if (Fill() == 0)
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
        if (readNext_ == readEnd_ && Fill() == 0)
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
        Drain();
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
        Drain();
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
            Fail(CArchiveException::generic, "a text of 16-bit characters, which are not read");
        }
        if (middleLength == 0xFFFF)
        {
            *this >> length;
        }
    }
    // In chunks: no more memory is taken than bytes are there.
    std::string bytes;
    while (bytes.size() < length)
    {
        const std::size_t done = bytes.size();
        const std::size_t chunk = std::min<std::size_t>(length - done, chunkSize);
        if (done + chunk > static_cast<std::size_t>(std::numeric_limits<int>::max()))
        {
            Fail(CArchiveException::generic,
                 "a text of " + std::to_string(length) + " bytes, more than one can hold");
        }
        bytes.resize(done + chunk);
        ReadExactly(bytes.data() + done, static_cast<UINT>(chunk));
    }
    text = CString(std::move(bytes));
    return *this;
}

CArchive& CArchive::operator<<(const CObject* object)
{
    WriteObject(object);
    return *this;
}

CArchive& CArchive::operator>>(CObject*& object)
{
    object = ReadObject(nullptr);
    return *this;
}

void CArchive::WriteIndex(DWORD index, bool isClass)
{
    if (index < longIndexMark)
    {
        *this << static_cast<WORD>(index | (isClass ? classBit : 0));
        return;
    }
    *this << longIndexMark << (index | (isClass ? longClassBit : 0));
}

// The index that the next class or object takes.
DWORD CArchive::NextIndex() const
{
    const std::size_t next = IsStoring() ? state_->nextStored : state_->loaded.size();
    if (next > largestIndex)
    {
        Fail(CArchiveException::badIndex, "more objects than an archive can number");
    }
    return static_cast<DWORD>(next);
}

// Gives a class or an object that is being stored the next index.
void CArchive::Number(const void* classOrObject)
{
    state_->stored[classOrObject] = NextIndex();
    ++state_->nextStored;
}

void CArchive::WriteObject(const CObject* object)
{
    RequireStoring();
    if (object == nullptr)
    {
        *this << nullMark;
        return;
    }
    const auto known = state_->stored.find(object);
    if (known != state_->stored.end())
    {
        WriteIndex(known->second, false);
        return;
    }
    // The same limit as on loading, so that nothing is stored that cannot be loaded.
    const NestingLevel level(state_->depth);
    if (state_->depth > deepestNesting)
    {
        Fail(CArchiveException::generic, "objects nest too deep");
    }
    WriteClass(object->GetRuntimeClass());
    Number(object);
    const_cast<CObject*>(object)->Serialize(*this);
}

CObject* CArchive::ReadObject(const CRuntimeClass* requested)
{
    UINT schema = 0;
    DWORD index = 0;
    CRuntimeClass* const runtimeClass = ReadClass(requested, &schema, &index);
    std::vector<State::Entry>& loaded = state_->loaded;
    if (runtimeClass == nullptr)
    {
        if (index >= loaded.size() || loaded[index].runtimeClass != nullptr)
        {
            Fail(CArchiveException::badIndex, "index " + std::to_string(index) + " is no object's");
        }
        CObject* const known = loaded[index].object;
        if (known != nullptr && requested != nullptr && !known->IsKindOf(requested))
        {
            Fail(CArchiveException::badClass,
                 std::string("an object of class ") + known->GetRuntimeClass()->m_lpszClassName +
                     " where one of class " + requested->m_lpszClassName + " is expected");
        }
        return known;
    }

    const NestingLevel level(state_->depth);
    if (state_->depth > deepestNesting)
    {
        Fail(CArchiveException::generic, "objects nest too deep");
    }
    std::unique_ptr<CObject> object(runtimeClass->CreateObject());
    if (object == nullptr)
    {
        Fail(CArchiveException::badClass, std::string("objects of class ") +
                                              runtimeClass->m_lpszClassName + " cannot be created");
    }
    const DWORD ownIndex = NextIndex();
    loaded.push_back({nullptr, 0, object.get()});
    const UINT outerSchema = std::exchange(state_->objectSchema, schema);
    try
    {
        object->Serialize(*this);
    }
    catch (...)
    {
        // The object goes, and with it what it owns: no index may lead there any more.
        loaded.erase(loaded.begin() + ownIndex, loaded.end());
        state_->objectSchema = outerSchema;
        throw;
    }
    state_->objectSchema = outerSchema;
    return object.release();
}

CObject* CArchive::ReadNewObject(const CRuntimeClass* requested)
{
    const DWORD known = GetLoadedCount();
    CObject* const object = ReadObject(requested);
    if (object == nullptr || GetLoadedCount() == known)
    {
        Fail(CArchiveException::badClass,
             object == nullptr ? "a null reference where an object is expected"
                               : "a reference to an object that has an owner already");
    }
    return object;
}

DWORD CArchive::GetLoadedCount() const
{
    return static_cast<DWORD>(state_->loaded.size() - 1);
}

void CArchive::ForgetObjects(DWORD count)
{
    for (std::size_t index = std::size_t{count} + 1; index < state_->loaded.size(); ++index)
    {
        state_->loaded[index].object = nullptr;
    }
}

void CArchive::WriteClass(const CRuntimeClass* runtimeClass)
{
    RequireStoring();
    if (runtimeClass->m_wSchema == NON_SERIALIZABLE_SCHEMA)
    {
        Fail(CArchiveException::badClass,
             std::string("class ") + runtimeClass->m_lpszClassName + " has no record");
    }
    const auto known = state_->stored.find(runtimeClass);
    if (known != state_->stored.end())
    {
        WriteIndex(known->second, true);
        return;
    }
    *this << newClassMark;
    runtimeClass->Store(*this);
    Number(runtimeClass);
}

CRuntimeClass* CArchive::ReadClass(const CRuntimeClass* requested, UINT* schema, DWORD* objectIndex)
{
    WORD mark;
    *this >> mark;
    State::Entry entry{nullptr, 0, nullptr};
    if (mark == newClassMark)
    {
        std::string name;
        entry.runtimeClass = CRuntimeClass::Load(*this, &entry.schema, &name);
        if (entry.runtimeClass == nullptr)
        {
            Fail(CArchiveException::badClass,
                 name.empty() ? "a class without a usable name" : "no class " + name + " is known");
        }
        if (entry.schema != static_cast<WORD>(entry.runtimeClass->m_wSchema) &&
            (entry.runtimeClass->m_wSchema & VERSIONABLE_SCHEMA) == 0)
        {
            Fail(CArchiveException::badSchema,
                 std::string("class ") + entry.runtimeClass->m_lpszClassName + " has version " +
                     std::to_string(entry.schema) + " where " +
                     std::to_string(entry.runtimeClass->GetVersion()) + " is known");
        }
        NextIndex();
        state_->loaded.push_back(entry);
    }
    else
    {
        DWORD index = mark & ~classBit;
        bool isClass = (mark & classBit) != 0;
        if (mark == longIndexMark)
        {
            *this >> index;
            isClass = (index & longClassBit) != 0;
            index &= ~longClassBit;
        }
        if (!isClass && objectIndex != nullptr)
        {
            *objectIndex = index;
            return nullptr;
        }
        if (!isClass || index >= state_->loaded.size() ||
            state_->loaded[index].runtimeClass == nullptr)
        {
            Fail(CArchiveException::badIndex, "index " + std::to_string(index) + " is no class's");
        }
        entry = state_->loaded[index];
    }
    if (requested != nullptr && !entry.runtimeClass->IsDerivedFrom(requested))
    {
        Fail(CArchiveException::badClass, std::string("class ") +
                                              entry.runtimeClass->m_lpszClassName + " where " +
                                              requested->m_lpszClassName + " is expected");
    }
    (schema != nullptr ? *schema : state_->objectSchema) = entry.schema;
    return entry.runtimeClass;
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

void CArchive::MapObject(const CObject* object)
{
    if (object == nullptr)
    {
        return;
    }
    if (IsStoring())
    {
        Number(object);
        return;
    }
    NextIndex();
    state_->loaded.push_back({nullptr, 0, const_cast<CObject*>(object)});
}

UINT CArchive::GetObjectSchema()
{
    return std::exchange(state_->objectSchema, static_cast<UINT>(-1));
}

void CArchive::SetObjectSchema(UINT schema)
{
    state_->objectSchema = schema;
}
