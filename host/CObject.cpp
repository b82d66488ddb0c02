// SPDX-License-Identifier: MIT
#include "host/CObject.h"

#include "host/CArchive.h"
#include "platform/Limits.h"

#include <cstring>
#include <ostream>
#include <string>

namespace
{

// The first class in the list of serializable classes, which m_pNextClass links. The pointer is
// initialized at compile time, because static objects of any source enter classes into the list at
// start-up.
CRuntimeClass* firstClass = nullptr;

}  // namespace

CRuntimeClass CObject::classCObject = {
    "CObject", static_cast<int>(sizeof(CObject)), NON_SERIALIZABLE_SCHEMA, nullptr, nullptr,
    nullptr};

AFX_CLASSINIT::AFX_CLASSINIT(CRuntimeClass* newClass)
{
    newClass->m_pNextClass = firstClass;
    firstClass = newClass;
}

CObject* CRuntimeClass::CreateObject() const
{
    return m_pfnCreateObject == nullptr ? nullptr : m_pfnCreateObject();
}

BOOL CRuntimeClass::IsDerivedFrom(const CRuntimeClass* base) const
{
    const CRuntimeClass* ancestor = this;
    while (ancestor != nullptr && ancestor != base)
    {
        ancestor = ancestor->m_pBaseClass;
    }
    return ancestor != nullptr;
}

CRuntimeClass* CRuntimeClass::FromName(LPCSTR name)
{
    CRuntimeClass* candidate = firstClass;
    while (candidate != nullptr && std::strcmp(candidate->m_lpszClassName, name) != 0)
    {
        candidate = candidate->m_pNextClass;
    }
    return candidate;
}

void CRuntimeClass::Store(CArchive& archive) const
{
    const std::size_t length = std::strlen(m_lpszClassName);
    if (length > orvane::limits::maxClassNameBytes)
    {
        archive.Fail(CArchiveException::badClass,
                     std::string(m_lpszClassName) + ": the class name has more than " +
                         std::to_string(orvane::limits::maxClassNameBytes) + " bytes");
    }
    archive << static_cast<WORD>(m_wSchema) << static_cast<WORD>(length);
    archive.Write(m_lpszClassName, static_cast<UINT>(length));
}

CRuntimeClass* CRuntimeClass::Load(CArchive& archive, UINT* schema, std::string* name)
{
    WORD storedSchema;
    WORD length;
    archive >> storedSchema >> length;
    if (length > orvane::limits::maxClassNameBytes)
    {
        return nullptr;
    }
    char storedName[orvane::limits::maxClassNameBytes + 1] = {};
    archive.ReadExactly(storedName, length);
    *schema = storedSchema;
    if (name != nullptr)
    {
        name->assign(storedName, length);
    }
    // A stored name that contains a zero byte must not find the class whose name ends at that zero.
    return std::strlen(storedName) == length ? FromName(storedName) : nullptr;
}

CRuntimeClass* CObject::GetRuntimeClass() const
{
    return RUNTIME_CLASS(CObject);
}

void CObject::Serialize(CArchive&) {}

void CObject::AssertValid() const {}

void CObject::Dump(std::ostream& out) const
{
    out << "a " << GetRuntimeClass()->m_lpszClassName << " at " << static_cast<const void*>(this)
        << "\n";
}

BOOL CObject::IsSerializable() const
{
    return GetRuntimeClass()->m_wSchema != NON_SERIALIZABLE_SCHEMA;
}

BOOL CObject::IsKindOf(const CRuntimeClass* runtimeClass) const
{
    return GetRuntimeClass()->IsDerivedFrom(runtimeClass);
}
