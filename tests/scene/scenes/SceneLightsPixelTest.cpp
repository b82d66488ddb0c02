// SPDX-License-Identifier: MIT
#include "scene/DrawingParameters.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"
#include "tests/support/HeadlessContext.h"
#include "tests/support/PanelNode.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace
{

constexpr int size = 64;
constexpr int middle = size / 2;

// A panel of 4 x 4 units that fills the picture, facing the camera, in a black scene with one light
// in use: directional, straight from the front, its diffuse colour 0.6. A pixel is 1/16 unit.
class LitPanels : public testing::Test
{
protected:
    LitPanels()
    {
        scene.SetMaximumLightCount(1);
        scene.CreateLights();
        scene.SetGlobalAmbientColor(ColorVector(0.0f, 0.0f, 0.0f, 1.0f));
        scene.SetBackgroundColor(ColorVector(0.0f, 0.0f, 1.0f, 1.0f));
        scene.AddChild(panel);
        scene.CalculateBounds();
        Light().SetTransform(CoordinateTransform());
        view.AttachScene(&scene);
        view.SetScaledSize(size, size);
        view.SetViewSize(size, size);
        view.SetProjectionOrthographic();
        view.SetProjectionOrthographicWidth(4);
        view.SetTranslation(DVector(0.0, 0.0, -10.0));
    }

    LightObject& Light(int index = 0) { return *scene.GetLightByIndex(index); }

    void Draw()
    {
        parameters.SetFlags(0);
        EXPECT_EQ(view.Draw(&parameters), 1);
    }

    // Draws, and gives the green at the pixel that far from the middle.
    int Brightness(int right = 0, int up = 0)
    {
        Draw();
        const Rgb pixel = context.Pixel(middle + right, middle + up);
        EXPECT_EQ(pixel.red, pixel.green);
        EXPECT_EQ(pixel.blue, pixel.green);
        return pixel.green;
    }

    HeadlessContext context{size, size};
    PanelNode* panel = new PanelNode(2, size);
    SceneObject scene;
    ViewObject view;
    DrawingParameters parameters;
};

constexpr double full = 0.6 * 255;

TEST_F(LitPanels, ADirectionalLightShinesAlongItsNegativeZAxisFromAnywhere)
{
    REQUIRE_CONTEXT(context);
    EXPECT_NEAR(Brightness(), full, 2);
    EXPECT_NEAR(Brightness(28, 28), full, 2);
    Light().SetTranslation(DVector(50.0, -20.0, -30.0));
    EXPECT_NEAR(Brightness(), full, 2);
    Light().Rotate(60, DVector(0.0, 1.0, 0.0));
    EXPECT_NEAR(Brightness(), full * 0.5, 2);
    Light().Rotate(120, DVector(0.0, 1.0, 0.0));
    EXPECT_EQ(Brightness(), 0);  // from behind
}

TEST_F(LitPanels, APositionalLightShinesFromItsPlace)
{
    REQUIRE_CONTEXT(context);
    Light().ClearDirectional();
    Light().SetTranslation(DVector(0.0, 0.0, 1.0));
    EXPECT_NEAR(Brightness(), full, 2);
    // 1.03 units beside: under 45.9 degrees.
    EXPECT_NEAR(Brightness(16), full / std::sqrt(1 + 1.03 * 1.03), 3);
    Light().Rotate(180, DVector(0.0, 1.0, 0.0));
    EXPECT_NEAR(Brightness(), full, 2);  // to all sides
    Light().SetTranslation(DVector(0.0, 0.0, -1.0));
    EXPECT_EQ(Brightness(), 0);
}

TEST_F(LitPanels, ASpotShinesIntoItsConeAlone)
{
    REQUIRE_CONTEXT(context);
    Light().ClearDirectional();
    Light().SetTranslation(DVector(0.0, 0.0, 2.0));
    Light().SetSpotCutoffAngle(20);  // 0.73 units, 11.6 pixels, about the middle
    Light().SetSpotExponent(0);
    EXPECT_NEAR(Brightness(), full, 2);
    EXPECT_NEAR(Brightness(8), full * 2 / std::sqrt(4 + 0.53 * 0.53), 3);
    EXPECT_EQ(Brightness(14), 0);
    Light().Rotate(180, DVector(0.0, 1.0, 0.0));
    EXPECT_EQ(Brightness(), 0);  // turned away
}

TEST_F(LitPanels, TheSpotExponentCountsInsideACone)
{
    REQUIRE_CONTEXT(context);
    Light().ClearDirectional();
    Light().SetTranslation(DVector(0.0, 0.0, 2.0));
    const double cosine = 2 / std::sqrt(4 + 0.53 * 0.53);
    EXPECT_EQ(Light().spotExponent, 128.0);
    EXPECT_NEAR(Brightness(8), full * cosine, 3);  // no cone, no effect
    Light().SetSpotCutoffAngle(60);
    EXPECT_NEAR(Brightness(8), full * cosine * std::pow(cosine, 128), 3);
    Light().SetSpotExponent(4);
    EXPECT_NEAR(Brightness(8), full * cosine * std::pow(cosine, 4), 3);
}

TEST_F(LitPanels, LightsThatAreOffOrNotInUseAreDark)
{
    REQUIRE_CONTEXT(context);
    EXPECT_NEAR(Brightness(), full, 2);
    Light().ClearActive();
    EXPECT_EQ(Brightness(), 0);
    Light().SetActive();
    EXPECT_NEAR(Brightness(), full, 2);
    Light().ClearInUse();
    EXPECT_EQ(Brightness(), 0);
}

TEST_F(LitPanels, ColorsComeFromTheLight)
{
    REQUIRE_CONTEXT(context);
    NamedColor colors = Light().GetColors();
    colors.SetDiffuseColor(ColorVector(1.0f, 0.5f, 0.0f, 1.0f));
    colors.SetAmbientColor(ColorVector(0.0f, 0.0f, 0.8f, 1.0f));
    Light().SetColors(colors);
    panel->material.SetAmbientColor(ColorVector(0.5f, 0.5f, 0.5f, 1.0f));
    Draw();
    const Rgb pixel = context.Pixel(middle, middle);
    EXPECT_NEAR(pixel.red, 255, 1);
    EXPECT_NEAR(pixel.green, 127.5, 1.5);
    EXPECT_NEAR(pixel.blue, 0.4 * 255, 1);
}

TEST_F(LitPanels, TheGlobalAmbientColorLightsWhatNoLightDoes)
{
    REQUIRE_CONTEXT(context);
    Light().ClearInUse();
    scene.SetGlobalAmbientColor(ColorVector(0.2f, 0.2f, 0.2f, 1.0f));
    panel->material.SetAmbientColor(ColorVector(1.0f, 1.0f, 1.0f, 1.0f));
    EXPECT_NEAR(Brightness(), 51, 1);
}

TEST_F(LitPanels, LightsTurnWithTheSceneOrStayWithTheCamera)
{
    REQUIRE_CONTEXT(context);
    scene.Rotate(60, DVector(0.0, 1.0, 0.0));
    EXPECT_NEAR(Brightness(), full, 2);
    scene.ClearRotateLightsWithScene();
    EXPECT_NEAR(Brightness(), full * 0.5, 2);
    // The same when it is the camera that turns.
    scene.SetTransform(CoordinateTransform());
    view.Rotate(60, DVector(0.0, 1.0, 0.0));
    EXPECT_NEAR(Brightness(), full * 0.5, 2);
    scene.SetRotateLightsWithScene();
    EXPECT_NEAR(Brightness(), full, 2);
}

TEST_F(LitPanels, ALocalViewerSeesHighlightsMoveWithThePlace)
{
    REQUIRE_CONTEXT(context);
    view.SetTranslation(DVector(0.0, 0.0, -3.0));
    panel->material.SetDiffuseColor(ColorVector(0.0f, 0.0f, 0.0f, 1.0f));
    panel->material.SetSpecularColor(ColorVector(1.0f, 1.0f, 1.0f, 1.0f));
    panel->material.SetShininess(16);
    EXPECT_NEAR(Brightness(), 0.9 * 255, 2);
    EXPECT_NEAR(Brightness(28), 0.9 * 255, 2);  // seen straight from everywhere
    scene.SetLightingLocalViewer();
    EXPECT_NEAR(Brightness(), 0.9 * 255, 2);
    // 1.78 units beside a camera 3 units away the half vector leans by half of 30.7 degrees.
    EXPECT_NEAR(Brightness(28), 0.9 * 255 * std::pow(std::cos(15.34 * M_PI / 180), 16), 3);
}

TEST_F(LitPanels, TheEightLightsStandOnARingAboveTheScene)
{
    REQUIRE_CONTEXT(context);
    scene.SetMaximumLightCount(8);
    scene.CreateLights();
    for (int on = 0; on < 8; ++on)
    {
        for (int i = 0; i < 8; ++i)
        {
            i == on ? Light(i).SetInUse() : Light(i).ClearInUse();
        }
        // Seen from the front: what of the ring of 30 degrees lies there.
        const double front = std::cos(M_PI / 6) * std::cos(on * M_PI / 4);
        EXPECT_NEAR(Brightness(), full * std::max(front, 0.0), 2) << on;
        // Turned up, the panel gets as much from each; from above it is seen.
        panel->SetRotation(-90, DVector(1.0, 0.0, 0.0));
        view.SetRotation(90, DVector(1.0, 0.0, 0.0));
        EXPECT_NEAR(Brightness(), full * 0.5, 2) << on;
        panel->SetTransform(CoordinateTransform());
        view.SetRotation(0, DVector(1.0, 0.0, 0.0));
    }
}

TEST_F(LitPanels, ANewScenesTwoLightsAdd)
{
    REQUIRE_CONTEXT(context);
    scene.SetMaximumLightCount(8);
    scene.CreateLights();
    EXPECT_NEAR(Brightness(), 2 * full * std::cos(M_PI / 6) * std::cos(M_PI / 4), 3);
}

// Flashlights, half a unit across the picture.

class FlashLightPictures : public LitPanels
{
protected:
    FlashLightPictures()
    {
        panel->SetDeleted();
        view.SetProjectionOrthographicWidth(0.5);
        view.SetShowLightsMode();
        Light().ClearDirectional();
    }

    Rgb At(int right, int up = 0) const { return context.Pixel(middle + right, middle + up); }
};

constexpr Rgb blue = {0, 0, 255};

TEST_F(FlashLightPictures, AreSeenFromTheLensWithARedHandleAround)
{
    REQUIRE_CONTEXT(context);
    Draw();
    EXPECT_EQ(At(0), (Rgb{0, 0, 0}));  // the lens, which nothing lights
    EXPECT_NEAR(At(21).red, 230, 1);   // the handle's rim, between 19.2 and 23 pixels
    EXPECT_EQ(At(21).green, 0);
    EXPECT_EQ(At(26), blue);
    view.ClearShowLightsMode();
    Draw();
    EXPECT_EQ(At(0), blue);
    Light().ClearInUse();
    view.SetShowLightsMode();
    Draw();
    EXPECT_EQ(At(0), blue);
}

TEST_F(FlashLightPictures, HaveAYellowCapAtTheBack)
{
    REQUIRE_CONTEXT(context);
    view.Rotate(180, DVector(0.0, 1.0, 0.0));
    Draw();
    EXPECT_NEAR(At(0).red, 230, 1);
    EXPECT_NEAR(At(0).green, 230, 1);
    EXPECT_EQ(At(0).blue, 0);
    EXPECT_NEAR(At(21).green, 230, 1);
    EXPECT_EQ(At(26), blue);
}

TEST_F(FlashLightPictures, AreDullWhenSwitchedOff)
{
    REQUIRE_CONTEXT(context);
    Light().ClearActive();
    scene.SetGlobalAmbientColor(ColorVector(1.0f, 1.0f, 1.0f, 1.0f));
    Draw();
    EXPECT_NEAR(At(21).red, 0.3 * 255, 1);
    EXPECT_EQ(At(21).green, 0);
    view.Rotate(180, DVector(0.0, 1.0, 0.0));
    Draw();
    EXPECT_NEAR(At(0).red, 0.3 * 255, 1);
    EXPECT_NEAR(At(0).green, 0.3 * 255, 1);
    EXPECT_EQ(At(0).blue, 0);
}

TEST_F(FlashLightPictures, AreMadeOfLinesWhenSelected)
{
    REQUIRE_CONTEXT(context);
    view.Rotate(180, DVector(0.0, 1.0, 0.0));
    Draw();
    const int filled = context.ReadPixels().CountOther(blue);
    Light().SetSelected();
    Draw();
    const int lines = context.ReadPixels().CountOther(blue);
    EXPECT_GT(lines, 0);
    EXPECT_LT(lines, filled * 3 / 4);
}

TEST_F(FlashLightPictures, OfDirectionalLightsStandOverTheScene)
{
    REQUIRE_CONTEXT(context);
    panel->ClearDeleted();
    scene.CalculateBounds();
    view.SetProjectionOrthographicWidth(8);  // 8 pixels a unit
    Light().SetDirectional();
    Light().Rotate(90, DVector(0.0, 1.0, 0.0));  // its z axis is the scene's x
    Draw();
    // The panel's sphere has the radius 2.83: the handle lies just behind that.
    const int handle = static_cast<int>(std::floor((std::sqrt(8.0) + 0.125) * 8));
    EXPECT_NEAR(At(handle).red, 230, 1);
    EXPECT_EQ(At(handle).green, 0);
    EXPECT_EQ(At(handle - 3), blue);
    EXPECT_EQ(At(-handle - 1), blue);
}

// Picking.

std::vector<std::vector<GLuint>> Picked(ViewObject& view, DrawingParameters& parameters)
{
    GLuint buffer[512] = {};
    glSelectBuffer(512, buffer);
    glRenderMode(GL_SELECT);
    glInitNames();
    EXPECT_EQ(view.Draw(&parameters), 1);
    const GLint hits = glRenderMode(GL_RENDER);
    std::vector<std::vector<GLuint>> names;
    const GLuint* hit = buffer;
    for (GLint i = 0; i < hits; ++i)
    {
        names.emplace_back(hit + 3, hit + 3 + hit[0]);
        hit += 3 + hit[0];
    }
    return names;
}

TEST_F(FlashLightPictures, ArePickedByNamesBehindTheChildrens)
{
    REQUIRE_CONTEXT(context);
    using Names = std::vector<std::vector<GLuint>>;
    parameters.SetFlags(0x40F9);
    view.SetSelectionPoint({middle, middle});
    EXPECT_EQ(Picked(view, parameters), (Names{{5}}));  // one child, four handles
    view.SetSelectionPoint({2, 2});
    EXPECT_EQ(Picked(view, parameters), Names{});
    view.SetSelectionPoint({middle, middle});
    Light().SetDirectional();
    EXPECT_EQ(Picked(view, parameters), Names{});
    panel->ClearDeleted();
    EXPECT_EQ(Picked(view, parameters), (Names{{0}}));
}

TEST_F(LitPanels, PickingTakesTheWindowAroundThePoint)
{
    REQUIRE_CONTEXT(context);
    // A panel of 8 x 8 pixels whose corner lies at the middle, up and to the right.
    auto* const small = new PanelNode(0.25f);
    small->SetTranslation(DVector(0.25, 0.25, 1.0));
    scene.AddChild(small);
    panel->SetDeleted();
    const auto isPicked = [&](int x, int y, unsigned long flags) {
        parameters.SetFlags(flags);
        view.SetSelectionPoint({x, y});
        return Picked(view, parameters) == std::vector<std::vector<GLuint>>{{1}};
    };
    constexpr unsigned long picking = 0x40F9;
    constexpr unsigned long accurate = 0x60F9;
    // From the top, the panel's pixels are 24 to 31, from the left 32 to 39.
    EXPECT_TRUE(isPicked(36, 28, picking));
    EXPECT_TRUE(isPicked(36, 28, accurate));
    EXPECT_FALSE(isPicked(36, 36, picking));
    EXPECT_TRUE(isPicked(30, 28, picking));
    EXPECT_FALSE(isPicked(30, 28, accurate));
    EXPECT_FALSE(isPicked(28, 28, picking));
}

}  // namespace
