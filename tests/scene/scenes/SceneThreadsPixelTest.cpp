// SPDX-License-Identifier: MIT
#include "scene/DrawingParameters.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"
#include "tests/support/HeadlessContext.h"
#include "tests/support/PanelNode.h"
#include "tests/support/PictureFile.h"
#include "tests/support/TerminationEvent.h"
#include "tests/support/Threads.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace
{

constexpr int size = 48;

Rgb Red(int, int)
{
    return {255, 0, 0};
}

Rgb Green(int, int)
{
    return {0, 255, 0};
}

// What an application does with a texture that is drawn at the time.
void Exchange(TextureMap& texture, const char* path)
{
    ASSERT_NE(texture.GetOwnership(), nullptr);
    texture.FreeImage();
    texture.Load(path);
    texture.textureFlags |= TextureMap::Textured;
    texture.ReleaseOwnership();
}

// A background and a textured panel over a quarter of it.
class DrawnScenes : public testing::Test
{
protected:
    DrawnScenes()
    {
        scene.AddChild(panel);
        scene.GetTexture()->Load(red.Path());
        scene.GetTexture()->placement = 0;
        Exchange(*panel->GetTexture(), green.Path());
        view.AttachScene(&scene);
        view.SetScaledSize(size, size);
        view.SetViewSize(size, size);
        view.SetShowTextures();
        parameters.SetTerminationEvent(event.Get());
    }

    /// Draws while another thread has the texture, whose state means nothing until it is green.
    void DrawWhileItChanges(TextureMap& texture)
    {
        const TerminationEvent taken(false);
        const pid_t drawer = gettid();
        std::atomic<bool> isDrawing = false;
        std::atomic<bool> isDrawn = false;
        std::thread application([&] {
            texture.GetOwnership();
            SetEvent(taken.Get());
            texture.textureFlags = 0;  // never to be seen
            while (!isDrawing || (!isDrawn && !IsAsleep(drawer)))
            {
                std::this_thread::yield();
            }
            Exchange(texture, green.Path());
            texture.ReleaseOwnership();
        });
        WaitForSingleObject(taken.Get(), INFINITE);
        isDrawing = true;
        EXPECT_EQ(view.Draw(&parameters), 1);
        isDrawn = true;
        application.join();
    }

    HeadlessContext context{size, size};
    const PictureFile red{"threads-red", 8, 8, Red};
    const PictureFile green{"threads-green", 16, 16, Green};
    TerminationEvent event{false};
    PanelNode* panel = new PanelNode(0.5f, 4);
    SceneObject scene;
    ViewObject view;
    DrawingParameters parameters;
};

TEST_F(DrawnScenes, AnotherThreadMayChangeTexturesAndStopTheDrawing)
{
    REQUIRE_CONTEXT(context);
    EXPECT_EQ(view.Draw(&parameters), 1);
    std::atomic<int> drawn = 0;
    std::thread application([&] {
        for (int i = 0; i < 100 || drawn < 3; ++i)
        {
            Exchange(*panel->GetTexture(), i % 2 == 0 ? red.Path() : green.Path());
            Exchange(*scene.GetTexture(), i % 2 == 0 ? green.Path() : red.Path());
            TextureMap other(i % 2 == 0 ? red.Path() : green.Path());
            panel->SetTexture(other);
        }
        Exchange(*scene.GetTexture(), red.Path());
        event.Signal();
    });
    // Drawn until it is stopped; each picture is whole until then.
    while (view.Draw(&parameters))
    {
        ++drawn;
        const Rgb corner = context.Pixel(1, 1);
        EXPECT_TRUE(corner == Red(0, 0) || corner == Green(0, 0)) << corner;
    }
    application.join();

    // Stopped for good, until the event no longer counts.
    EXPECT_EQ(view.Draw(&parameters), 0);
    parameters.SetNoTerminate();
    EXPECT_EQ(view.Draw(&parameters), 1);
    EXPECT_EQ(context.Pixel(1, 1), Red(0, 0));
    // Nobody owns a texture any more.
    EXPECT_EQ(panel->GetTexture()->ReleaseOwnership(), 0);
    EXPECT_EQ(scene.GetTexture()->ReleaseOwnership(), 0);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(DrawnScenes, ADrawWaitsForATextureThatIsBeingChanged)
{
    REQUIRE_CONTEXT(context);
    EXPECT_EQ(view.Draw(&parameters), 1);
    EXPECT_EQ(context.Pixel(1, 1), Red(0, 0));
    DrawWhileItChanges(*scene.GetTexture());
    EXPECT_EQ(context.Pixel(1, 1), Green(0, 0));
}

TEST_F(DrawnScenes, ANodeWaitsForItsTextureThatIsBeingChanged)
{
    REQUIRE_CONTEXT(context);
    view.SetTranslation(DVector(0.0, 0.0, -3.0));
    DrawWhileItChanges(*panel->GetTexture());
    const Rgb pixel = context.Pixel(size / 2, size / 2);
    EXPECT_GT(pixel.green, 50);
    EXPECT_EQ(pixel.red, 0);
}

}  // namespace
