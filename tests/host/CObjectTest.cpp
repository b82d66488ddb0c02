// SPDX-License-Identifier: MIT
#include "host/CObject.h"

#include "host/CException.h"
#include "host/CObList.h"
#include "host/CWnd.h"
#include "platform/Limits.h"
#include "tests/support/RecordBytes.h"
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

TEST(CObject, TheRootClassHasNoRecord)
{
    CWnd window;
    CObject& object = window;
    EXPECT_EQ(object.CObject::GetRuntimeClass(), RUNTIME_CLASS(CObject));
    object.AssertValid();
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    object.CObject::Serialize(archive);
    archive.Close();
    EXPECT_TRUE(file.Bytes().empty());
}

/// What an archive says against its one class; empty when it is taken.
std::string Refusal(const Bytes& bytes)
{
    CMemFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    CArchive archive(&file, CArchive::load);
    try
    {
        archive.ReadClass();
    }
    catch (const CArchiveException& exception)
    {
        const std::string text = exception.what();
        return text.substr(text.rfind(": ") + 2);
    }
    return "";
}

/// The bytes of a class that is stored alone.
Bytes StoredClass(const std::string& name)
{
    const CRuntimeClass runtimeClass = {name.c_str(), sizeof(CObject),        1,
                                        nullptr,      RUNTIME_CLASS(CObject), nullptr};
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    archive.WriteClass(&runtimeClass);
    archive.Close();
    return file.Bytes();
}

TEST(CObject, ClassNamesInArchivesHaveAtMost255Bytes)
{
    EXPECT_EQ(orvane::limits::maxClassNameBytes, 255U);
    const std::string longest(255, 'a');
    const std::string tooLong(256, 'a');
    EXPECT_EQ(Refusal(RecordBytes().NewClass(longest.c_str(), 1)),
              "class " + longest + " is not known");
    EXPECT_EQ(Refusal(RecordBytes().NewClass(tooLong.c_str(), 1)),
              "the name of a class is empty or too long");

    EXPECT_EQ(StoredClass(longest), RecordBytes().NewClass(longest.c_str(), 1).Get());
    try
    {
        StoredClass(tooLong);
        ADD_FAILURE();
    }
    catch (const CArchiveException& exception)
    {
        EXPECT_EQ(exception.what(),
                  "archive: " + tooLong + ": the class name has more than 255 bytes");
    }
}

TEST(CException, IsBothAnObjectAndAStandardException)
{
    const CException exception("scene.orv: no scene");
    const std::exception& standard = exception;

    EXPECT_STREQ(standard.what(), "scene.orv: no scene");
    EXPECT_TRUE(exception.IsKindOf(RUNTIME_CLASS(CException)));
}
