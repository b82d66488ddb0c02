// SPDX-License-Identifier: MIT
#include "host/CObject.h"

#include "host/CException.h"
#include "host/CObList.h"
#include "tests/support/SampleObjects.h"

#include <gtest/gtest.h>

#include <sstream>

TEST(CObject, ClassesKnowTheirBases)
{
    const SampleBud bud;

    EXPECT_TRUE(bud.IsKindOf(RUNTIME_CLASS(SampleBud)));
    EXPECT_TRUE(bud.IsKindOf(RUNTIME_CLASS(SampleLeaf)));
    EXPECT_TRUE(bud.IsKindOf(RUNTIME_CLASS(CObject)));
    EXPECT_FALSE(bud.IsKindOf(RUNTIME_CLASS(SampleNode)));
    EXPECT_FALSE(SampleLeaf().IsKindOf(RUNTIME_CLASS(SampleBud)));
    EXPECT_FALSE(RUNTIME_CLASS(CObject)->IsDerivedFrom(RUNTIME_CLASS(SampleLeaf)));
}

TEST(CObject, RuntimeClassDescribesTheClass)
{
    const CRuntimeClass* const node = SampleNode().GetRuntimeClass();

    EXPECT_STREQ(node->m_lpszClassName, "SampleNode");
    EXPECT_EQ(node->m_nObjectSize, static_cast<int>(sizeof(SampleNode)));
    EXPECT_EQ(node->m_wSchema, 0x80000003u);
    EXPECT_EQ(node->GetVersion(), 3u);
    EXPECT_EQ(node->m_pBaseClass, RUNTIME_CLASS(CObject));
}

TEST(CObject, SerializableClassesAreFoundByTheirExactName)
{
    EXPECT_EQ(CRuntimeClass::FromName("SampleBud"), RUNTIME_CLASS(SampleBud));
    EXPECT_EQ(CRuntimeClass::FromName("CObList"), RUNTIME_CLASS(CObList));
    EXPECT_EQ(CRuntimeClass::FromName("samplebud"), nullptr);
    EXPECT_EQ(CRuntimeClass::FromName("SampleBu"), nullptr);
    EXPECT_EQ(CRuntimeClass::FromName(""), nullptr);
    EXPECT_EQ(CRuntimeClass::FromName("SampleAbstract"), nullptr);
}

TEST(CObject, OnlyDynamicClassesAreCreated)
{
    const std::unique_ptr<CObject> bud(RUNTIME_CLASS(SampleBud)->CreateObject());

    ASSERT_NE(bud, nullptr);
    EXPECT_EQ(bud->GetRuntimeClass(), RUNTIME_CLASS(SampleBud));
    EXPECT_EQ(RUNTIME_CLASS(SampleAbstract)->CreateObject(), nullptr);
    EXPECT_EQ(RUNTIME_CLASS(CObject)->CreateObject(), nullptr);
}

TEST(CObject, OnlyClassesWithASchemaAreSerializable)
{
    EXPECT_TRUE(SampleLeaf().IsSerializable());
    EXPECT_FALSE(SampleAbstract().IsSerializable());
}

TEST(CObject, DumpNamesTheClass)
{
    std::ostringstream out;
    SampleBud().Dump(out);
    EXPECT_EQ(out.str().rfind("a SampleBud at ", 0), 0u);
}

TEST(CException, IsBothAnObjectAndAStandardException)
{
    const CException exception("scene.orv: no scene");
    const std::exception& standard = exception;

    EXPECT_STREQ(standard.what(), "scene.orv: no scene");
    EXPECT_TRUE(exception.IsKindOf(RUNTIME_CLASS(CException)));
}
