// SPDX-License-Identifier: MIT
#include "scene/LightObject.h"

#include "tests/support/ExpectVector.h"
#include "tests/support/SceneRecords.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

namespace
{

void ExpectDefaultColors(const LightObject& light)
{
    const NamedColor colors = light.GetColors();
    EXPECT_STREQ(colors.GetName(), "Default Light");
    EXPECT_RGBA(colors.GetAmbientColor(), 0.0f, 0.0f, 0.0f, 1.0f);
    EXPECT_RGBA(colors.GetDiffuseColor(), 0.6f, 0.6f, 0.6f, 1.0f);
    EXPECT_RGBA(colors.GetSpecularColor(), 0.9f, 0.9f, 0.9f, 1.0f);
}

TEST(LightObject, ANewLightIsActiveNotInUseNotDirectionalAndTheFirst)
{
    const LightObject light;
    EXPECT_EQ(light.lightFlags, 0x2U);
    EXPECT_EQ(light.lightNumber, 0x4000U);
    EXPECT_EQ(light.spotCutoffAngle, 180.0);
    EXPECT_EQ(light.spotExponent, 128.0);
    EXPECT_NE(light.quadric, nullptr);
    EXPECT_NE(light.IsEditable(), 0);
    ExpectDefaultColors(light);
    EXPECT_RGBA(light.GetColors().GetEmissionColor(), 0.0f, 0.0f, 0.0f, 1.0f);
    EXPECT_EQ(light.GetColors().GetShininess(), 64.0f);
    EXPECT_XYZ(light.GetScaledDimensions(), 1.0, 1.0, 1.0);
    EXPECT_XYZ(light.GetUnscaledDimensions(), 1.0, 1.0, 1.0);
    EXPECT_XYZ(light.GetScale(), 1.0, 1.0, 1.0);
    EXPECT_EQ(RUNTIME_CLASS(LightObject)->GetVersion(), 1U);
}

TEST(LightObject, ItsFlagsAreIndependentBits)
{
    LightObject light;
    light.lightFlags = 0;
    light.SetDirectional();
    EXPECT_EQ(light.lightFlags, 1U);
    EXPECT_EQ(light.IsDirectional(), 1);
    light.SetActive();
    EXPECT_EQ(light.lightFlags, 3U);
    EXPECT_EQ(light.IsActive(), 2);
    light.SetInUse();
    EXPECT_EQ(light.lightFlags, 7U);
    EXPECT_EQ(light.IsInUse(), 4);
    light.ClearDirectional();
    EXPECT_EQ(light.lightFlags, 6U);
    EXPECT_EQ(light.IsDirectional(), 0);
    light.ClearActive();
    EXPECT_EQ(light.lightFlags, 4U);
    EXPECT_EQ(light.IsActive(), 0);
    light.ClearInUse();
    EXPECT_EQ(light.lightFlags, 0U);
    EXPECT_EQ(light.IsInUse(), 0);
}

TEST(LightObject, ResetLeavesNumberKindInUseEmissionAndShininess)
{
    LightObject light;
    NamedColor colors("Mine");
    colors.SetEmissionColor(ColorVector(0.1f, 0.2f, 0.3f, 1.0f));
    colors.SetShininess(5);
    light.SetColors(colors);
    EXPECT_STREQ(light.GetColors().GetName(), "Mine");
    light.SetLightNumber(0x4003);
    light.SetDirectional();
    light.SetInUse();
    light.ClearActive();
    light.ClearEditable();
    light.SetSpotCutoffAngle(30);
    light.SetSpotExponent(2);
    EXPECT_EQ(light.spotCutoffAngle, 30.0);
    EXPECT_EQ(light.spotExponent, 2.0);
    light.Reset();
    ExpectDefaultColors(light);
    EXPECT_RGBA(light.GetColors().GetEmissionColor(), 0.1f, 0.2f, 0.3f, 1.0f);
    EXPECT_EQ(light.GetColors().GetShininess(), 5.0f);
    EXPECT_EQ(light.lightNumber, 0x4003U);
    EXPECT_EQ(light.lightFlags, 7U);
    EXPECT_NE(light.IsEditable(), 0);
    EXPECT_EQ(light.spotCutoffAngle, 180.0);
    EXPECT_EQ(light.spotExponent, 128.0);
}

TEST(LightObject, ItsBoundsAreTheBoxOfTheGlyph)
{
    LightObject light;
    EXPECT_XYZ(light.GetBoundsLocalMinimum(), -0.2f, -0.2f, 0.0f);
    EXPECT_XYZ(light.GetBoundsLocalMaximum(), 0.2f, 0.2f, 0.95f);
    EXPECT_XYZ(light.GetBoundsLocalCenter(), 0.0f, 0.0f, 0.475f);
    EXPECT_NEAR(light.GetLocalBoundsRadius(), std::sqrt(0.04 + 0.04 + 0.475 * 0.475), 1e-6);
    EXPECT_NE(light.GetBoundsLocalSphere().IsDefined(), 0);
    light.SetTranslation(DVector(1.0, 2.0, 3.0));
    EXPECT_EQ(light.CalculateBounds(), 1);
    EXPECT_XYZ_NEAR(light.GetBoundsGlobalMaximum(), 1.2, 2.2, 3.95, 1e-6);
    EXPECT_XYZ_NEAR(light.GetBoundsGlobalCenter(), 1, 2, 3.475, 1e-6);
    EXPECT_XYZ(light.GetBoundsLocalMaximum(), 0.2f, 0.2f, 0.95f);
}

LightObject& Changed(LightObject& light)
{
    NamedColor colors("Mine");
    colors.SetDiffuseColor(ColorVector(1.0f, 0.5f, 0.25f, 1.0f));
    light.SetColors(colors);
    light.SetLightNumber(0x4005);
    light.lightFlags = 5;
    light.SetSpotCutoffAngle(30);
    light.SetSpotExponent(2);
    light.SetTranslation(DVector(1.0, 2.0, 3.0));
    return light;
}

void ExpectChanged(const LightObject& light)
{
    EXPECT_STREQ(light.GetColors().GetName(), "Mine");
    EXPECT_RGBA(light.GetColors().GetDiffuseColor(), 1.0f, 0.5f, 0.25f, 1.0f);
    EXPECT_EQ(light.lightNumber, 0x4005U);
    EXPECT_EQ(light.lightFlags, 5U);
    EXPECT_EQ(light.spotCutoffAngle, 30.0);
    EXPECT_EQ(light.spotExponent, 2.0);
    EXPECT_XYZ(light.GetTranslation(), 1.0, 2.0, 3.0);
}

TEST(LightObject, EveryCopyHasAQuadricOfItsOwn)
{
    auto light = std::make_unique<LightObject>();
    const LightObject copy(Changed(*light));
    ExpectChanged(copy);
    EXPECT_NE(copy.quadric, light->quadric);

    LightObject assigned;
    GLUquadric* const own = assigned.quadric;
    assigned = *light;
    ExpectChanged(assigned);
    EXPECT_EQ(assigned.quadric, own);
    light.reset();  // frees its own alone
    assigned = copy;
    ExpectChanged(assigned);
    const LightObject& same = assigned;
    assigned = same;
    ExpectChanged(assigned);
}

TEST(LightObject, UndoKeepsSelectionAndParentAndTakesBackEverythingElse)
{
    DrawingObject parent;
    LightObject light;
    DrawingObjectStack steps;
    EXPECT_EQ(light.RestoreFromUndo(), 0);
    light.AttachExternalUndoStack(&steps);
    Changed(light);
    light.SetSelected();
    EXPECT_EQ(light.SaveToUndo(), 1);
    EXPECT_EQ(steps.Peek(), &light);

    light.SetParent(&parent);
    light.ClearSelected();
    light.SetShowScalingBox();
    light.SetTransparent();
    light.Reset();
    light.SetLightNumber(0x4001);
    light.lightFlags = 2;
    light.SetTranslation(DVector(0.0, 0.0, 0.0));
    EXPECT_EQ(light.RestoreFromUndo(), 1);
    ExpectChanged(light);
    EXPECT_EQ(light.GetParent(), &parent);
    EXPECT_EQ(light.IsSelected(), 0);
    EXPECT_NE(light.ShouldShowScalingBox(), 0);
    EXPECT_EQ(light.IsTransparent(), 0);
    EXPECT_EQ(light.RestoreFromUndo(), 0);
    light.AttachExternalUndoStack(nullptr);
}

TEST(LightObject, UndoOfAStepThatIsNullIsRefused)
{
    struct OpenLight : LightObject
    {
        using LightObject::undoStack;
    };
    OpenLight light;
    light.undoStack.Push(nullptr);
    EXPECT_EQ(light.RestoreFromUndo(), 0);
    EXPECT_EQ(light.undoStack.GetCount(), 1);
    light.undoStack.Pop();
}

TEST(LightObject, ANewLightsRecordHasItsFieldsInOrder)
{
    LightObject light;
    EXPECT_EQ(Stored(light), LightRecord().Get());
}

TEST(LightObject, TheRecordHoldsColorsFlagsNumberAndSpot)
{
    const RecordBytes record = RecordBytes()
                                   .Append(LightNodeRecord().Get())
                                   .Dword(1)
                                   .Append(LightColorsRecord("Mine"))
                                   .Dword(5)
                                   .Dword(0x4005)
                                   .Double(30)
                                   .Double(2);
    LightObject light;
    LoadRecord(light, record);
    EXPECT_STREQ(light.GetColors().GetName(), "Mine");
    EXPECT_RGBA(light.GetColors().GetDiffuseColor(), 0.6f, 0.6f, 0.6f, 1.0f);
    EXPECT_EQ(light.lightFlags, 5U);
    EXPECT_EQ(light.lightNumber, 0x4005U);
    EXPECT_EQ(light.spotCutoffAngle, 30.0);
    EXPECT_EQ(light.spotExponent, 2.0);
    EXPECT_EQ(Stored(light), record.Get());
}

TEST(LightObject, RefusesOtherVersionsBehindTheBase)
{
    for (const DWORD version : {0U, 2U})
    {
        LightObject light;
        NodeRecord base = LightNodeRecord();
        base.handleSize = 7;
        EXPECT_EQ(LoadCause(light, RecordBytes().Append(base.Get()).Dword(version)),
                  CArchiveException::badSchema);
        EXPECT_EQ(light.handleSize, 7.0);  // the base has been read
        EXPECT_EQ(light.lightFlags, 2U);
    }
}

}  // namespace
