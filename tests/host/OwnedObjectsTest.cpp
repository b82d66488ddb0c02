// SPDX-License-Identifier: MIT
#include "host/OwnedObjects.h"

#include "geometry/DVector.h"
#include "geometry/Vector.h"
#include "tests/support/RecordBytes.h"

#include <gtest/gtest.h>

namespace
{

RecordBytes VectorObject(float x)
{
    return RecordBytes().NewClass("Vector", 1).Floats({x, 0, 0});
}

// What reading the list throws; none when it is read.
int ListCause(const RecordBytes& record)
{
    const Bytes& bytes = record;
    CMemFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    CArchive archive(&file, CArchive::load);
    try
    {
        ReadOwnedObjects<Vector>(archive, RUNTIME_CLASS(Vector));
    }
    catch (const CArchiveException& exception)
    {
        return exception.m_cause;
    }
    return CArchiveException::none;
}

TEST(OwnedObjects, AreReadInOrder)
{
    // The class has index 1, so its next object is marked 0x8001.
    const RecordBytes record =
        RecordBytes().Word(2).Append(VectorObject(4)).Word(0x8001).Floats({5, 0, 0});
    const Bytes& bytes = record;
    CMemFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    CArchive archive(&file, CArchive::load);
    const auto objects = ReadOwnedObjects<Vector>(archive, RUNTIME_CLASS(Vector));
    ASSERT_EQ(objects.size(), 2U);
    EXPECT_EQ(objects[0]->x, 4.0f);
    EXPECT_EQ(objects[1]->x, 5.0f);
}

TEST(OwnedObjects, ANullReferenceIsRefused)
{
    EXPECT_EQ(ListCause(RecordBytes().Word(2).Append(VectorObject(4)).Word(0)),
              CArchiveException::badClass);
}

TEST(OwnedObjects, ASecondReferenceToAnObjectIsRefused)
{
    EXPECT_EQ(ListCause(RecordBytes().Word(2).Append(VectorObject(4)).Word(2)),
              CArchiveException::badClass);
}

TEST(OwnedObjects, AnotherClassIsRefused)
{
    EXPECT_EQ(ListCause(RecordBytes().Word(1).NewClass("DVector", 1).Doubles({1, 2, 3})),
              CArchiveException::badClass);
}

TEST(OwnedObjects, AHugeCountEndsWithTheInput)
{
    EXPECT_EQ(ListCause(RecordBytes().Word(0xFFFF).Dword(0xFFFFFFFF).Append(VectorObject(4))),
              CArchiveException::endOfFile);
}

TEST(OwnedObjects, ForgottenObjectsReadAsNull)
{
    const RecordBytes record = RecordBytes().Append(VectorObject(4)).Word(2).Word(2);
    const Bytes& bytes = record;
    CMemFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    CArchive archive(&file, CArchive::load);
    EXPECT_EQ(archive.GetLoadedCount(), 0U);
    const std::unique_ptr<CObject> object(archive.ReadObject(nullptr));
    EXPECT_EQ(archive.GetLoadedCount(), 2U);  // the class and the object
    EXPECT_EQ(archive.ReadObject(nullptr), object.get());
    archive.ForgetObjects(0);
    EXPECT_EQ(archive.ReadObject(nullptr), nullptr);
}

}  // namespace
