// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// CObject, the base of all classes whose objects know their class at run time; CRuntimeClass,
/// which describes such a class; and the macros that declare and define its description.

#include "platform/Export.h"
#include "platform/Types.h"

#include <cstddef>
#include <iosfwd>
#include <string>

class CArchive;
class CObject;

/// A bit of a schema number. A class with this bit receives records of any version from an archive
/// and decides itself which versions it reads.
constexpr UINT VERSIONABLE_SCHEMA = 0x80000000;

/// The schema number of a class that has no record. Archives refuse its objects.
constexpr UINT NON_SERIALIZABLE_SCHEMA = 0xFFFF;

/// Describes a class at run time. Each class has exactly one object of this type, which is static.
struct ORVANE_API CRuntimeClass
{
    LPCSTR m_lpszClassName;
    int m_nObjectSize;  ///< in bytes
    UINT m_wSchema;     ///< version, usually with VERSIONABLE_SCHEMA; or NON_SERIALIZABLE_SCHEMA
    CObject* (*m_pfnCreateObject)();  ///< null for a class that cannot be created dynamically
    const CRuntimeClass* m_pBaseClass;
    CRuntimeClass* m_pNextClass;  ///< next in the list of serializable classes

    /// Creates an object, owned by the caller. Null for a class that cannot be created dynamically.
    CObject* CreateObject() const;

    /// Whether this class is \p base or derives from it.
    BOOL IsDerivedFrom(const CRuntimeClass* base) const;

    /// The version of the records that the class writes: the schema number without the versionable
    /// bit.
    DWORD GetVersion() const { return m_wSchema & ~VERSIONABLE_SCHEMA; }

    /// The serializable class with this name (case-sensitive); null when no class has the name.
    static CRuntimeClass* FromName(LPCSTR name);

    /// Writes schema number and name, as docs/archive.md describes them.
    void Store(CArchive& archive) const;

    /// Reads schema number and name, and returns the class with that name; null when no class has
    /// the name.
    /// \param schema receives the stored version.
    /// \param name if not null, receives the stored name. It does not change if the stored name is
    /// longer than 255 bytes, which no class name is.
    static CRuntimeClass* Load(CArchive& archive, UINT* schema, std::string* name = nullptr);
};

/// Enters a class into the list that FromName searches. Static objects of this type do so at
/// start-up.
struct ORVANE_API AFX_CLASSINIT
{
    explicit AFX_CLASSINIT(CRuntimeClass* newClass);
};

/// The base class of the library's objects. It has no data.
class ORVANE_API CObject
{
public:
    virtual CRuntimeClass* GetRuntimeClass() const;
    virtual ~CObject() = default;

    /// Stores or loads the object's record. CObject itself has an empty record.
    virtual void Serialize(CArchive& archive);

    /// Does nothing in this class. Derived classes can override it to check their fields.
    virtual void AssertValid() const;

    /// Writes the class's name and the object's address, for debugging.
    virtual void Dump(std::ostream& out) const;

    BOOL IsSerializable() const;
    BOOL IsKindOf(const CRuntimeClass* runtimeClass) const;

    static CRuntimeClass classCObject;

protected:
    CObject() = default;
    CObject(const CObject&) = default;
    CObject& operator=(const CObject&) = default;
};

#define RUNTIME_CLASS(class_name) (&class_name::class##class_name)

#define DECLARE_DYNAMIC(class_name)         \
public:                                     \
    static CRuntimeClass class##class_name; \
    static CRuntimeClass* GetOwnClass()     \
    {                                       \
        return &class##class_name;          \
    }                                       \
    CRuntimeClass* GetRuntimeClass() const override;

#define DECLARE_DYNCREATE(class_name) \
    DECLARE_DYNAMIC(class_name)       \
    static CObject* CreateObject();

#define DECLARE_SERIAL(class_name) \
    DECLARE_DYNCREATE(class_name)  \
    friend ORVANE_API CArchive& operator>>(CArchive& archive, class_name*& object);

// The part that the three IMPLEMENT macros have in common.
#define ORVANE_RUNTIME_CLASS(class_name, base_class_name, schema, create) \
    CRuntimeClass class_name::class##class_name = {                       \
        #class_name, static_cast<int>(sizeof(class_name)), schema,        \
        create,      RUNTIME_CLASS(base_class_name),       nullptr};      \
    CRuntimeClass* class_name::GetRuntimeClass() const                    \
    {                                                                     \
        return RUNTIME_CLASS(class_name);                                 \
    }

#define IMPLEMENT_DYNAMIC(class_name, base_class_name) \
    ORVANE_RUNTIME_CLASS(class_name, base_class_name, NON_SERIALIZABLE_SCHEMA, nullptr)

#define IMPLEMENT_DYNCREATE(class_name, base_class_name)                       \
    CObject* class_name::CreateObject()                                        \
    {                                                                          \
        return new class_name;                                                 \
    }                                                                          \
    ORVANE_RUNTIME_CLASS(class_name, base_class_name, NON_SERIALIZABLE_SCHEMA, \
                         class_name::CreateObject)

#define IMPLEMENT_SERIAL(class_name, base_class_name, schema)                             \
    CObject* class_name::CreateObject()                                                   \
    {                                                                                     \
        return new class_name;                                                            \
    }                                                                                     \
    ORVANE_RUNTIME_CLASS(class_name, base_class_name, schema, class_name::CreateObject)   \
    static const AFX_CLASSINIT init##class_name(RUNTIME_CLASS(class_name));               \
    CArchive& operator>>(CArchive& archive, class_name*& object)                          \
    {                                                                                     \
        object = static_cast<class_name*>(archive.ReadObject(RUNTIME_CLASS(class_name))); \
        return archive;                                                                   \
    }
