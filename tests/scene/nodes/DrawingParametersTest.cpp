// SPDX-License-Identifier: MIT
#include "scene/DrawingParameters.h"

#include "host/CWnd.h"

#include <gtest/gtest.h>

namespace
{

struct Mode
{
    const char* name;
    void (DrawingParameters::*set)();
    void (DrawingParameters::*clear)();
    int (DrawingParameters::*test)() const;
    int bit;
};

#define MODE(name, test, bit)                                                  \
    Mode                                                                       \
    {                                                                          \
#name, &DrawingParameters::Set##name, &DrawingParameters::Clear##name, \
            &DrawingParameters::test, bit                                      \
    }

const Mode modes[] = {
    MODE(Render, IsRender, 0x0001),
    MODE(Outline, IsOutline, 0x0002),
    MODE(ExtentsBox, IsExtentsBox, 0x0004),
    MODE(ShowObject, ShouldShowObject, 0x0008),
    MODE(ShowChildren, ShouldShowChildren, 0x0010),
    MODE(ShowExtentsAndHandles, ShouldShowExtentsAndHandles, 0x0020),
    MODE(Selecting, IsSelecting, 0x0040),
    MODE(ApplyProjection, ShouldApplyProjection, 0x0080),
    MODE(ShowLights, ShouldShowLights, 0x0100),
    MODE(ShowSelectedOnly, ShouldShowSelectedOnly, 0x0200),
    MODE(ShowTextures, ShouldShowTextures, 0x0400),
    MODE(ClearAndReturn, ShouldClearAndReturn, 0x0800),
    MODE(ForceSolidBackground, ShouldForceSolidBackground, 0x1000),
    MODE(AccurateSelection, IsAccurateSelection, 0x2000),
    MODE(ShowBackgroundTexture, ShouldShowBackgroundTexture, 0x4000),
    MODE(NoTerminate, IsNoTerminate, 0x8000),
};

TEST(DrawingParameters, NewParametersHaveNothingSet)
{
    const DrawingParameters parameters;
    EXPECT_EQ(parameters.GetFlags(), 0UL);
    EXPECT_EQ(parameters.GetColorResolution(), 0);
    EXPECT_TRUE(parameters.GetCurrentTexture().GetName().IsEmpty());
    EXPECT_EQ(parameters.GetProjection(), nullptr);
    EXPECT_EQ(parameters.GetSolidBackgroundColor().red, 0.0f);
    EXPECT_EQ(parameters.GetSolidBackgroundColor().green, 0.0f);
    EXPECT_EQ(parameters.GetSolidBackgroundColor().blue, 0.0f);
    EXPECT_EQ(parameters.GetSolidBackgroundColor().alpha, 1.0f);
    EXPECT_EQ(parameters.GetTerminationEvent(), nullptr);
    EXPECT_EQ(parameters.GetMessageWindow(), nullptr);
    EXPECT_EQ(parameters.GetMessageWindowHandle(), nullptr);
}

TEST(DrawingParameters, EachModeBitIsSetClearedAndTestedByItsMaskAlone)
{
    for (const Mode& mode : modes)
    {
        SCOPED_TRACE(mode.name);
        DrawingParameters parameters;
        (parameters.*mode.set)();
        EXPECT_EQ(parameters.GetFlags(), static_cast<unsigned long>(mode.bit));
        EXPECT_EQ((parameters.*mode.test)(), mode.bit);
        parameters.SetFlags(0xFFFF);
        (parameters.*mode.clear)();
        EXPECT_EQ(parameters.GetFlags(), 0xFFFFUL - static_cast<unsigned long>(mode.bit));
        EXPECT_EQ((parameters.*mode.test)(), 0);
    }
}

TEST(DrawingParameters, TheSelectingTestYields64)
{
    DrawingParameters parameters;
    parameters.SetSelecting();
    EXPECT_EQ(parameters.IsSelecting(), 64);
}

TEST(DrawingParameters, SetFlagsStoresWhatTheCallerPasses)
{
    DrawingParameters parameters;
    parameters.SetFlags(0xABCD1234);
    EXPECT_EQ(parameters.GetFlags(), 0xABCD1234UL);
}

// Only the address counts.
ProjectionData* const someProjection = reinterpret_cast<ProjectionData*>(0x1000);

TEST(DrawingParameters, CopyingAndAssigningTakeEveryField)
{
    int event = 0;
    CWnd window;
    const HWND handle = reinterpret_cast<HWND>(&event);
    TextureMap texture;
    texture.SetName("wood");
    texture.SetQuality(2);
    texture.SetFilename("oak.bmp");

    DrawingParameters original;
    original.SetFlags(0x40B8);
    original.SetColorResolution(24);
    original.SetCurrentTexture(texture);
    original.SetProjection(someProjection);
    original.SetSolidBackgroundColor(ColorVector(0.25f, 0.5f, 0.75f, 0.125f));
    original.SetTerminationEvent(&event);
    original.SetMessageWindow(&window);
    original.SetMessageWindowHandle(handle);

    const auto expectAll = [&](const DrawingParameters& copy) {
        EXPECT_EQ(copy.GetFlags(), 0x40B8UL);
        EXPECT_EQ(copy.GetColorResolution(), 24);
        EXPECT_EQ(copy.GetCurrentTexture().GetName(), "wood");
        EXPECT_EQ(copy.CurrentTexture().GetQuality(), 2UL);
        EXPECT_EQ(copy.CurrentTexture().filename, "oak.bmp");
        EXPECT_EQ(copy.GetProjection(), someProjection);
        const ColorVector color = copy.GetSolidBackgroundColor();
        EXPECT_EQ(color.red, 0.25f);
        EXPECT_EQ(color.green, 0.5f);
        EXPECT_EQ(color.blue, 0.75f);
        EXPECT_EQ(color.alpha, 0.125f);
        EXPECT_EQ(copy.GetTerminationEvent(), &event);
        EXPECT_EQ(copy.GetMessageWindow(), &window);
        EXPECT_EQ(copy.GetMessageWindowHandle(), handle);
    };
    const DrawingParameters copy(original);
    expectAll(copy);
    DrawingParameters assigned;
    assigned = original;
    expectAll(assigned);
    const DrawingParameters& itself = assigned;
    assigned = itself;
    expectAll(assigned);
}

TEST(DrawingParameters, TheCurrentTextureIsHeldByValue)
{
    TextureMap texture;
    texture.SetName("wood");
    DrawingParameters parameters;
    parameters.SetCurrentTexture(texture);
    texture.SetName("stone");
    EXPECT_EQ(parameters.GetCurrentTexture().GetName(), "wood");
    EXPECT_NE(parameters.GetCurrentTexture().mutex, parameters.CurrentTexture().mutex);
}

}  // namespace
