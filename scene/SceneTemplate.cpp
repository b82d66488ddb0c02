// SPDX-License-Identifier: MIT
#include "scene/SceneTemplate.h"

#include "host/CWinApp.h"
#include "host/RecordVersion.h"
#include "imaging/MemoryMappedDIB.h"
#include "platform/MultibyteCompare.h"

#include <utility>

IMPLEMENT_SERIAL(SceneTemplate, CObject, VERSIONABLE_SCHEMA | 2)

SceneTemplate::SceneTemplate(const CString& newFilename)
{
    Load(newFilename);
}

SceneTemplate::SceneTemplate(const SceneTemplate& other)
    : CObject(other), templateTag(other.templateTag), filename(other.filename), name(other.name)
{}

SceneTemplate& SceneTemplate::operator=(const SceneTemplate& other)
{
    if (this != &other)
    {
        filename = other.filename;
        templateTag = other.templateTag;
        name = other.name;
        delete std::exchange(preview, nullptr);
    }
    return *this;
}

SceneTemplate::~SceneTemplate()
{
    delete preview;
}

int SceneTemplate::Load(const CString& newFilename)
{
    filename = newFilename;
    return 1;
}

int SceneTemplate::Save(const CString& section) const
{
    constexpr UINT filenameEntry = 21001;
    CString profileSection;
    profileSection.Format("%s\\%s", static_cast<LPCSTR>(section), static_cast<LPCSTR>(name));
    CString entry;
    entry.LoadString(filenameEntry);
    AfxGetApp()->WriteProfileString(profileSection, entry, filename);
    return 1;
}

int SceneTemplate::CompareNameWith(const SceneTemplate& other) const
{
    return CompareMultibyte(name, other.name);
}

void SceneTemplate::Serialize(CArchive& archive)
{
    CObject::Serialize(archive);
    if (archive.IsStoring())
    {
        WriteRecordVersion(archive, RUNTIME_CLASS(SceneTemplate));
        archive << filename << templateTag << name;
        return;
    }
    // Only version 1 is accepted, so a record that the code above wrote is refused. This is
    // required; see the test ItsOwnRecordCannotBeReadBack. Applications keep templates in the
    // profile instead.
    constexpr DWORD newestRead = 1;
    ReadRecordVersion(archive, RUNTIME_CLASS(SceneTemplate), newestRead);
    DeserializeVersion1(archive);
}

void SceneTemplate::DeserializeVersion1(CArchive& archive)
{
    archive >> filename >> templateTag >> name;
}
