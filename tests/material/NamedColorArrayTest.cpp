// SPDX-License-Identifier: MIT
#include "material/NamedColorArray.h"

#include "tests/support/RecordBytes.h"

#include <gtest/gtest.h>

namespace
{
/// Shows what the array keeps to itself.
class OpenNamedColorArray : public NamedColorArray
{
public:
    using NamedColorArray::growBy;
    using NamedColorArray::maxSize;
};

using Names = std::vector<std::string>;

Names NamesOf(const NamedColorArray& array)
{
    Names names;
    for (int i = 0; i < array.GetSize(); ++i)
    {
        names.push_back(array[i].GetName());
    }
    return names;
}

void Fill(NamedColorArray& array, const Names& names)
{
    array.RemoveAll();
    for (const std::string& name : names)
    {
        array.Add(NamedColor(name.c_str()));
    }
}
}  // namespace

TEST(NamedColorArray, StartsEmptyWithTheDefaultGrowBy)
{
    const OpenNamedColorArray array;
    EXPECT_EQ(array.GetSize(), 0);
    EXPECT_EQ(array.maxSize, 0);
    EXPECT_EQ(array.growBy, -1);
    EXPECT_EQ(OpenNamedColorArray(array).growBy, -1);
}

TEST(NamedColorArray, GrowsGeometricallyUntilItHasAGrowBy)
{
    OpenNamedColorArray array;
    int reallocations = 0;
    for (int i = 0; i < 1000; ++i)
    {
        const int before = array.maxSize;
        EXPECT_EQ(array.Add(NamedColor()), i);
        reallocations += array.maxSize != before ? 1 : 0;
    }
    EXPECT_LT(reallocations, 20);

    array.SetSize(0, 3);
    EXPECT_EQ(array.growBy, 3);
    array.Add(NamedColor());
    array.Add(NamedColor());
    EXPECT_EQ(array.maxSize, 4);
}

TEST(NamedColorArray, HoldsCopies)
{
    NamedColorArray array;
    NamedColor color("A");
    array.Add(color);
    color.SetName("B");
    array.SetAtGrow(1, color);
    array.GetAt(0).SetName("C");
    EXPECT_EQ(NamesOf(array), (Names{"A", "B"}));
    array.GetElement(0)->SetName("D");
    array.SetAt(1, NamedColor("E"));
    EXPECT_EQ(NamesOf(array), (Names{"D", "E"}));
}

TEST(NamedColorArray, InsertsAndRemoves)
{
    NamedColorArray array;
    Fill(array, {"A", "B"});
    array.InsertAt(1, NamedColor("X"), 2);
    EXPECT_EQ(NamesOf(array), (Names{"A", "X", "X", "B"}));
    NamedColorArray other;
    Fill(other, {"Y", "Z"});
    array.InsertAt(0, &other);
    EXPECT_EQ(NamesOf(array), (Names{"Y", "Z", "A", "X", "X", "B"}));
    array.RemoveAt(2, 3);
    EXPECT_EQ(NamesOf(array), (Names{"Y", "Z", "B"}));
    array.FreeExtra();
    EXPECT_EQ(NamesOf(array), (Names{"Y", "Z", "B"}));
    array.RemoveAll();
    EXPECT_EQ(array.GetUpperBound(), -1);
}

TEST(NamedColorArray, CopiesElementsAndNotTheGrowBy)
{
    OpenNamedColorArray array;
    array.SetSize(0, 8);
    Fill(array, {"A", "B"});
    OpenNamedColorArray assigned;
    assigned = array;
    EXPECT_EQ(NamesOf(assigned), (Names{"A", "B"}));
    EXPECT_EQ(assigned.growBy, -1);
    array.GetElement(0)->SetName("C");
    EXPECT_EQ(NamesOf(assigned), (Names{"A", "B"}));
    const NamedColorArray copy(array);
    EXPECT_EQ(NamesOf(copy), (Names{"C", "B"}));
}

TEST(NamedColorArray, FindNameGivesTheFirstExactMatch)
{
    NamedColorArray array;
    EXPECT_EQ(array.FindName("Red"), -1);
    Fill(array, {"Blue", "red", "Red", "Red", "Gr\xFCn", ""});
    EXPECT_EQ(array.FindName("Red"), 2);
    EXPECT_EQ(array.FindName("Blue"), 0);
    EXPECT_EQ(array.FindName("RED"), -1);
    EXPECT_EQ(array.FindName("Re"), -1);
    EXPECT_EQ(array.FindName("Gr\xFCn"), 4);
    EXPECT_EQ(array.FindName(""), 5);
}

namespace
{
RecordBytes NamedColorRecord(const char* name, float shininess, DWORD group)
{
    return RecordBytes()
        .Dword(1)
        .Floats({0.5f, 0.5f, 0.5f, 1})
        .Floats({0.5f, 0.5f, 0.5f, 1})
        .Floats({0, 0, 0, 1})
        .Floats({0.5f, 0.5f, 0.5f, 1})
        .Float(shininess)
        .Dword(1)
        .Dword(group)
        .String(name);
}
}  // namespace

TEST(NamedColorArray, RecordIsVersionCountAndElementsInPlace)
{
    const Bytes expected = RecordBytes()
                               .Dword(1)
                               .Dword(2)
                               .Append(NamedColorRecord("A", 64, 0))
                               .Append(NamedColorRecord("Bee", 10, 7));
    NamedColorArray array;
    Fill(array, {"A", "Bee"});
    array.GetElement(1)->SetShininess(10);
    array.GetElement(1)->SetColorGroup(7);
    EXPECT_EQ(Stored(array), expected);

    NamedColorArray loaded;
    Fill(loaded, {"X", "Y", "Z"});
    LoadRecord(loaded, expected);
    EXPECT_EQ(NamesOf(loaded), (Names{"A", "Bee"}));
    EXPECT_EQ(loaded[1].GetShininess(), 10.0f);
    EXPECT_EQ(loaded[1].GetColorGroup(), 7ul);
}

TEST(NamedColorArray, RefusesRecordsOfOtherVersions)
{
    NamedColorArray array;
    EXPECT_EQ(LoadCause(array, RecordBytes().Dword(2).Dword(0)), CArchiveException::badSchema);
    RecordBytes inner = RecordBytes().Dword(1).Dword(1);
    Bytes element = NamedColorRecord("A", 64, 0);
    element[0] = 9;
    EXPECT_EQ(LoadCause(array, inner.Raw(element.data(), element.size())),
              CArchiveException::badSchema);
}

TEST(NamedColorArray, ACountBeyondTheBytesEndsTheFile)
{
    NamedColorArray array;
    EXPECT_EQ(
        LoadCause(array,
                  RecordBytes().Dword(1).Dword(0x7FFFFFFF).Append(NamedColorRecord("A", 64, 0))),
        CArchiveException::endOfFile);
    EXPECT_EQ(LoadCause(array, RecordBytes().Dword(1).Dword(0xFFFFFFFF)),
              CArchiveException::badIndex);
}

TEST(NamedColorArray, IsCreatedByItsClassName)
{
    for (const char* name : {"ColorVector", "Color", "NamedColor", "NamedColorArray"})
    {
        CRuntimeClass* const runtimeClass = CRuntimeClass::FromName(name);
        ASSERT_NE(runtimeClass, nullptr) << name;
        EXPECT_EQ(runtimeClass->m_wSchema, VERSIONABLE_SCHEMA | 1) << name;
        const std::unique_ptr<CObject> object(runtimeClass->CreateObject());
        EXPECT_EQ(object->GetRuntimeClass(), runtimeClass);
    }
    EXPECT_TRUE(RUNTIME_CLASS(NamedColor)->IsDerivedFrom(RUNTIME_CLASS(Color)));
}
