// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The bytes of the records of views, lights and scenes, field by field, for values as they are in
/// a new object.

#include "tests/support/NodeRecords.h"

#include <cmath>

inline RecordBytes TranslationRecord(double x, double y, double z)
{
    const std::initializer_list<double> identity = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    return RecordBytes()
        .Dword(1)
        .Doubles({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, y, z, 1})  // composite
        .Doubles(identity)
        .Doubles(identity)
        .Doubles({1, 1, 1})
        .Doubles({x, y, z});
}

inline RecordBytes ProjectionDataRecord(double fieldOfView = 40)
{
    return RecordBytes()
        .Dword(4)
        .Doubles({fieldOfView, 1, 40, -1})
        .Dword(1)
        .Doubles({1, 1})
        .Doubles({5, 5});
}

inline RecordBytes NamedViewRecord(const char* name, double fieldOfView = 40)
{
    return RecordBytes()
        .Dword(2)
        .String(name)
        .Append(CoordinateTransformRecord())
        .Append(ProjectionDataRecord(fieldOfView));
}

/// A list of saved views with those names, where the archive has given no index yet before.
inline RecordBytes NamedViewListRecord(std::initializer_list<const char*> names)
{
    RecordBytes record;
    record.Word(static_cast<WORD>(names.size()));
    bool first = true;
    for (const char* const name : names)
    {
        if (first)
        {
            record.NewClass("NamedView", 2);
        }
        else
        {
            record.Word(0x8001);
        }
        record.Append(NamedViewRecord(name));
        first = false;
    }
    return record;
}

/// The node record of a new ViewObject.
inline NodeRecord ViewNodeRecord()
{
    NodeRecord record;
    record.transform = TranslationRecord(0, 0, -5);
    return record;
}

/// The bounds of a light whose transform is the identity.
inline RecordBytes LightBoundsRecord()
{
    const float m = -0.2f;
    const float M = 0.2f;
    const float far = 0.95f;
    RecordBytes part;
    part.Floats({m, m, 0}).Floats({m, M, 0}).Floats({m, M, far}).Floats({m, m, far});
    part.Floats({M, m, 0}).Floats({M, M, 0}).Floats({M, M, far}).Floats({M, m, far});
    part.Floats({M, M, far}).Floats({m, m, 0});
    // The sphere on the box's diagonal.
    const float half = far * 0.5f;
    const float radius =
        static_cast<float>(std::sqrt(double{M} * M + double{M} * M + double{half} * half));
    part.Dword(1).Floats({0, 0, half}).Float(radius * 2).Dword(1).Float(radius);
    return RecordBytes().Dword(1).Dword(1).Append(part).Append(part);
}

/// The node record of a new LightObject.
inline NodeRecord LightNodeRecord()
{
    NodeRecord record;
    record.bounds = LightBoundsRecord();
    record.flags = 0x200;  // Editable
    record.scaledDimensions = RecordBytes().Doubles({1, 1, 1});
    record.unscaledDimensions = RecordBytes().Doubles({1, 1, 1});
    return record;
}

inline RecordBytes LightColorsRecord(const char* name = "Default Light")
{
    return RecordBytes()
        .Dword(1)
        .Floats({0, 0, 0, 1})
        .Floats({0.6f, 0.6f, 0.6f, 1})
        .Floats({0, 0, 0, 1})
        .Floats({0.9f, 0.9f, 0.9f, 1})
        .Float(64)
        .Dword(1)
        .Dword(0)
        .String(name);
}

inline RecordBytes LightRecord(DWORD lightFlags = 2, DWORD number = 0x4000)
{
    return RecordBytes()
        .Append(LightNodeRecord().Get())
        .Dword(1)
        .Append(LightColorsRecord())
        .Dword(lightFlags)
        .Dword(number)
        .Double(180)
        .Double(128);
}

/// A list of lights that has one, where the archive has given no index yet before.
inline RecordBytes OneLightRecord(DWORD lightFlags = 2, DWORD number = 0x4000)
{
    return RecordBytes().Word(1).NewClass("LightObject", 1).Append(LightRecord(lightFlags, number));
}

/// The fields of a scene record that every version begins with: white, the flags, ambient 0.2.
inline RecordBytes SceneColorsRecord(DWORD sceneFlags = 4)
{
    return RecordBytes().Floats({1, 1, 1, 1}).Dword(sceneFlags).Floats({0.2f, 0.2f, 0.2f, 1});
}
