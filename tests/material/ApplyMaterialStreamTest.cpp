// SPDX-License-Identifier: MIT
#include "material/ApplyMaterial.h"

#include "material/NamedColor.h"
#include "tests/support/gl/GlRecorder.h"

#include <gtest/gtest.h>

using Lines = std::vector<std::string>;

static NamedColor Numbered(const ColorVector& emission)
{
    NamedColor color("Numbered");
    color.SetAmbientColor(ColorVector(1, 2, 3, 4));
    color.SetDiffuseColor(ColorVector(5, 6, 7, 8));
    color.SetEmissionColor(emission);
    color.SetSpecularColor(ColorVector(9, 10, 11, 12));
    color.SetShininess(13);
    return color;
}

static Lines Applied(GLenum face, const NamedColor& color)
{
    GlRecording recording;
    ApplyMaterial(face, color);
    return recording.Lines();
}

TEST(ApplyMaterial, AMaterialThatEmitsNothingSendsEverythingAndItsDiffuseColor)
{
    const Lines expected = {"glMaterialfv GL_FRONT_AND_BACK GL_AMBIENT 1 2 3 4",
                            "glMaterialfv GL_FRONT_AND_BACK GL_DIFFUSE 5 6 7 8",
                            "glMaterialfv GL_FRONT_AND_BACK GL_SPECULAR 9 10 11 12",
                            "glMaterialfv GL_FRONT_AND_BACK GL_EMISSION 0 0 0 1",
                            "glMaterialf GL_FRONT_AND_BACK GL_SHININESS 13",
                            "glColor4fv 5 6 7 8"};
    EXPECT_EQ(Applied(GL_FRONT_AND_BACK, Numbered(ColorVector(0, 0, 0, 1))), expected);
}

TEST(ApplyMaterial, ASelfLitMaterialSendsNoAmbientAndDiffuseAndItsEmissionColor)
{
    const Lines expected = {"glMaterialfv GL_FRONT_AND_BACK GL_SPECULAR 9 10 11 12",
                            "glMaterialfv GL_FRONT_AND_BACK GL_EMISSION 0.2 0 0 1",
                            "glMaterialf GL_FRONT_AND_BACK GL_SHININESS 13",
                            "glColor4fv 0.2 0 0 1"};
    EXPECT_EQ(Applied(GL_FRONT_AND_BACK, Numbered(ColorVector(0.2f, 0, 0, 1))), expected);
}

TEST(ApplyMaterial, EachEmittedComponentCountsButNotAlpha)
{
    EXPECT_EQ(Applied(GL_FRONT, Numbered(ColorVector(0, 1e-30f, 0, 1))).size(), 4u);
    EXPECT_EQ(Applied(GL_FRONT, Numbered(ColorVector(0, 0, -1, 1))).size(), 4u);
    EXPECT_EQ(Applied(GL_FRONT, Numbered(ColorVector(0, 0, 0, 0))).size(), 6u);
}

TEST(ApplyMaterial, AppliesToTheFaceGiven)
{
    EXPECT_EQ(Applied(GL_FRONT, Numbered(ColorVector()))[0],
              "glMaterialfv GL_FRONT GL_AMBIENT 1 2 3 4");
}
