// SPDX-License-Identifier: MIT
// A scene with a little of everything, drawn as a user sees it.

#include "extrude/Library.h"
#include "extrude/OrvFontList.h"
#include "host/CArchive.h"
#include "host/CFile.h"
#include "imaging/GLMemoryDIB.h"
#include "imaging/MemoryMappedDIB.h"
#include "platform/Errors.h"
#include "platform/OpenGL.h"
#include "platform/Rendering.h"
#include "scene/DrawingParameters.h"
#include "scene/OrvFontString.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"
#include "tests/support/HeadlessContext.h"
#include "tests/support/PictureFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <utility>

namespace
{

constexpr int width = 230;
constexpr int height = 152;

Rgb Weave(int x, int y)
{
    return (x / 3 + y / 2) % 2 == 0 ? Rgb{200, 180, 40} : Rgb{40, 90, 60 + 4 * x};
}

NamedColor Material(float red, float green, float blue, float alpha)
{
    NamedColor material;
    material.SetAmbientColor(ColorVector(red / 2, green / 2, blue / 2, 1.0f));
    material.SetDiffuseColor(ColorVector(red, green, blue, alpha));
    return material;
}

// Texts of every edge style, one of them textured, one transparent, one inside another; three kinds
// of lights; a tiled background; a camera that has moved, and one that is saved.
class WholeScenes : public testing::Test
{
protected:
    void SetUp() override
    {
        // How many pixels change sides depends on the letters.
        CreateFontList(0, nullptr);
        if (GetFontList()->FindName("DejaVu Sans") == nullptr)
        {
            FAIL() << "DejaVu Sans is not installed";
        }
        OrvFontString& first = AddText(scene, "Rg", 2, Material(0.9f, 0.6f, 0.2f, 1));
        first.SetTranslation(DVector(-1.2, 0.2, 0.0));
        first.SetTexture(Textured(1));
        OrvFontString& second = AddText(scene, "&8", 1, Material(0.2f, 0.5f, 0.9f, 0.5f));
        second.SetTranslation(DVector(0.4, -0.3, 0.3));
        second.Rotate(25, DVector(0.0, 1.0, 0.0));
        OrvFontString& third = AddText(second, "o", 0, Material(0.3f, 0.8f, 0.3f, 1));
        third.SetTranslation(DVector(0.6, 0.7, -0.2));
        third.SetSelected();  // of the view, not kept

        LightObject* const spot = scene.AddLight();
        spot->ClearDirectional();
        spot->SetTranslation(DVector(0.5, 1.0, 3.0));
        spot->SetSpotCutoffAngle(40);
        scene.SetGlobalAmbientColor(ColorVector(0.3f, 0.3f, 0.35f, 1.0f));
        scene.Rotate(12, DVector(1.0, 0.0, 0.0));
        *scene.GetTexture() = Textured(0);
        scene.GetTexture()->SetHorizontalLocation(5);
        scene.GetTexture()->SetVerticalLocation(-3);

        view.AttachScene(&scene);
        view.SetShowTextures();
        view.SetProjectionFieldOfViewAngle(30);
        SizeView(view);
        view.SaveCurrentView("before");
        view.ZoomExtents();
    }

    static OrvFontString& AddText(DrawingObject& parent, const char* text, int style,
                                  const NamedColor& color)
    {
        auto* const node = new OrvFontString;
        parent.AddChild(node);
        node->AttachFont(GetFontList()->GetAt(GetFontList()->FindName("DejaVu Sans")));
        node->SetTextString(text);
        node->SetBevelStyle(style);
        node->SetBevelDepth(0.03f);
        node->SetFaceColor(color);
        node->SetUseEdgeColor();
        node->SetUseBevelColor();
        return *node;
    }

    TextureMap Textured(DWORD quality) const
    {
        TextureMap texture(picture.Path());
        texture.textureFlags |= TextureMap::Textured;
        texture.SetQuality(quality);
        texture.SetRepeatRate(3);
        return texture;
    }

    // What a file does not keep.
    static void SizeView(ViewObject& sized)
    {
        sized.SetScaledSize(width, height);
        sized.SetViewSize(width, height);
    }

    const PictureFile picture{"weave", 16, 12, Weave};
    SceneObject scene;
    ViewObject view;
};

std::vector<BYTE> Stored(const SceneObject& scene, const ViewObject& view)
{
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    archive.WriteObject(&scene);
    archive.WriteObject(&view);
    archive.Close();
    return file.Bytes();
}

Picture Drawn(const HeadlessContext& context, ViewObject& view)
{
    DrawingParameters parameters;
    EXPECT_EQ(view.Draw(&parameters), 1);
    return context.ReadPixels();
}

TEST_F(WholeScenes, SavedLoadedAndSavedAgainGiveTheSameBytesAndTheSamePixels)
{
    const HeadlessContext context(width, height);
    REQUIRE_CONTEXT(context);
    const Picture before = Drawn(context, view);
    // There is something to see: texts before the tiles.
    scene.GetHeadChild()->SetDeleted();
    EXPECT_FALSE(PicturesMatch(before, Drawn(context, view), "whole-scene-without-a-text", 1, 300));
    scene.GetHeadChild()->ClearDeleted();

    std::vector<BYTE> bytes = Stored(scene, view);
    CMemFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    CArchive archive(&file, CArchive::load);
    const std::unique_ptr<SceneObject> loadedScene(
        static_cast<SceneObject*>(archive.ReadObject(RUNTIME_CLASS(SceneObject))));
    const std::unique_ptr<ViewObject> loadedView(
        static_cast<ViewObject*>(archive.ReadObject(RUNTIME_CLASS(ViewObject))));
    EXPECT_EQ(Stored(*loadedScene, *loadedView), bytes);

    loadedView->AttachScene(loadedScene.get());
    SizeView(*loadedView);
    EXPECT_TRUE(PicturesMatch(before, Drawn(context, *loadedView), "whole-scene-loaded", 0));
    // Drawing changes nothing that is kept.
    EXPECT_EQ(Stored(*loadedScene, *loadedView), bytes);

    // The camera that was saved, too.
    EXPECT_EQ(view.RestoreSavedView(0), 1);
    EXPECT_EQ(loadedView->RestoreSavedView("before"), 1);
    EXPECT_TRUE(PicturesMatch(Drawn(context, view), Drawn(context, *loadedView),
                              "whole-scene-saved-camera", 0));
}

// The picture in bands of at most that size, copied together; null without a context.
std::unique_ptr<MemoryMappedDIB> DrawInBands(ViewObject& view, int bandWidth, int bandHeight,
                                             int bits)
{
    GLMemoryDIB band;
    band.maximumBandWidth = bandWidth;
    band.maximumBandHeight = bandHeight;
    auto picture = std::make_unique<MemoryMappedDIB>();
    if (!band.Create(view.GetProjection(), bits) ||
        !picture->Create(width, height, 72, 72, bits, CString()))
    {
        return nullptr;
    }
    CutQuadsAlike();
    DrawingParameters parameters;
    parameters.SetRender();
    parameters.SetShowObject();
    parameters.SetShowChildren();
    parameters.SetShowTextures();
    parameters.SetShowBackgroundTexture();
    for (int row = 0; row < std::ceil(band.GetBandingRows()); ++row)
    {
        for (int column = 0; column < std::ceil(band.GetBandingColumns()); ++column)
        {
            band.PrepareNextBand(row, column, &parameters);
            EXPECT_EQ(view.Draw(&parameters), 1);
            EXPECT_EQ(band.CopyBand(picture->memoryDC, 0, 0, row, column), 1);
        }
    }
    return picture;
}

// Pixels of two pictures that differ by more than a level of their depth.
struct Differences
{
    int count = 0;
    int inOneLine = 0;  // row or column, at most
};

Differences Compare(const MemoryMappedDIB& a, const MemoryMappedDIB& b)
{
    MemoryMappedDIB converted[2];
    const MemoryMappedDIB* const pictures[] = {&a, &b};
    for (int i = 0; i < 2; ++i)
    {
        converted[i].Create(width, height, 72, 72, 24, CString());
        SetDIBits(nullptr, converted[i].dibSection, 0, height, pictures[i]->GetDIBBits(),
                  pictures[i]->GetDIBInfo(), DIB_RGB_COLORS);
    }
    const BYTE* const first = static_cast<const BYTE*>(converted[0].GetDIBBits());
    const BYTE* const second = static_cast<const BYTE*>(converted[1].GetDIBBits());
    // Blue, green, red. Dithered, a level is a step between colours of the palette.
    using Level = std::array<int, 3>;
    const Level level = a.bitCount == 8    ? Level{85, 37, 37}
                        : a.bitCount == 16 ? Level{9, 9, 9}
                                           : Level{1, 1, 1};
    Differences differences;
    std::vector<int> rows(height);
    std::vector<int> columns(width);
    for (int y = 0; y < height; ++y)
    {
        for (int x = 0; x < width; ++x)
        {
            const int at = (3 * width + 3) / 4 * 4 * y + 3 * x;
            const auto differs = [&](int part) {
                return std::abs(first[at + part] - second[at + part]) > level[part];
            };
            if (differs(0) || differs(1) || differs(2))
            {
                ++differences.count;
                differences.inOneLine = std::max({differences.inOneLine, ++rows[y], ++columns[x]});
            }
        }
    }
    return differences;
}

// Corners are put on a grid of a part of a pixel, in each band anew, which now and then moves an
// edge over the middle of a pixel. A seam would be a line of pixels.
void ExpectBandsToJoin(const MemoryMappedDIB& whole, const MemoryMappedDIB& joined)
{
    const Differences differences = Compare(whole, joined);
    EXPECT_LE(differences.count, 3);
    EXPECT_LE(differences.inOneLine, 1);
}

TEST_F(WholeScenes, BandsJoinToThePictureDrawnAtOnceInEveryDepth)
{
    for (const int bits : {8, 16, 24, 32})
    {
        const auto whole = DrawInBands(view, width, height, bits);
        if (whole == nullptr)
        {
            FAIL() << "no OpenGL context: " << GetLastErrorText();
        }
        // The pattern of dithering is four pixels wide and high.
        for (const auto& [bandWidth, bandHeight] :
             {std::pair(64, 40), std::pair(width, 36), std::pair(20, height)})
        {
            SCOPED_TRACE(std::to_string(bits) + " bits, " + std::to_string(bandWidth) + " x " +
                         std::to_string(bandHeight));
            const auto joined = DrawInBands(view, bandWidth, bandHeight, bits);
            ASSERT_NE(joined, nullptr);
            ExpectBandsToJoin(*whole, *joined);
        }
    }
}

TEST_F(WholeScenes, BandsJoinWhereverTheyMeet)
{
    const auto whole = DrawInBands(view, width, height, 24);
    if (whole == nullptr)
    {
        FAIL() << "no OpenGL context: " << GetLastErrorText();
    }
    for (const int bandWidth : {23, 61, 115, 200, width})
    {
        for (const int bandHeight : {9, 37, 64, 101, height})
        {
            SCOPED_TRACE(std::to_string(bandWidth) + " x " + std::to_string(bandHeight));
            const auto joined = DrawInBands(view, bandWidth, bandHeight, 24);
            ASSERT_NE(joined, nullptr);
            ExpectBandsToJoin(*whole, *joined);
        }
    }
}

}  // namespace
