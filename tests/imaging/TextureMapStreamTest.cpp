// SPDX-License-Identifier: MIT
#include "imaging/TextureMap.h"

#include "tests/support/FakeRendering.h"
#include "tests/support/GoldenFile.h"
#include "tests/support/gl/GlRecorder.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>

namespace
{

using Lines = std::vector<std::string>;

// A texture map with pixels of that size, ready to be used.
class Textures : public testing::Test
{
protected:
    void MakeImage(int width, int height)
    {
        texture.FreeImage();
        texture.image = new _RGBImageRecord(
            width, height, new BYTE[static_cast<std::size_t>(width) * height * 3]());
        texture.textureFlags = TextureMap::Valid | TextureMap::Textured;
    }

    // The extents of the OpenGL texture that is made of an image.
    std::string Extents(int width, int height, GLint limit = 16384)
    {
        MakeImage(width, height);
        GlRecording recording;
        recording.SetInteger(GL_MAX_TEXTURE_SIZE, {limit});
        EXPECT_EQ(texture.GenerateTextureMaps(), 1);
        const Lines lines = recording.Only({"glTexImage2D"});
        if (lines.size() != 1)
        {
            return "";
        }
        int madeWidth = 0;
        int madeHeight = 0;
        std::sscanf(lines[0].c_str(), "glTexImage2D GL_TEXTURE_2D 0 3 %d %d 0", &madeWidth,
                    &madeHeight);
        return std::to_string(madeWidth) + " x " + std::to_string(madeHeight);
    }

    TextureMap texture;
};

TEST_F(Textures, AnImageIsScaledToPowersOfTwo)
{
    MakeImage(300, 100);
    texture.SetQuality(1);
    GlRecording recording;
    EXPECT_EQ(texture.GenerateTextureMaps(), 1);
    EXPECT_EQ(
        recording.Lines(),
        (Lines{"glPixelStorei GL_UNPACK_ALIGNMENT 1",
               "glTexParameteri GL_TEXTURE_2D GL_TEXTURE_MAG_FILTER GL_LINEAR",
               "glTexParameteri GL_TEXTURE_2D GL_TEXTURE_MIN_FILTER GL_LINEAR",
               "glGetIntegerv GL_MAX_TEXTURE_SIZE",
               "gluScaleImage GL_RGB 300 100 GL_UNSIGNED_BYTE data 256 128 GL_UNSIGNED_BYTE data",
               "glTexImage2D GL_TEXTURE_2D 0 3 256 128 0 GL_RGB GL_UNSIGNED_BYTE data"}));
}

TEST_F(Textures, TheirExtentsAreTheNextPowersOfTwoUpToTheLimit)
{
    EXPECT_EQ(Extents(300, 100), "256 x 128");
    EXPECT_EQ(Extents(64, 64), "64 x 64");
    EXPECT_EQ(Extents(1000, 1000), "256 x 256");
    EXPECT_EQ(Extents(65, 129), "128 x 256");
    EXPECT_EQ(Extents(256, 257), "256 x 256");
    EXPECT_EQ(Extents(1000, 30, 64), "64 x 32");
    EXPECT_EQ(Extents(1, 3), "1 x 4");
}

TEST_F(Textures, ThePackAlignmentIsAskedOnlyForRowsThatItPads)
{
    const auto scaling = [this](int width) {
        MakeImage(width, 5);
        GlRecording recording;
        EXPECT_EQ(texture.GenerateTextureMaps(), 1);
        return recording.Only({"glPixelStorei", "glGetIntegerv", "gluScaleImage"});
    };
    EXPECT_EQ(scaling(4),
              (Lines{"glPixelStorei GL_UNPACK_ALIGNMENT 1", "glGetIntegerv GL_MAX_TEXTURE_SIZE",
                     "gluScaleImage GL_RGB 4 5 GL_UNSIGNED_BYTE data 4 8 GL_UNSIGNED_BYTE data"}));
    EXPECT_EQ(scaling(2),
              (Lines{"glPixelStorei GL_UNPACK_ALIGNMENT 1", "glGetIntegerv GL_MAX_TEXTURE_SIZE",
                     "glGetIntegerv GL_PACK_ALIGNMENT",
                     "gluScaleImage GL_RGB 2 5 GL_UNSIGNED_BYTE data 2 8 GL_UNSIGNED_BYTE data"}));
}

// Ends the mutex, so that waiting for it fails.
void BreakMutex(TextureMap& map)
{
    CloseHandle(map.mutex);
    map.mutex = nullptr;
}

TEST_F(Textures, ATextureThatCannotBeOwnedIsNeitherMadeNorEnabled)
{
    MakeImage(4, 4);
    BreakMutex(texture);
    GlRecording recording;
    EXPECT_EQ(texture.GetOwnership(), nullptr);
    EXPECT_EQ(texture.GenerateTextureMaps(), 0);
    EXPECT_EQ(texture.EnableTextureMap(), 0);
    EXPECT_EQ(recording.Lines(), Lines{});
}

// Switches the texture off while the calling thread waits for the mutex.
class SwitchingOff
{
public:
    explicit SwitchingOff(TextureMap& map)
    {
        beforeWaitForSingleObject = [&map] { map.textureFlags &= ~TextureMap::Textured; };
    }
    ~SwitchingOff() { beforeWaitForSingleObject = nullptr; }
    SwitchingOff(const SwitchingOff&) = delete;
    SwitchingOff& operator=(const SwitchingOff&) = delete;
};

TEST_F(Textures, ATextureThatIsSwitchedOffWhileItsMutexIsWaitedForIsNotUsed)
{
    const std::pair<const char*, int (TextureMap::*)()> uses[] = {
        {"generate", &TextureMap::GenerateTextureMaps},
        {"prepare", &TextureMap::PrepareTextureMap},
        {"enable", &TextureMap::EnableTextureMap},
    };
    for (const auto& [name, use] : uses)
    {
        MakeImage(4, 4);
        GlRecording recording;
        {
            const SwitchingOff another(texture);
            EXPECT_EQ((texture.*use)(), 0) << name;
        }
        EXPECT_EQ(recording.Only({"glTexImage2D", "glEnable", "glTexEnvi"}), Lines{}) << name;
        EXPECT_EQ(texture.ReleaseOwnership(), 0) << name;  // given back
    }
}

TEST_F(Textures, DitheringDrawsTheImageAtTheWindowsCorner)
{
    MakeImage(3, 2);
    FakeRendering fake;
    GlRecording recording;
    ASSERT_EQ(texture.GenerateDitheredImage(), 1);
    EXPECT_TRUE(IsGolden("bitmap/dithered.txt", recording.Text()));
}

TEST_F(Textures, DitheringThatFailsMakesTheSavedContextCurrentInTheEnd)
{
    MakeImage(3, 2);
    FakeRendering fake;
    fake.refusesNew = true;
    fake.currentDc = CreateCompatibleDC(nullptr);
    const HDC saved = fake.currentDc;
    GlRecording recording;
    EXPECT_EQ(texture.GenerateDitheredImage(), 0);
    EXPECT_EQ(texture.ditheredImage, nullptr);
    EXPECT_EQ(recording.Lines().back(), "wglMakeCurrent context");
    DeleteDC(saved);
}

TEST_F(Textures, QualityChoosesTheFilters)
{
    const auto filters = [this](unsigned long quality) {
        MakeImage(4, 4);
        texture.SetQuality(quality);
        GlRecording recording;
        EXPECT_EQ(texture.GenerateTextureMaps(), 1);
        return recording.Only({"glTexParameteri"});
    };
    const Lines nearest = {"glTexParameteri GL_TEXTURE_2D GL_TEXTURE_MAG_FILTER GL_NEAREST",
                           "glTexParameteri GL_TEXTURE_2D GL_TEXTURE_MIN_FILTER GL_NEAREST"};
    EXPECT_EQ(filters(0), nearest);
    EXPECT_EQ(filters(3), nearest);
    EXPECT_EQ(filters(1), (Lines{"glTexParameteri GL_TEXTURE_2D GL_TEXTURE_MAG_FILTER GL_LINEAR",
                                 "glTexParameteri GL_TEXTURE_2D GL_TEXTURE_MIN_FILTER GL_LINEAR"}));
}

TEST_F(Textures, Quality2HandsTheUnscaledImageToTheMipmapBuilder)
{
    MakeImage(300, 100);
    texture.SetQuality(2);
    GlRecording recording;
    EXPECT_EQ(texture.GenerateTextureMaps(), 1);
    EXPECT_EQ(recording.Lines(),
              (Lines{"glPixelStorei GL_UNPACK_ALIGNMENT 1",
                     "glTexParameteri GL_TEXTURE_2D GL_TEXTURE_MAG_FILTER GL_LINEAR",
                     "glTexParameteri GL_TEXTURE_2D GL_TEXTURE_MIN_FILTER GL_LINEAR_MIPMAP_NEAREST",
                     "glGetIntegerv GL_MAX_TEXTURE_SIZE",
                     "gluBuild2DMipmaps GL_TEXTURE_2D 3 300 100 GL_RGB GL_UNSIGNED_BYTE data"}));
}

TEST_F(Textures, AnImageBeyondTheLimitsIsReducedBeforeItIsHandedOver)
{
    const auto handedOver = [this](int width, int height, unsigned long quality) {
        MakeImage(width, height);
        texture.SetQuality(quality);
        GlRecording recording;
        EXPECT_EQ(texture.GenerateTextureMaps(), 1);
        int madeWidth = 0;
        int madeHeight = 0;
        const Lines lines = recording.Only({"gluScaleImage", "gluBuild2DMipmaps"});
        EXPECT_EQ(lines.size(), 1U);
        std::sscanf(
            lines.at(0).c_str(),
            quality == 2 ? "gluBuild2DMipmaps GL_TEXTURE_2D 3 %d %d" : "gluScaleImage GL_RGB %d %d",
            &madeWidth, &madeHeight);
        return std::to_string(madeWidth) + " x " + std::to_string(madeHeight);
    };
    for (const unsigned long quality : {0UL, 1UL, 2UL})
    {
        EXPECT_EQ(handedOver(16384, 1, quality), "16384 x 1");
        EXPECT_EQ(handedOver(16385, 1, quality), "16384 x 1");
        EXPECT_EQ(handedOver(1, 16384, quality), "1 x 16384");
        EXPECT_EQ(handedOver(1, 1000000, quality), "1 x 16384");
    }
    EXPECT_EQ(handedOver(4096, 4096, 2), "4096 x 4096");
    EXPECT_NE(handedOver(4097, 4096, 2), "4097 x 4096");
}

TEST_F(Textures, TexturesAreGeneratedOnlyIfValidAndSwitchedOn)
{
    MakeImage(4, 4);
    for (const DWORD flags : {DWORD{0}, TextureMap::Valid, TextureMap::Textured})
    {
        texture.textureFlags = flags;
        GlRecording recording;
        EXPECT_EQ(texture.GenerateTextureMaps(), 0);
        EXPECT_EQ(recording.Lines(), Lines{});
        EXPECT_EQ(texture.textureFlags, flags);
    }
}

TEST_F(Textures, GeneratingFromAFileThatIsNoPictureMakesTheTextureInvalid)
{
    const std::string path = testing::TempDir() + "words_stream.bmp";
    std::ofstream(path) << "words";
    EXPECT_EQ(texture.Load(path.c_str()), 1);
    texture.textureFlags |= TextureMap::Textured;
    GlRecording recording;
    EXPECT_EQ(texture.GenerateTextureMaps(), 0);
    EXPECT_EQ(recording.Lines(), Lines{});
    EXPECT_EQ(texture.textureFlags, TextureMap::Textured);
    EXPECT_EQ(texture.ReleaseOwnership(), 0);  // given back
    std::remove(path.c_str());
}

TEST_F(Textures, PreparingSetsHowTheTextureIsApplied)
{
    texture.textureFlags = TextureMap::Valid | TextureMap::Textured;
    const auto prepared = [](const char* mode) {
        return Lines{"glEnable GL_TEXTURE_2D", "glPixelStorei GL_UNPACK_ALIGNMENT 1",
                     "glTexParameteri GL_TEXTURE_2D GL_TEXTURE_WRAP_S GL_REPEAT",
                     "glTexParameteri GL_TEXTURE_2D GL_TEXTURE_WRAP_T GL_REPEAT",
                     std::string("glTexEnvi GL_TEXTURE_ENV GL_TEXTURE_ENV_MODE ") + mode};
    };
    GlRecording recording;
    EXPECT_EQ(texture.PrepareTextureMap(), 1);
    EXPECT_EQ(recording.Lines(), prepared("GL_MODULATE"));
    recording.Clear();
    texture.modulate = 0;
    EXPECT_EQ(texture.PrepareTextureMap(), 1);
    EXPECT_EQ(recording.Lines(), prepared("GL_DECAL"));
    recording.Clear();
    texture.textureFlags = TextureMap::Valid;
    EXPECT_EQ(texture.PrepareTextureMap(), 0);
    EXPECT_EQ(recording.Lines(), (Lines{"glDisable GL_TEXTURE_2D"}));
}

TEST_F(Textures, EnablingKeepsOwnershipUntilDisabling)
{
    texture.textureFlags = TextureMap::Valid | TextureMap::Textured;
    GlRecording recording;
    EXPECT_EQ(texture.EnableTextureMap(), 1);
    EXPECT_EQ(texture.EnableTextureMap(), 1);
    EXPECT_EQ(texture.DisableTextureMap(), 1);
    EXPECT_NE(texture.ReleaseOwnership(), 0);
    EXPECT_EQ(texture.ReleaseOwnership(), 0);
    EXPECT_EQ(texture.DisableTextureMap(), 1);  // unowned: harmless
    EXPECT_EQ(recording.Lines(), (Lines{"glEnable GL_TEXTURE_2D", "glEnable GL_TEXTURE_2D",
                                        "glDisable GL_TEXTURE_2D", "glDisable GL_TEXTURE_2D"}));
    recording.Clear();
    texture.textureFlags = 0;
    EXPECT_EQ(texture.EnableTextureMap(), 0);
    EXPECT_EQ(texture.ReleaseOwnership(), 0);
    EXPECT_EQ(recording.Lines(), Lines{});
}

}  // namespace
