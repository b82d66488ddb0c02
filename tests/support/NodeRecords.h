// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The bytes of records that nodes are made of, field by field, for values as they are in a new
/// object.

#include "tests/support/RecordBytes.h"

inline RecordBytes SphereRecord()
{
    return RecordBytes().Dword(1).Floats({0, 0, 0}).Float(0).Dword(0).Float(0);
}

inline RecordBytes BoundingElementRecord()
{
    RecordBytes record;
    record.Dword(1).Dword(0);
    for (int part = 0; part < 2; ++part)  // the global, then the local bounds
    {
        for (int corner = 0; corner < 8; ++corner)
        {
            record.Floats({0, 0, 0});
        }
        record.Floats({0, 0, 0}).Floats({0, 0, 0}).Append(SphereRecord());
    }
    return record;
}

inline RecordBytes NamedColorRecord(const char* name = "Medium Gray")
{
    return RecordBytes()
        .Dword(1)
        .Floats({0.5f, 0.5f, 0.5f, 1})
        .Floats({0.5f, 0.5f, 0.5f, 1})
        .Floats({0, 0, 0, 1})
        .Floats({0.5f, 0.5f, 0.5f, 1})
        .Float(64)
        .Dword(1)
        .Dword(0)
        .String(name);
}

inline RecordBytes TextureMapRecord(const char* filename = "", DWORD flags = 0,
                                    const char* name = "")
{
    return RecordBytes()
        .Dword(2)
        .Dword(1)
        .String(filename)
        .Dword(flags)
        .String(name)
        .Dword(0)
        .Double(1)
        .Dword(1)
        .Double(0)
        .Double(0);
}

inline RecordBytes CoordinateTransformRecord()
{
    RecordBytes record;
    record.Dword(1);
    for (int matrix = 0; matrix < 3; ++matrix)
    {
        record.Doubles({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
    }
    return record.Doubles({1, 1, 1}).Doubles({0, 0, 0});
}

/// The record of a DrawingObject. Each part is one of its fields and can be replaced.
struct NodeRecord
{
    DWORD version = 3;
    RecordBytes minimumSize = RecordBytes().Doubles({0, 0, 0});
    RecordBytes bounds = BoundingElementRecord();
    RecordBytes extentsBoxColor = NamedColorRecord();
    DWORD flags = 0;
    RecordBytes handles = RecordBytes().Raw(std::vector<BYTE>(16 * 24).data(), 16 * 24);
    RecordBytes scale = RecordBytes().Doubles({1, 1, 1});
    RecordBytes namedTransforms = RecordBytes().Word(0);  ///< before version 3
    RecordBytes scaledDimensions = RecordBytes().Doubles({0, 0, 0});
    double handleSize = 0.05f;
    RecordBytes texture = TextureMapRecord();
    RecordBytes transform = CoordinateTransformRecord();
    RecordBytes unscaledDimensions = RecordBytes().Doubles({0, 0, 0});
    RecordBytes children = RecordBytes().Word(0);

    RecordBytes Get() const
    {
        RecordBytes record;
        record.Dword(version);
        if (version >= 2)
        {
            record.Append(minimumSize);
        }
        record.Append(bounds).Append(extentsBoxColor).Dword(flags).Append(handles).Append(scale);
        if (version < 3)
        {
            record.Append(namedTransforms);
        }
        return record.Append(scaledDimensions)
            .Double(handleSize)
            .Append(texture)
            .Append(transform)
            .Append(unscaledDimensions)
            .Append(children);
    }
    operator Bytes() const { return Get().Get(); }
};
