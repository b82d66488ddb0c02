// SPDX-License-Identifier: MIT
#include "document/materials/MaterialLibrary.h"

#include "host/CWinApp.h"
#include "material/MetallicRoughness.h"
#include "orvane/Error.h"
#include "tests/support/ToolRun.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace
{

using orvane::MaterialNamed;

/// Materials in a profile of the test's own.
class Materials : public testing::Test
{
protected:
    Materials() { app.SetProfilePath(folder.Path("orvane.ini").c_str()); }

    ToolFolder folder;
    CWinApp app;
};

std::string ProblemOf(const std::string& name)
{
    try
    {
        MaterialNamed("faceMaterial", name);
    }
    catch (const orvane::OptionError& error)
    {
        return error.what();
    }
    return "none";
}

TEST_F(Materials, BuiltInOnesAreSortedAndBelongToGroup0)
{
    const NamedColorGroup& all = orvane::BuiltInMaterials();
    EXPECT_GE(all.GetSize(), 20);
    for (int i = 0; i < all.GetSize(); ++i)
    {
        EXPECT_EQ(all.GetAt(i).GetColorGroup(), 0u);
        if (i > 0)
        {
            EXPECT_LT(std::string(all.GetAt(i - 1).GetName()), all.GetAt(i).GetName());
        }
    }
}

TEST_F(Materials, MetalsAreMetalAndTheOthersAreNot)
{
    const std::set<std::string> metals = {"Aluminium", "Brass", "Bronze",    "Chrome", "Copper",
                                          "Gold",      "Iron",  "Rose Gold", "Silver", "Steel"};
    const NamedColorGroup& all = orvane::BuiltInMaterials();
    for (int i = 0; i < all.GetSize(); ++i)
    {
        const NamedColor material = all.GetAt(i);
        EXPECT_EQ(orvane::ToMetallicRoughness(material).isMetal,
                  metals.count(material.GetName()) == 1)
            << material.GetName();
    }
}

TEST_F(Materials, NamesAreFoundWithoutRegardToCase)
{
    EXPECT_STREQ(MaterialNamed("face", "rose gOLD").GetName(), "Rose Gold");
    EXPECT_LT(MaterialNamed("face", "glass").GetDiffuseColor().alpha, 0.5f);
    EXPECT_GT(MaterialNamed("face", "neon pink").GetEmissionColor().red, 0.9f);
}

TEST_F(Materials, AnUnknownNameIsAnErrorWithTheNearestNames)
{
    const std::string problem = ProblemOf("god");
    EXPECT_EQ(problem.find("faceMaterial: the name of a material, such as Gold"), 0u) << problem;
    EXPECT_NE(problem.find("found \"god\""), std::string::npos) << problem;
}

TEST_F(Materials, SavedOnesAreFoundReplacedAndRemoved)
{
    NamedColor brand("Our Blue");
    brand.SetDiffuseColor(ColorVector(0.1f, 0.2f, 0.8f, 0.5f));
    brand.SetShininess(99);
    orvane::SaveMaterial(brand);
    NamedColor other("Other");
    orvane::SaveMaterial(other);
    EXPECT_EQ(MaterialNamed("face", "our blue").GetShininess(), 99);
    EXPECT_EQ(MaterialNamed("face", "our blue").GetDiffuseColor().alpha, 0.5f);
    brand.SetName("OUR BLUE");
    brand.SetShininess(11);
    orvane::SaveMaterial(brand);
    ASSERT_EQ(orvane::SavedMaterials().size(), 2u);
    EXPECT_EQ(MaterialNamed("face", "Our Blue").GetShininess(), 11);
    orvane::RemoveMaterial("our Blue");
    ASSERT_EQ(orvane::SavedMaterials().size(), 1u);
    EXPECT_STREQ(orvane::SavedMaterials()[0].GetName(), "Other");
    EXPECT_THROW(orvane::RemoveMaterial("Our Blue"), orvane::Error);
}

TEST_F(Materials, NamesOfBuiltInOnesAndEmptyNamesAreRefused)
{
    EXPECT_THROW(orvane::SaveMaterial(NamedColor("gold")), orvane::OptionError);
    EXPECT_THROW(orvane::SaveMaterial(NamedColor("")), orvane::OptionError);
    EXPECT_TRUE(orvane::SavedMaterials().empty());
}

TEST_F(Materials, AProfileThatCannotBeWrittenIsAnError)
{
    app.SetProfilePath(folder.Path("").c_str());
    EXPECT_THROW(orvane::SaveMaterial(NamedColor("New")), orvane::Error);
}

TEST_F(Materials, ADamagedCountEndsAtTenThousand)
{
    app.WriteProfileInt("Materials", "Count", 2000000000);
    EXPECT_EQ(orvane::SavedMaterials().size(), 10000u);
}

}  // namespace
