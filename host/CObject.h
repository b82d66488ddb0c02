// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// CObject, the base of everything that knows its class at run time, and CRuntimeClass, which
/// describes such a class; with the macros that declare and define one.

#include "platform/Export.h"
#include "platform/Types.h"

#include <cstddef>
#include <iosfwd>
#include <string>

class CArchive;
class CObject;

/// Bit of a schema number: records of any version are handed to the class, which decides itself.
constexpr UINT VERSIONABLE_SCHEMA = 0x80000000;

/// Schema of a class that archives refuse.
constexpr UINT NON_SERIALIZABLE_SCHEMA = 0xFFFF;

/// Describes a class at run time. One static object per class; never created otherwise.
struct ORVANE_API CRuntimeClass
{
    LPCSTR m_lpszClassName;
    int m_nObjectSize;                ///< bytes
    UINT m_wSchema;                   ///< with VERSIONABLE_SCHEMA, or NON_SERIALIZABLE_SCHEMA
    CObject* (*m_pfnCreateObject)();  ///< null for a class that cannot be created dynamically
    const CRuntimeClass* m_pBaseClass;
    CRuntimeClass* m_pNextClass;  ///< next in the list of serializable classes

    /// A new object, owned by the caller; null for a class that cannot be created dynamically.
    CObject* CreateObject() const;

    BOOL IsDerivedFrom(const CRuntimeClass* base) const;

    /// The schema number without its versionable bit: the version that the class writes.
    DWORD GetVersion() const { return m_wSchema & ~VERSIONABLE_SCHEMA; }

    /// The serializable class of that name, null when there is none. Case-sensitive.
    static CRuntimeClass* FromName(LPCSTR name);

    /// Writes schema and name as an archive's class record has them.
    void Store(CArchive& archive) const;

    /// Reads such a record; null when no class has the name. \p schema receives the stored schema,
    /// \p name, when given, the name, unless it is too long for a class.
    static CRuntimeClass* Load(CArchive& archive, UINT* schema, std::string* name = nullptr);
};

/// Enters a class into the list that FromName searches, at start-up.
struct ORVANE_API AFX_CLASSINIT
{
    explicit AFX_CLASSINIT(CRuntimeClass* newClass);
};

/// Base of the library's objects. Copying copies nothing: there is no state here.
class ORVANE_API CObject
{
public:
    virtual CRuntimeClass* GetRuntimeClass() const;
    virtual ~CObject() = default;

    /// Stores or loads the object's record; the base has none.
    virtual void Serialize(CArchive& archive);

    virtual void AssertValid() const;

    /// Writes the class name and address, for debugging.
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

// What the three definitions share.
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
