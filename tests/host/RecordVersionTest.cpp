// SPDX-License-Identifier: MIT
#include "host/RecordVersion.h"

#include "tests/support/RecordBytes.h"
#include "tests/support/SampleObjects.h"

#include <gtest/gtest.h>

namespace
{

/// A record that is a version alone.
struct Versioned
{
    void Serialize(CArchive& archive)
    {
        if (archive.IsStoring())
        {
            WriteRecordVersion(archive, RUNTIME_CLASS(SampleNode));
        }
        else
        {
            version = ReadRecordVersion(archive, RUNTIME_CLASS(SampleNode));
        }
    }

    DWORD version = 0;
};

}  // namespace

TEST(RecordVersion, IsTheSchemaWithoutItsVersionableBit)
{
    Versioned record;
    EXPECT_EQ(Stored(record), (Bytes{3, 0, 0, 0}));
}

TEST(RecordVersion, AcceptsOneToTheNewestAlone)
{
    for (const DWORD version : {1u, 2u, 3u})
    {
        Versioned record;
        EXPECT_EQ(LoadCause(record, RecordBytes().Dword(version)), CArchiveException::none);
        EXPECT_EQ(record.version, version);
    }
    for (const DWORD version : {0u, 4u, 0x80000003u, 0xFFFFFFFFu})
    {
        Versioned record;
        EXPECT_EQ(LoadCause(record, RecordBytes().Dword(version)), CArchiveException::badSchema);
    }
    Versioned record;
    EXPECT_EQ(LoadCause(record, Bytes{3, 0, 0}), CArchiveException::endOfFile);
}
