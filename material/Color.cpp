// SPDX-License-Identifier: MIT
#include "material/Color.h"

#include "host/RecordVersion.h"

IMPLEMENT_SERIAL(Color, CObject, VERSIONABLE_SCHEMA | 1)

Color& Color::operator=(const Color& other)
{
    if (body_.IfMade() != nullptr || other.body_.IfMade() != nullptr)
    {
        CopyColors_(other.body_.Read());
    }
    return *this;
}

void Color::CopyColors_(const Body_& other)
{
    Body_& own = body_.Get();
    own.ambient = other.ambient;
    own.diffuse = other.diffuse;
    own.emission = other.emission;
    own.specular = other.specular;
    own.shininess = other.shininess;
}

void Color::Reset()
{
    if (body_.IfMade() != nullptr)
    {
        CopyColors_(Body_());
    }
}

void Color::Serialize(CArchive& archive)
{
    if (archive.IsLoading())
    {
        ReadRecordVersion(archive, RUNTIME_CLASS(Color));
        DeserializeVersion1(archive);
        return;
    }
    WriteRecordVersion(archive, RUNTIME_CLASS(Color));
    Body_ stored = body_.Read();
    SerializeColors_(archive, stored);
}

void Color::DeserializeVersion1(CArchive& archive)
{
    SerializeColors_(archive, body_.Get());
}

// Stores or loads.
void Color::SerializeColors_(CArchive& archive, Body_& body)
{
    for (ColorVector* const color : {&body.ambient, &body.diffuse, &body.emission, &body.specular})
    {
        color->Serialize(archive);
    }
    if (archive.IsStoring())
    {
        archive << body.shininess;
    }
    else
    {
        archive >> body.shininess;
    }
}
