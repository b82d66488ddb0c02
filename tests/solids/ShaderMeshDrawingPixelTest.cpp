// SPDX-License-Identifier: MIT
// Meshes look the same in a context without OpenGL's fixed functions as the nodes look in immediate
// mode.
#include "solids/ShaderMeshDrawing.h"

#include "document/FontChoice.h"
#include "import3ds/TriangularMeshObject.h"
#include "material/NamedColorArray.h"
#include "orvane/Error.h"
#include "platform/Rendering.h"
#include "scene/DrawingParameters.h"
#include "scene/OrvFontString.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"
#include "solids/MeshBuilder.h"
#include "solids/OrvProfileString.h"
#include "tests/support/HeadlessContext.h"
#include "tests/support/MeshDrawingPixels.h"
#include "tests/support/Meshes.h"
#include "tests/support/PictureFile.h"

#include <gtest/gtest.h>

#include <memory>

namespace
{

using orvane::ShaderMeshDrawing;
using orvane::ShaderView;
using orvane::ShaderViewOf;

constexpr int width = 320;
constexpr int height = 200;

/// A scene with a text, seen from above at the right, in a context of either kind.
class ShaderMeshPixels : public testing::Test
{
protected:
    ShaderMeshPixels()
    {
        orvane::LoadFonts();
        view.AttachScene(&scene);
        view.SetScaledSize(width, height);
        view.SetViewSize(width, height);
        scene.GetTransform()->SetRotation(25, DVector(1, -1, 0));
        scene.SetBackgroundColor(ColorVector(0.2f, 0.2f, 0.3f, 1));
        AddText(text);
    }

    /// Sets up a text and adds it to the scene, which deletes it.
    void AddText(OrvFontString* added)
    {
        added->AttachFont(orvane::ChooseFont("DejaVu Serif"));
        added->SetTextString("Rag\r\n&8i");
        added->SetJustification(1);
        added->SetFaceColor(MaterialOf(0.9f, 0.3f, 0.1f));
        added->SetEdgeColor(MaterialOf(0.1f, 0.8f, 0.2f));
        added->SetBevelColor(MaterialOf(0.2f, 0.3f, 0.9f));
        added->SetBevelStyle(1);
        added->SetBevelDepth(0.05f);
        added->SetScale(DVector(0.9, 0.9, 0.4));
        added->CalculateBounds();
        // Not upright: the light falls on upright bevels at exactly 90 degrees, where highlights
        // begin, so that a rounding would decide whether there is one.
        added->GetTransform()->SetRotation(7, DVector(0, 0.3, 1));
        scene.AddChild(added);
    }

    /// Adds a ball, made smaller and placed at the right, and deletes what it borrows at the end.
    TriangularMeshObject& AddBall()
    {
        materials.Add(MaterialOf(0.9f, 0.8f, 0.1f));
        materials.Add(MaterialOf(0.1f, 0.7f, 0.9f));
        auto* const ball = new TriangularMeshObject;
        FillBall(*ball);
        ball->SetMaterialColors(&materials);
        ball->GetTransform()->SetScale(DVector(0.5, 0.4, 0.5));
        ball->Translate(DVector(1.2, 0.2, 0.3));
        scene.AddChild(ball);
        return *ball;
    }

    Picture InImmediateMode()
    {
        const HeadlessContext context(width, height);
        EXPECT_TRUE(context.IsValid()) << context.Reason();
        glEnable(GL_NORMALIZE);
        glEnable(GL_CULL_FACE);
        DrawingParameters parameters;
        parameters.SetRender();
        parameters.SetShowTextures();
        parameters.SetShowObject();
        parameters.SetShowChildren();
        parameters.SetApplyProjection();
        EXPECT_EQ(view.Draw(&parameters), 1);
        EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
        return context.ReadPixels();
    }

    /// Clears the picture of the current context as the view clears it.
    void Clear() const
    {
        const ColorVector color = scene.GetBackgroundColor();
        glEnable(GL_CULL_FACE);
        glEnable(GL_DEPTH_TEST);
        glClearColor(color.red, color.green, color.blue, color.alpha);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    }

    orvane::SolidMesh BuildSceneMesh()
    {
        orvane::MeshBuildOptions options;
        options.inWorldCoordinates = false;
        options.separateLetters = true;
        options.renderedDiagonals = true;
        return orvane::BuildMesh(scene, options);
    }

    Picture WithShaders(HeadlessContext::Functions functions)
    {
        const HeadlessContext context(width, height, functions);
        EXPECT_TRUE(context.IsValid()) << context.Reason();
        ShaderMeshDrawing drawing;
        drawing.SetMesh(BuildSceneMesh());
        Clear();
        drawing.Draw(ShaderViewOf(view));
        EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
        return context.ReadPixels();
    }

    void ExpectSamePicture(int tolerance = 1)
    {
        const Picture expected = InImmediateMode();
        ASSERT_GT(expected.CountOther(expected.At(0, 0)), 3000) << "nothing is seen";
        EXPECT_TRUE(PicturesMatch(expected, WithShaders(HeadlessContext::Functions::OnlyCore),
                                  "shader-mesh", tolerance));
    }

    LightObject& LightInUse()
    {
        for (int i = 0; i < scene.GetLightCount(); ++i)
        {
            if (scene.GetLightByIndex(i)->IsInUse())
            {
                return *scene.GetLightByIndex(i);
            }
        }
        throw std::logic_error("a new scene has lights in use");
    }

    NamedColorArray materials;
    SceneObject scene;
    ViewObject view;
    OrvFontString* text = new OrvFontString;  ///< owned by the scene
};

TEST_F(ShaderMeshPixels, EveryStyleOfEdgesLooksTheSame)
{
    for (const int style : {0, 1, 2})
    {
        SCOPED_TRACE(style);
        text->SetBevelStyle(style);
        ExpectSamePicture();
    }
}

TEST_F(ShaderMeshPixels, OrthographicPicturesLookTheSame)
{
    view.SetProjectionOrthographic();
    view.SetProjectionOrthographicHeight(3);
    ExpectSamePicture();
}

TEST_F(ShaderMeshPixels, MirroredAndScaledNodesLookTheSame)
{
    text->SetScale(DVector(-1, 1, 0.4));
    text->CalculateBounds();
    ExpectSamePicture();
    text->GetTransform()->SetScale(DVector(1.3, -0.8, 2));
    ExpectSamePicture();
}

TEST_F(ShaderMeshPixels, HighlightsLookTheSame)
{
    NamedColor shiny = MaterialOf(0.4f, 0.1f, 0.1f);
    shiny.SetSpecularColor(ColorVector(0.9f, 0.8f, 0.7f, 1));
    for (const float shininess : {0.0f, 1.0f, 40.0f, 128.0f})
    {
        SCOPED_TRACE(shininess);
        shiny.SetShininess(shininess);
        text->SetFaceColor(shiny);
        text->SetBevelColor(shiny);
        text->SetEdgeColor(shiny);
        for (const bool isLocal : {false, true})
        {
            isLocal ? scene.SetLightingLocalViewer() : scene.ClearLightingLocalViewer();
            ExpectSamePicture();
        }
    }
}

TEST_F(ShaderMeshPixels, LightsWithPlacesAndConesLookTheSame)
{
    LightObject& light = LightInUse();
    light.ClearDirectional();
    light.Translate(DVector(0.5, 0.4, 1.5));
    NamedColor colors = light.GetColors();
    colors.SetAmbientColor(ColorVector(0.1f, 0.2f, 0.1f, 1));
    colors.SetDiffuseColor(ColorVector(0.9f, 0.8f, 0.3f, 1));
    light.SetColors(colors);
    ExpectSamePicture();
    for (const double exponent : {0.0, 5.0, 128.0})
    {
        for (const double cutoff : {25.0, 90.0})
        {
            SCOPED_TRACE(testing::Message() << "exponent " << exponent << ", cutoff " << cutoff);
            light.SetSpotExponent(exponent);
            light.SetSpotCutoffAngle(cutoff);
            ExpectSamePicture();
        }
    }
}

TEST_F(ShaderMeshPixels, LightsThatStayWithTheCameraLookTheSame)
{
    scene.ClearRotateLightsWithScene();
    scene.SetGlobalAmbientColor(ColorVector(0.4f, 0.1f, 0.3f, 1));
    ExpectSamePicture();
    LightInUse().ClearActive();
    ExpectSamePicture();
}

TEST_F(ShaderMeshPixels, TransparentTextsLookTheSame)
{
    text->SetInterCharacterSpacing(-0.3f);
    text->SetFaceColor(MaterialOf(0.9f, 0.3f, 0.1f, 0.5f));
    text->SetEdgeColor(MaterialOf(0.1f, 0.8f, 0.2f, 0.3f));
    text->SetBevelColor(MaterialOf(0.2f, 0.3f, 0.9f, 0.7f));
    ExpectSamePicture(2);  // a level for each of two surfaces, one before the other
}

TEST_F(ShaderMeshPixels, MaterialsThatEmitLightKeepTheColorsOfThoseBefore)
{
    NamedColor emitting = MaterialOf(0.5f, 0.5f, 0.5f);
    emitting.SetEmissionColor(ColorVector(0.1f, 0.1f, 0.2f, 1));
    text->SetFaceColor(emitting);
    ExpectSamePicture();
    text->SetEdgeColor(emitting);
    ExpectSamePicture();
}

TEST_F(ShaderMeshPixels, TexturesLookTheSame)
{
    const PictureFile picture("shader-texture", 5, 4, [](int x, int y) {
        return Rgb{40 * x + 40, 60 * y + 40, 100};
    });
    TextureMap& texture = *text->GetTexture();
    texture.Load(picture.Path());
    texture.textureFlags |= TextureMap::Textured;
    ASSERT_TRUE(texture.ShouldTexture());
    texture.SetRepeatRate(3);
    for (const DWORD modulate : {1u, 0u})
    {
        for (const unsigned quality : {0u, 1u, 2u})
        {
            SCOPED_TRACE(testing::Message() << "modulate " << modulate << ", quality " << quality);
            texture.modulate = modulate;
            texture.SetQuality(quality);
            ExpectSamePicture();
        }
    }
}

TEST_F(ShaderMeshPixels, ImportedMeshesLookTheSameFromBothSides)
{
    TriangularMeshObject& ball = AddBall();
    ExpectSamePicture();
    ball.GetFaces()->SetSize(200);  // open, so that the inside is seen
    ExpectSamePicture();
}

TEST_F(ShaderMeshPixels, TextsWithProfilesLookTheSame)
{
    auto* const profiled = new orvane::OrvProfileString;
    AddText(profiled);
    profiled->SetProfile(orvane::ParseProfile("round -0.04"));
    scene.RemoveChild(text);
    delete text;
    ExpectSamePicture();
}

TEST_F(ShaderMeshPixels, AnotherMeshReplacesTheOneBefore)
{
    AddBall();
    const HeadlessContext context(width, height, HeadlessContext::Functions::OnlyCore);
    REQUIRE_CONTEXT(context);
    ShaderMeshDrawing drawing;
    const ShaderView camera = ShaderViewOf(view);
    const auto draw = [&] {
        Clear();
        drawing.Draw(camera);
        return context.ReadPixels();
    };
    const Picture empty = draw();
    EXPECT_EQ(empty.CountOther(empty.At(0, 0)), 0) << "there is no mesh yet";
    drawing.SetMesh(BuildSceneMesh());
    const Picture before = draw();
    text->SetTextString("go");
    EXPECT_TRUE(PicturesMatch(before, draw(), "shader-mesh-kept", 0));
    drawing.SetMesh(BuildSceneMesh());
    EXPECT_FALSE(PicturesMatch(before, draw(), "shader-mesh-replaced"));
    drawing.SetMesh({});
    EXPECT_TRUE(PicturesMatch(empty, draw(), "shader-mesh-empty", 0));
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(ShaderMeshPixels, TheStateOfAContextWithFixedFunctionsIsAsBefore)
{
    const HeadlessContext context(width, height);
    REQUIRE_CONTEXT(context);
    text->SetFaceColor(MaterialOf(0.9f, 0.3f, 0.1f, 0.5f));
    AddBall();
    glFrontFace(GL_CW);
    glEnable(GL_BLEND);
    glBlendFunc(GL_ONE, GL_ONE);
    ShaderMeshDrawing drawing;
    const std::vector<float> expected = StateOfOpenGL();
    drawing.SetMesh(BuildSceneMesh());
    drawing.Draw(ShaderViewOf(view));
    EXPECT_EQ(StateOfOpenGL(), expected);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(ShaderMeshPixels, ContextsWithFixedFunctionsDrawTheSame)
{
    EXPECT_TRUE(PicturesMatch(WithShaders(HeadlessContext::Functions::OnlyCore),
                              WithShaders(HeadlessContext::Functions::Fixed), "shader-fixed", 0));
}

TEST(ShaderMeshDrawing, WithoutAContextThereIsAnError)
{
    ASSERT_EQ(wglGetCurrentContext(), nullptr);
    EXPECT_THROW(ShaderMeshDrawing(), orvane::Error);
}

}  // namespace
