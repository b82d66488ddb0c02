// SPDX-License-Identifier: MIT
#include "host/RecordVersion.h"

#include "scene/NamedView.h"
#include "tests/support/NodeRecords.h"
#include "tests/support/SampleObjects.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

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

TEST(RecordVersion, ARefusalNamesThePlaceTheClassAndTheExpectedVersions)
{
    Versioned record;
    try
    {
        LoadRecord(record, RecordBytes().Dword(4));
        FAIL() << "nothing was refused";
    }
    catch (const CArchiveException& refusal)
    {
        EXPECT_STREQ(
            refusal.what(),
            "archive: byte 4: class SampleNode has a record of version 4, expected 1 to 3");
    }
}

TEST(RecordVersion, AnObserverIsToldEveryKnownVersionThatIsRead)
{
    const Bytes bytes = RecordBytes().Dword(2).Dword(1).Dword(3).Dword(4);
    CMemFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    CArchive archive(&file, CArchive::load);
    std::vector<std::pair<std::string, DWORD>> read;
    archive.ObserveVersions([&read](const CRuntimeClass* recordClass, DWORD version) {
        read.emplace_back(recordClass->m_lpszClassName, version);
    });
    Versioned record;
    record.Serialize(archive);
    record.Serialize(archive);
    archive.ObserveVersions(nullptr);
    record.Serialize(archive);
    archive.ObserveVersions([&read](const CRuntimeClass*, DWORD version) {
        read.emplace_back("the refused", version);
    });
    EXPECT_THROW(record.Serialize(archive), CArchiveException);
    EXPECT_EQ(read,
              (std::vector<std::pair<std::string, DWORD>>{{"SampleNode", 2}, {"SampleNode", 1}}));
}

TEST(RecordVersion, VersionsReadByOneReaderEachAreObservedToo)
{
    NamedView view;
    const Bytes bytes = RecordBytes().Dword(1).String("a").Append(CoordinateTransformRecord());
    CMemFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    CArchive archive(&file, CArchive::load);
    std::vector<std::pair<std::string, DWORD>> read;
    archive.ObserveVersions([&read](const CRuntimeClass* recordClass, DWORD version) {
        read.emplace_back(recordClass->m_lpszClassName, version);
    });
    view.Serialize(archive);
    EXPECT_EQ(read, (std::vector<std::pair<std::string, DWORD>>{{"NamedView", 1},
                                                                {"CoordinateTransform", 1}}));
}
