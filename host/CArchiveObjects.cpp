// SPDX-License-Identifier: MIT
#include "host/CArchive.h"
#include "host/CArchiveState.h"
#include "platform/Limits.h"

#include <memory>
#include <string>
#include <utility>

// CArchive: references to classes and objects, as docs/archive.md describes them.

namespace
{

// The marks that a reference begins with.
constexpr WORD nullMark = 0;
constexpr WORD newClassMark = 0xFFFF;
constexpr WORD classBit = 0x8000;  // set in the number of a class, clear in the number of an object
constexpr WORD longNumberMark = 0x7FFF;  // a number of 32 bits follows
constexpr DWORD longClassBit = 0x80000000;
constexpr DWORD largestNumber = 0x3FFFFFFE;

// Adds 1 to a nesting depth while an object of this class exists.
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

void CArchive::WriteNumber(DWORD index, bool isClass)
{
    if (index < longNumberMark)
    {
        *this << static_cast<WORD>(index | (isClass ? classBit : 0));
        return;
    }
    *this << longNumberMark << (index | (isClass ? longClassBit : 0));
}

// The number that the next class or object gets.
DWORD CArchive::NextNumber() const
{
    const std::size_t next = IsStoring() ? state_->nextStored : state_->loaded.size();
    if (next > largestNumber)
    {
        Fail(CArchiveException::badIndex,
             "the archive has more than " + std::to_string(largestNumber) + " classes and objects");
    }
    return static_cast<DWORD>(next);
}

// Gives the next number to a class or an object that is being stored.
void CArchive::AssignNumber(const void* classOrObject)
{
    state_->stored[classOrObject] = NextNumber();
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
        WriteNumber(known->second, false);
        return;
    }
    const NestingLevel level(state_->depth);
    if (state_->depth > orvane::limits::maxObjectNesting)
    {
        Fail(
            CArchiveException::generic,
            "objects nest more than " + std::to_string(orvane::limits::maxObjectNesting) + " deep");
    }
    WriteClass(object->GetRuntimeClass());
    AssignNumber(object);
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
            Fail(CArchiveException::badIndex,
                 "reference number " + std::to_string(index) + " belongs to no object");
        }
        CObject* const known = loaded[index].object;
        if (known != nullptr && requested != nullptr && !known->IsKindOf(requested))
        {
            Fail(CArchiveException::badClass, std::string("found an object of class ") +
                                                  known->GetRuntimeClass()->m_lpszClassName +
                                                  ", expected class " + requested->m_lpszClassName);
        }
        return known;
    }

    const NestingLevel level(state_->depth);
    if (state_->depth > orvane::limits::maxObjectNesting)
    {
        Fail(
            CArchiveException::generic,
            "objects nest more than " + std::to_string(orvane::limits::maxObjectNesting) + " deep");
    }
    std::unique_ptr<CObject> object(runtimeClass->CreateObject());
    if (object == nullptr)
    {
        Fail(CArchiveException::badClass, std::string("objects of class ") +
                                              runtimeClass->m_lpszClassName + " cannot be created");
    }
    const DWORD ownIndex = NextNumber();
    loaded.push_back({nullptr, 0, object.get()});
    const UINT outerSchema = std::exchange(state_->objectSchema, schema);
    try
    {
        object->Serialize(*this);
    }
    catch (...)
    {
        // The object is deleted with everything that it owns. The numbers of these objects are
        // dropped, so that no later reference leads to a deleted object.
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
        Fail(CArchiveException::badClass, object == nullptr
                                              ? "found a null reference, expected an object"
                                              : "found a reference to an object that already has "
                                                "an owner, expected a new object");
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
        WriteNumber(known->second, true);
        return;
    }
    *this << newClassMark;
    runtimeClass->Store(*this);
    AssignNumber(runtimeClass);
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
            Fail(CArchiveException::badClass, name.empty()
                                                  ? "the name of a class is empty or too long"
                                                  : "class " + name + " is not known");
        }
        if (entry.schema != static_cast<WORD>(entry.runtimeClass->m_wSchema) &&
            (entry.runtimeClass->m_wSchema & VERSIONABLE_SCHEMA) == 0)
        {
            Fail(CArchiveException::badSchema,
                 std::string("class ") + entry.runtimeClass->m_lpszClassName + " has version " +
                     std::to_string(entry.schema) + ", expected " +
                     std::to_string(entry.runtimeClass->GetVersion()));
        }
        NextNumber();
        state_->loaded.push_back(entry);
    }
    else
    {
        DWORD index = mark & ~classBit;
        bool isClass = (mark & classBit) != 0;
        if (mark == longNumberMark)
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
            Fail(CArchiveException::badIndex,
                 "reference number " + std::to_string(index) + " belongs to no class");
        }
        entry = state_->loaded[index];
    }
    if (requested != nullptr && !entry.runtimeClass->IsDerivedFrom(requested))
    {
        Fail(CArchiveException::badClass, std::string("found class ") +
                                              entry.runtimeClass->m_lpszClassName + ", expected " +
                                              requested->m_lpszClassName);
    }
    (schema != nullptr ? *schema : state_->objectSchema) = entry.schema;
    return entry.runtimeClass;
}

void CArchive::MapObject(const CObject* object)
{
    if (object == nullptr)
    {
        return;
    }
    if (IsStoring())
    {
        AssignNumber(object);
        return;
    }
    NextNumber();
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
