// SPDX-License-Identifier: MIT
#include "extrude/OrvFont.h"
#include "extrude/OrvFontList.h"
#include "imaging/TextureMap.h"
#include "imaging/TextureMapList.h"
#include "scene/DrawingObject.h"
#include "scene/NamedTransform.h"
#include "scene/NamedTransformList.h"
#include "scene/NamedView.h"
#include "scene/NamedViewList.h"
#include "scene/SceneTemplate.h"
#include "scene/SceneTemplateList.h"
#include "tests/support/RecordBytes.h"

#include <gtest/gtest.h>

// What the lists of every class have in common.

namespace
{

template <typename ListClass, typename ElementClass>
struct Pair
{
    using List = ListClass;
    using Element = ElementClass;
};

template <typename Types>
class ElementLists : public testing::Test
{
protected:
    using List = typename Types::List;
    using Element = typename Types::Element;

    ElementLists()
    {
        for (Element* const element : {&a, &b, &c})
        {
            list.AddTail(element);
        }
    }
    // The fonts' list would delete them.
    ~ElementLists() override
    {
        while (!list.IsEmpty())
        {
            list.RemoveHead();
        }
    }

    std::vector<const Element*> Elements() const
    {
        std::vector<const Element*> elements;
        for (POSITION position = list.GetHeadPosition(); position != nullptr;)
        {
            elements.push_back(list.GetNext(position));
        }
        return elements;
    }

    Element a;
    Element b;
    Element c;
    List list;
};

using Types =
    testing::Types<Pair<DrawingObjectList, DrawingObject>, Pair<OrvFontList, OrvFont>,
                   Pair<TextureMapList, TextureMap>, Pair<NamedTransformList, NamedTransform>,
                   Pair<NamedViewList, NamedView>, Pair<SceneTemplateList, SceneTemplate>>;
TYPED_TEST_SUITE(ElementLists, Types);

TYPED_TEST(ElementLists, GiveTheirElementsByTheirClass)
{
    typename TypeParam::Element* const head = this->list.GetHead();
    EXPECT_EQ(head, &this->a);
    EXPECT_EQ(this->list.GetTail(), &this->c);
    POSITION position = this->list.FindIndex(1);
    EXPECT_EQ(this->list.GetAt(position), &this->b);
    EXPECT_EQ(this->list.GetPrev(position), &this->b);
    EXPECT_EQ(this->list.GetNext(position), &this->a);
    EXPECT_EQ(this->list.Find(&this->b), position);
    this->list.SetAt(position, &this->a);
    EXPECT_EQ(this->list.GetNext(position), &this->a);
}

TYPED_TEST(ElementLists, InsertAndRemove)
{
    const POSITION middle = this->list.FindIndex(1);
    this->list.InsertBefore(middle, &this->c);
    this->list.InsertAfter(middle, &this->a);
    this->list.AddHead(&this->b);
    EXPECT_EQ(this->list.GetCount(), 6);
    EXPECT_EQ(this->list.RemoveHead(), &this->b);
    EXPECT_EQ(this->list.RemoveTail(), &this->c);
    const auto elements = this->Elements();
    EXPECT_EQ(elements, (decltype(elements){&this->a, &this->c, &this->b, &this->a}));
}

TYPED_TEST(ElementLists, MoveAndFindElements)
{
    typename TypeParam::Element* const wanted = &this->c;
    EXPECT_EQ(this->list.WhichIndex(wanted), 2);
    const POSITION up = this->list.MoveUp(this->list.GetTailPosition());
    EXPECT_EQ(this->list.WhichIndex(wanted), 1);
    this->list.MoveHead(up);
    EXPECT_EQ(this->list.WhichIndex(wanted), 0);
    this->list.MoveDown(this->list.GetHeadPosition());
    EXPECT_EQ(this->list.WhichIndex(wanted), 1);
    this->list.MoveTail(this->list.FindIndex(1));
    EXPECT_EQ(this->list.WhichIndex(wanted), 2);
}

TYPED_TEST(ElementLists, RemoveAllOccurancesRemovesEveryOneAndAlwaysReturns1)
{
    this->list.AddHead(&this->b);
    this->list.AddTail(&this->b);
    EXPECT_EQ(this->list.RemoveAllOccurances(&this->b), 1);
    const auto elements = this->Elements();
    EXPECT_EQ(elements, (decltype(elements){&this->a, &this->c}));
    EXPECT_EQ(this->list.RemoveAllOccurances(&this->b), 1);
    EXPECT_EQ(this->list.GetCount(), 2);
}

/// What reading a list's record of one new object throws.
template <typename List>
int LoadCauseOf(const char* className)
{
    List list;
    return LoadCause(list, RecordBytes().Word(1).NewClass(className, 1));
}

// The name of a class is read before the object's own record, which these records lack.
TEST(ElementListRecords, AnObjectOfAnotherClassIsRefused)
{
    EXPECT_EQ(LoadCauseOf<NamedTransformList>("NamedView"), CArchiveException::badClass);
    EXPECT_EQ(LoadCauseOf<NamedTransformList>("NamedTransform"), CArchiveException::endOfFile);
    EXPECT_EQ(LoadCauseOf<NamedViewList>("NamedTransform"), CArchiveException::badClass);
    EXPECT_EQ(LoadCauseOf<NamedViewList>("NamedView"), CArchiveException::endOfFile);
    EXPECT_EQ(LoadCauseOf<SceneTemplateList>("NamedView"), CArchiveException::badClass);
    EXPECT_EQ(LoadCauseOf<SceneTemplateList>("SceneTemplate"), CArchiveException::endOfFile);
}

}  // namespace
