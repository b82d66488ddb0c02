// SPDX-License-Identifier: MIT
#include "scene/LightObject.h"

#include "scene/DrawingParameters.h"
#include "tests/support/GoldenFile.h"
#include "tests/support/TerminationEvent.h"
#include "tests/support/gl/GlRecorder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>

namespace
{

using Lines = std::vector<std::string>;

class Lights : public testing::Test
{
protected:
    Lines Drawn()
    {
        GlRecording recording;
        EXPECT_EQ(light.DrawObject(&parameters), 1);
        EXPECT_TRUE(recording.IsBalanced());
        return recording.Lines();
    }

    /// Whether drawing the light sends what that file in light/ says.
    testing::AssertionResult IsDrawnAs(const std::string& name)
    {
        GlRecording recording;
        EXPECT_EQ(light.DrawObject(&parameters), 1);
        EXPECT_TRUE(recording.IsBalanced());
        return IsGolden("light/" + name + ".txt", recording.Text());
    }

    LightObject light;
    DrawingParameters parameters;
};

TEST_F(Lights, ANewLightOnlyDisablesOpenGLsFirstLight)
{
    EXPECT_EQ(Drawn(), (Lines{"glDisable GL_LIGHT0"}));
    parameters.SetShowLights();
    EXPECT_EQ(Drawn(), (Lines{"glDisable GL_LIGHT0"}));
}

TEST_F(Lights, ALightInUseIsEnabledAndThenProgrammedInOrder)
{
    light.SetInUse();
    EXPECT_TRUE(IsDrawnAs("point"));
}

TEST_F(Lights, ColorsNumberAndSpotAreTheLightsOwn)
{
    NamedColor colors("Mine");
    colors.SetAmbientColor(ColorVector(0.125f, 0.25f, 0.5f, 1.0f));
    colors.SetDiffuseColor(ColorVector(0.25f, 0.5f, 0.75f, 0.5f));
    colors.SetSpecularColor(ColorVector(0.5f, 0.75f, 1.0f, 0.25f));
    light.SetColors(colors);
    light.SetInUse();
    light.SetLightNumber(GL_LIGHT0 + 7);
    light.SetSpotCutoffAngle(22.5);
    light.SetSpotExponent(0.1);  // narrowed to float
    EXPECT_EQ(Drawn(),
              (Lines{"glEnable GL_LIGHT7", "glLightfv GL_LIGHT7 GL_AMBIENT 0.125 0.25 0.5 1",
                     "glLightfv GL_LIGHT7 GL_DIFFUSE 0.25 0.5 0.75 0.5",
                     "glLightfv GL_LIGHT7 GL_SPECULAR 0.5 0.75 1 0.25",
                     "glLightfv GL_LIGHT7 GL_POSITION 0 0 0 1",
                     "glLightfv GL_LIGHT7 GL_SPOT_DIRECTION 0 0 -1",
                     "glLightf GL_LIGHT7 GL_SPOT_CUTOFF 22.5",
                     "glLightf GL_LIGHT7 GL_SPOT_EXPONENT 0.1"}));
}

TEST_F(Lights, ADirectionalLightWithoutParentKeepsItsPosition)
{
    light.SetInUse();
    light.SetDirectional();
    EXPECT_TRUE(IsDrawnAs("point"));
}

TEST_F(Lights, ADirectionalLightShinesFromAfarAndIsDrawnAboveItsParent)
{
    // The parent's box is 2 x 2 x 4 at (1, 2, 5): the diagonal is sqrt(24) long.
    DrawingObject parent;
    const Vector minimum(0.0f, 1.0f, 3.0f);
    const Vector maximum(2.0f, 3.0f, 7.0f);
    Sphere sphere;
    sphere.CalculateSphere(minimum, maximum);
    parent.bounds.ResetLocalBounds();
    parent.bounds.AccumulateLocalBounds(minimum, maximum, sphere);
    parent.bounds.CalculateBounds(*parent.GetTransform());
    // Turned by 90 degrees about x, y comes to lie on z and z on -y: seen from the light, the
    // parent's centre (1, 2, 5) is (1, 5, -2); the light's place is then taken off.
    light.Rotate(90, DVector(1.0, 0.0, 0.0));
    light.SetTranslation(DVector(0.0, 0.0, 1.0));
    light.SetParent(&parent);
    light.SetInUse();
    light.SetDirectional();

    const Lines drawn = Drawn();
    ASSERT_GT(drawn.size(), 3U);
    EXPECT_EQ(drawn[0], "glPushMatrix");
    double x = 0;
    double y = 0;
    double z = 0;
    ASSERT_EQ(std::sscanf(drawn[1].c_str(), "glTranslated %lf %lf %lf", &x, &y, &z), 3);
    EXPECT_NEAR(x, 1, 1e-5);
    EXPECT_NEAR(y, 5, 1e-5);
    EXPECT_NEAR(z, -3 + 2.4494897, 1e-5);
    EXPECT_EQ(drawn[2], "glPopMatrix");
    // Position and direction are given behind that, in the light's own frame.
    std::string behind;
    std::for_each(drawn.begin() + 3, drawn.end(),
                  [&](const std::string& line) { behind += line + '\n'; });
    EXPECT_TRUE(IsGolden("light/from-afar.txt", behind));
}

TEST_F(Lights, AnInactiveLightIsDisabledAfterItsFlashlightIsDrawn)
{
    light.SetScale(DVector(2.0, 3.0, 4.0));
    light.SetInUse();
    light.ClearActive();
    EXPECT_EQ(Drawn(), (Lines{"glDisable GL_LIGHT0"}));
    parameters.SetShowLights();
    EXPECT_TRUE(IsDrawnAs("off-with-flashlight"));
}

TEST_F(Lights, ALightBeyondTheContextsNumberIssuesNoOpenGL)
{
    light.SetInUse();
    parameters.SetShowLights();
    for (const unsigned number : {GL_LIGHT0 + 8U, GL_LIGHT0 - 1U, 0U, 0xFFFFFFFFU})
    {
        light.SetLightNumber(number);
        GlRecording recording;
        recording.SetInteger(GL_MAX_LIGHTS, {8});
        EXPECT_EQ(light.DrawObject(&parameters), 1);
        EXPECT_EQ(recording.Without({"glGetIntegerv"}), Lines{}) << number;
    }
    light.SetLightNumber(GL_LIGHT0 + 8);
    parameters.ClearShowLights();
    GlRecording recording;
    recording.SetInteger(GL_MAX_LIGHTS, {9});
    EXPECT_EQ(light.DrawObject(&parameters), 1);
    EXPECT_EQ(recording.Count("glEnable"), 1);
}

TEST_F(Lights, TheTerminationEventStopsThem)
{
    const TerminationEvent event(true);
    parameters.SetTerminationEvent(event.Get());
    parameters.SetShowLights();
    light.SetInUse();
    GlRecording recording;
    EXPECT_EQ(light.DrawObject(&parameters), 0);
    EXPECT_EQ(light.DrawAtRadius(&parameters, 1), 0);
    EXPECT_EQ(recording.Lines(), Lines{});
}

// The flashlight of a light 2 wide and 4 deep.
class FlashLights : public Lights
{
protected:
    FlashLights() { light.SetScale(DVector(2.0, 3.0, 4.0)); }

    testing::AssertionResult IsFlashLight(const std::string& name)
    {
        GlRecording recording;
        EXPECT_EQ(light.DrawFlashLight(&parameters), 1);
        EXPECT_TRUE(recording.IsBalanced());
        return IsGolden("light/" + name + ".txt", recording.Text());
    }
};

TEST_F(FlashLights, ALightThatIsOnGlowsRedAndYellow)
{
    EXPECT_TRUE(IsFlashLight("flashlight-on"));
}

TEST_F(FlashLights, ALightThatIsOffIsDullAndASelectedLightIsMadeOfLines)
{
    light.ClearActive();
    light.SetSelected();
    EXPECT_TRUE(IsFlashLight("flashlight-off-and-selected"));
}

TEST_F(FlashLights, VisibleLightsAreDrawnBeforeTheyAreProgrammed)
{
    light.SetInUse();
    EXPECT_TRUE(IsDrawnAs("point"));
    parameters.SetShowLights();
    EXPECT_TRUE(IsDrawnAs("point-with-flashlight"));
}

TEST_F(FlashLights, ADirectionalLightIsDrawnAboveItsParent)
{
    DrawingObject parent;  // no bounds: centre and radius 0
    light.SetInUse();
    light.SetDirectional();
    light.SetParent(&parent);
    parameters.SetShowLights();
    EXPECT_TRUE(IsDrawnAs("from-afar-with-flashlight"));
}

TEST_F(FlashLights, CanBeDrawnAtADistance)
{
    GlRecording recording;
    EXPECT_EQ(light.DrawAtRadius(&parameters, 2.5f), 1);
    EXPECT_TRUE(IsGolden("light/flashlight-at-distance.txt", recording.Text()));
}

}  // namespace
