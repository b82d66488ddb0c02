// SPDX-License-Identifier: MIT
#include "import3ds/TriangularFaceArray.h"

#include "tests/support/RecordBytes.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace
{

TriangularFace MakeFace(WORD a, WORD b = 0, WORD c = 0, WORD flags = 0, WORD material = 0)
{
    TriangularFace face;
    face.a = a;
    face.b = b;
    face.c = c;
    face.faceFlags = flags;
    face.material = material;
    return face;
}

std::vector<int> FirstCorners(const TriangularFaceArray& faces)
{
    std::vector<int> corners;
    for (int i = 0; i < faces.GetSize(); ++i)
    {
        corners.push_back(faces.GetAt(i).a);
    }
    return corners;
}

TriangularFaceArray MakeArray(std::initializer_list<WORD> corners)
{
    TriangularFaceArray faces;
    for (const WORD corner : corners)
    {
        faces.Add(MakeFace(corner));
    }
    return faces;
}

using Corners = std::vector<int>;

TEST(TriangularFace, ANewFaceHasThreeCornersAtVertex0AndMaterial0)
{
    const TriangularFace face;
    EXPECT_EQ(face.a, 0);
    EXPECT_EQ(face.b, 0);
    EXPECT_EQ(face.c, 0);
    EXPECT_EQ(face.material, 0);
}

TEST(TriangularFace, CopiesHaveAllFiveWords)
{
    const TriangularFace face = MakeFace(1, 2, 3, 4, 5);
    TriangularFace assigned;
    assigned = face;
    for (const TriangularFace& copy : {TriangularFace(face), assigned})
    {
        EXPECT_EQ(copy.a, 1);
        EXPECT_EQ(copy.b, 2);
        EXPECT_EQ(copy.c, 3);
        EXPECT_EQ(copy.faceFlags, 4);
        EXPECT_EQ(copy.material, 5);
    }
}

TEST(TriangularFace, TheRecordIsTheVersionAndFiveWords)
{
    TriangularFace face = MakeFace(0x0102, 0x0304, 0x0506, 0x0708, 0x090A);
    const Bytes record = {1, 0, 0, 0, 2, 1, 4, 3, 6, 5, 8, 7, 10, 9};
    EXPECT_EQ(Stored(face), record);
    TriangularFace loaded;
    LoadRecord(loaded, record);
    EXPECT_EQ(Stored(loaded), record);
    EXPECT_EQ(loaded.faceFlags, 0x0708);
}

TEST(TriangularFace, OnlyVersion1IsLoaded)
{
    TriangularFace face;
    for (const DWORD version : {0u, 2u})
    {
        EXPECT_EQ(LoadCause(face, RecordBytes().Dword(version).Dword(0).Dword(0).Word(0)),
                  CArchiveException::badSchema);
    }
}

TEST(TriangularFaceArray, ElementsAreReachedAsCopiesReferencesAndAddresses)
{
    TriangularFaceArray faces = MakeArray({5, 6});
    faces[1].a = 7;
    faces.ElementAt(0).b = 8;
    faces.GetElement(0)->c = 9;
    TriangularFace copy = faces.GetAt(1);
    copy.a = 100;
    const TriangularFaceArray& unchanging = faces;
    EXPECT_EQ(unchanging[1].a, 7);
    EXPECT_EQ(faces.GetAt(0).b, 8);
    EXPECT_EQ(faces.GetAt(0).c, 9);
    faces.SetAt(0, copy);
    EXPECT_EQ(FirstCorners(faces), (Corners{100, 7}));
}

TEST(TriangularFaceArray, ElementsAndArraysAreInsertedAndRemoved)
{
    TriangularFaceArray faces = MakeArray({1, 2, 3});
    faces.InsertAt(1, MakeFace(9), 2);
    EXPECT_EQ(FirstCorners(faces), (Corners{1, 9, 9, 2, 3}));
    const TriangularFaceArray others = MakeArray({7, 8});
    faces.InsertAt(0, &others);
    EXPECT_EQ(FirstCorners(faces), (Corners{7, 8, 1, 9, 9, 2, 3}));
    faces.RemoveAt(2, 4);
    EXPECT_EQ(FirstCorners(faces), (Corners{7, 8, 3}));
    faces.SetAtGrow(3, MakeFace(6));
    EXPECT_EQ(FirstCorners(faces), (Corners{7, 8, 3, 6}));
    EXPECT_EQ(faces.Add(MakeFace(5)), 4);
    TriangularFaceArray copy;
    copy = faces;
    faces.RemoveAll();
    EXPECT_EQ(faces.GetSize(), 0);
    EXPECT_EQ(FirstCorners(copy), (Corners{7, 8, 3, 6, 5}));
    copy.SetSize(2, 10);
    copy.FreeExtra();
    EXPECT_EQ(FirstCorners(copy), (Corners{7, 8}));
}

TEST(TriangularFaceArray, TheRecordIsTheVersionTheCountAndTheElements)
{
    TriangularFaceArray faces;
    faces.Add(MakeFace(1, 2, 3, 4, 5));
    faces.Add(MakeFace(6, 7, 8, 9, 10));
    const RecordBytes record = RecordBytes()
                                   .Dword(1)
                                   .Dword(2)
                                   .Dword(1)
                                   .Raw("\1\0\2\0\3\0\4\0\5\0", 10)
                                   .Dword(1)
                                   .Raw("\6\0\7\0\10\0\11\0\12\0", 10);
    EXPECT_EQ(Stored(faces), record.Get());
    TriangularFaceArray loaded = MakeArray({77, 78, 79});
    LoadRecord(loaded, record);
    EXPECT_EQ(Stored(loaded), record.Get());
}

TEST(TriangularFaceArray, AWrongVersionOfTheArrayOrOfAnElementIsRefused)
{
    TriangularFaceArray faces;
    EXPECT_EQ(LoadCause(faces, RecordBytes().Dword(2).Dword(0)), CArchiveException::badSchema);
    EXPECT_EQ(LoadCause(faces, RecordBytes().Dword(1).Dword(1).Dword(2).Raw("0123456789", 10)),
              CArchiveException::badSchema);
}

TEST(TriangularFaceArray, ACountWhoseElementsAreMissingIsRefusedBeforeMemoryIsAllocated)
{
    TriangularFaceArray faces;
    EXPECT_EQ(LoadCause(faces, RecordBytes().Dword(1).Dword(0x7FFFFFFF)),
              CArchiveException::endOfFile);
    EXPECT_EQ(LoadCause(faces, RecordBytes().Dword(1).Dword(0xFFFFFFFF)),
              CArchiveException::badIndex);
}

TEST(TriangularFaceArray, ArchivesCreateTheArrayAndItsElementsByTheirClassNames)
{
    for (const char* const name : {"TriangularFace", "TriangularFaceArray"})
    {
        const CRuntimeClass* const runtimeClass = CRuntimeClass::FromName(name);
        ASSERT_NE(runtimeClass, nullptr);
        EXPECT_EQ(runtimeClass->m_wSchema, VERSIONABLE_SCHEMA | 1);
        const std::unique_ptr<CObject> object(runtimeClass->CreateObject());
        EXPECT_NE(object, nullptr);
    }
}

}  // namespace
