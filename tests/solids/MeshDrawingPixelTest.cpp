// SPDX-License-Identifier: MIT
// A mesh cache draws the pictures that nodes draw in immediate mode, sees every change of a node,
// and leaves the same OpenGL state.
#include "solids/MeshCache.h"
#include "tests/support/MeshDrawingPixels.h"
#include "tests/support/PictureFile.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <new>

namespace
{
using orvane::MeshCache;

INSTANTIATE_TEST_SUITE_P(Storages, MeshDrawingPixels,
                         testing::Values(MeshCache::Storage::Automatic, MeshCache::Storage::Arrays),
                         [](const auto& each) {
                             return each.param == MeshCache::Storage::Arrays ? "Arrays" : "Buffers";
                         });

TEST_P(MeshDrawingPixels, EveryStyleAndPlaceOfEdgesLooksTheSame)
{
    REQUIRE_CONTEXT(context);
    for (const int style : {0, 1, 2, 3})
    {
        for (const int location : {0, 1, 2, 3})
        {
            SCOPED_TRACE(testing::Message() << "style " << style << ", location " << location);
            text.SetBevelStyle(style);
            text.SetBevelLocation(location);
            ExpectSamePicture(text);
        }
    }
    EXPECT_GT(cache.Bytes(), 20000u);
}

TEST_P(MeshDrawingPixels, MirroredAndTurnedTextsLookTheSame)
{
    REQUIRE_CONTEXT(context);
    text.SetBevelStyle(1);
    for (const DVector& scale : {DVector(-1, 1, 0.4), DVector(1, -1, 0.4), DVector(-1, -1, 0.4)})
    {
        text.SetScale(scale);
        text.CalculateBounds();
        ExpectSamePicture(text);
    }
    text.GetTransform()->SetScale(DVector(1, -1.5, 1));
    ExpectSamePicture(text);
    text.GetTransform()->SetRotation(150, DVector(1, 2, 3));
    ExpectSamePicture(text);
}

TEST_P(MeshDrawingPixels, OverlappingLettersLookTheSame)
{
    REQUIRE_CONTEXT(context);
    text.SetInterCharacterSpacing(-0.35f);
    text.SetInterLineSpacing(-0.6f);
    text.ClearAdjustSpacingForBevels();
    for (const int style : {0, 1})
    {
        text.SetBevelStyle(style);
        text.SetBevelLocation(0);
        ExpectSamePicture(text);
    }
}

TEST_P(MeshDrawingPixels, TransparentTextsLookTheSame)
{
    REQUIRE_CONTEXT(context);
    text.SetInterCharacterSpacing(-0.3f);
    text.SetFaceColor(MaterialOf(0.9f, 0.3f, 0.1f, 0.5f));
    for (const int style : {0, 1, 2})
    {
        text.SetBevelStyle(style);
        ExpectSamePicture(text);
    }
    text.SetEdgeColor(MaterialOf(0.1f, 0.8f, 0.2f, 0.3f));
    text.SetBevelColor(MaterialOf(0.2f, 0.3f, 0.9f, 0.7f));
    ExpectSamePicture(text);
    for (const int surface : {0, 1, 2})
    {
        text.SetSurfaceColor(MaterialOf(0.5f, 0.3f, 0.9f, 0.7f), surface);
    }
    ExpectSamePicture(text);
}

TEST_P(MeshDrawingPixels, MaterialsThatEmitLightKeepTheColorsOfThoseBefore)
{
    REQUIRE_CONTEXT(context);
    text.SetBevelStyle(1);
    for (const int surface : {0, 1, 2})
    {
        const NamedColor kept = surface == 0   ? text.GetFaceColor()
                                : surface == 1 ? text.GetEdgeColor()
                                               : text.GetBevelColor();
        NamedColor emitting = kept;
        emitting.SetEmissionColor(ColorVector(0.1f, 0.1f, 0.2f, 1));
        text.SetSurfaceColor(emitting, surface);
        // The first letter takes over what was current before, which must be the same for each
        // picture.
        Drawn(text, nullptr);
        ExpectSamePicture(text);
        text.SetSurfaceColor(kept, surface);
    }
}

TEST_P(MeshDrawingPixels, WithoutADepthTestTheOrderOfLettersIsKept)
{
    REQUIRE_CONTEXT(context);
    text.SetBevelStyle(2);
    text.SetInterCharacterSpacing(-0.3f);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_CULL_FACE);
    ExpectSamePicture(text);
}

TEST_P(MeshDrawingPixels, FlatShadingAndLinesLookTheSame)
{
    REQUIRE_CONTEXT(context);
    text.SetBevelStyle(2);
    glShadeModel(GL_FLAT);
    ExpectSamePicture(text);
    text.SetScale(DVector(-1, 1, 0.4));
    ExpectSamePicture(text);
    glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
    ExpectSamePicture(text);
}

TEST_P(MeshDrawingPixels, TexturedTextsLookTheSame)
{
    REQUIRE_CONTEXT(context);
    const PictureFile picture("mesh-texture", 4, 4, [](int x, int y) {
        return Rgb{60 * x + 40, 60 * y + 40, 100};
    });
    text.GetTexture()->Load(picture.Path());
    text.GetTexture()->textureFlags |= TextureMap::Textured;
    ASSERT_TRUE(text.GetTexture()->ShouldTexture());
    text.SetBevelStyle(1);
    ExpectSamePicture(text);
    text.GetTexture()->SetRepeatRate(3);
    ExpectSamePicture(text);
    text.SetScale(DVector(1.5, 0.8, 0.4));
    ExpectSamePicture(text);
    text.GetTexture()->SetScaleWithObject();
    ExpectSamePicture(text);
    text.GetTexture()->textureFlags = 0;
    ExpectSamePicture(text);
}

TEST_P(MeshDrawingPixels, TheStateAfterwardsIsThatOfImmediateMode)
{
    REQUIRE_CONTEXT(context);
    text.SetTextString("Rag ");  // nothing of the last letter is seen
    for (const int style : {0, 1, 2, 3})
    {
        for (const int location : {0, 1, 2, 3})
        {
            for (const DWORD colors : {0, 1, 2, 3})
            {
                for (const float depth : {0.05f, 0.2f})  // with 0.2, two bevels leave no wall
                {
                    for (const float alpha : {1.0f, 0.5f})
                    {
                        SCOPED_TRACE(testing::Message()
                                     << "style " << style << ", location " << location
                                     << ", colors " << colors << ", depth " << depth);
                        text.stringFlags = colors;
                        text.SetBevelStyle(style);
                        text.SetBevelLocation(location);
                        text.SetBevelDepth(depth);
                        text.SetEdgeColor(MaterialOf(0.25f, 0.5f, 0.75f, alpha));
                        Drawn(text, nullptr);
                        const std::vector<float> expected = StateOfOpenGL();
                        glNormal3f(1, 0, 0);
                        glColor3f(0, 0, 0);
                        Drawn(text, &cache);
                        EXPECT_EQ(StateOfOpenGL(), expected);
                    }
                }
            }
        }
    }
}

TEST_P(MeshDrawingPixels, ArraysOfTheHostAreAsBefore)
{
    REQUIRE_CONTEXT(context);
    const float colors[12] = {};
    glEnableClientState(GL_COLOR_ARRAY);
    glColorPointer(4, GL_FLOAT, 0, colors);
    ExpectSamePicture(text);
    EXPECT_TRUE(glIsEnabled(GL_COLOR_ARRAY));
    EXPECT_FALSE(glIsEnabled(GL_VERTEX_ARRAY));
    void* pointer = nullptr;
    glGetPointerv(GL_COLOR_ARRAY_POINTER, &pointer);
    EXPECT_EQ(pointer, colors);
}

/// Everything that changes how a text looks.
struct Change
{
    const char* name;
    std::function<void(OrvFontString&)> apply;
};

std::vector<Change> AllChanges()
{
    return {
        {"text", [](OrvFontString& t) { t.SetTextString("Rag\r\n&9i"); }},
        {"text in place", [](OrvFontString& t) { *t.GetTextString() = "Rug\r\n&9i"; }},
        {"shorter text", [](OrvFontString& t) { t.SetTextString("go"); }},
        {"longer text", [](OrvFontString& t) { t.SetTextString("Rag\r\ngoing"); }},
        {"style", [](OrvFontString& t) { t.SetBevelStyle(2); }},
        {"location", [](OrvFontString& t) { t.SetBevelLocation(0); }},
        {"bevel depth", [](OrvFontString& t) { t.SetBevelDepth(0.1f); }},
        {"scale of bevels", [](OrvFontString& t) { t.stringFlags |= OrvString::scaleBevelsBit; }},
        {"scale", [](OrvFontString& t) { t.SetScale(DVector(0.7, 1.3, 0.4)); }},
        {"depth", [](OrvFontString& t) { t.SetScale(DVector(0.7, 1.3, 0.8)); }},
        {"dimensions", [](OrvFontString& t) { t.SetScaledDimensions(DVector(2, 1.5, 0.8)); }},
        {"justification", [](OrvFontString& t) { t.SetJustification(0); }},
        {"letter spacing", [](OrvFontString& t) { t.SetInterCharacterSpacing(0.2f); }},
        {"line spacing", [](OrvFontString& t) { t.SetInterLineSpacing(0.3f); }},
        {"first line", [](OrvFontString& t) { t.SetFirstLineOffset(0.3f); }},
        {"spacing for bevels",
         [](OrvFontString& t) { t.stringFlags ^= OrvString::adjustSpacingForBevelsBit; }},
        {"edge color off", [](OrvFontString& t) { t.stringFlags ^= OrvString::useEdgeColorBit; }},
        {"bevel color off", [](OrvFontString& t) { t.stringFlags ^= OrvString::useBevelColorBit; }},
        {"face color", [](OrvFontString& t) { t.SetFaceColor(MaterialOf(0, 0.5f, 0.5f)); }},
        {"edge color",
         [](OrvFontString& t) {
             t.SetUseEdgeColor();
             t.SetEdgeColor(MaterialOf(0.5f, 0.5f, 0));
         }},
        {"transparency", [](OrvFontString& t) { t.SetFaceColor(MaterialOf(0, 0.5f, 0.5f, 0.5f)); }},
        {"opaque again", [](OrvFontString& t) { t.SetFaceColor(MaterialOf(0, 0.9f, 0.5f)); }},
        {"transform", [](OrvFontString& t) { t.Translate(DVector(0.2, 0.1, 0.0)); }},
        {"font", [](OrvFontString& t) { t.AttachFont(orvane::ChooseFont("DejaVu Sans Mono")); }},
        {"no font", [](OrvFontString& t) { t.AttachFont(nullptr); }},
        {"font again", [](OrvFontString& t) { t.AttachFont(orvane::ChooseFont("DejaVu Sans")); }},
        {"no text", [](OrvFontString& t) { t.SetTextString(""); }},
    };
}

TEST_P(MeshDrawingPixels, EveryChangeIsSeenAtTheNextDraw)
{
    REQUIRE_CONTEXT(context);
    text.SetBevelStyle(1);
    // Far away, so that no letter reaches beyond the picture.
    glMatrixMode(GL_PROJECTION);
    glTranslated(0, 0, -10);
    ExpectSamePicture(text);
    for (const Change& change : AllChanges())
    {
        SCOPED_TRACE(change.name);
        const Picture before = Drawn(text, nullptr);
        change.apply(text);
        const Picture after = Drawn(text, nullptr);
        EXPECT_FALSE(PicturesMatch(before, after, "mesh-unchanged")) << "changes nothing";
        EXPECT_TRUE(PicturesMatch(after, Drawn(text, &cache), "mesh-changed"));
    }
}

TEST_P(MeshDrawingPixels, ANewNodeAtTheAddressOfADeletedOneIsDrawnAsItIs)
{
    REQUIRE_CONTEXT(context);
    alignas(OrvFontString) std::byte place[sizeof(OrvFontString)];
    for (const char* const characters : {"Rag", "go", "Rag"})
    {
        auto* const node = new (place) OrvFontString(text);
        node->SetTextString(characters);
        ExpectSamePicture(*node);
        node->~OrvFontString();
    }
}

TEST_P(MeshDrawingPixels, WithoutRoomNodesDrawThemselves)
{
    REQUIRE_CONTEXT(context);
    MeshCache small(GetParam(), 20000);
    const Picture expected = Drawn(text, nullptr);
    for (int i = 0; i < 3; ++i)
    {
        EXPECT_TRUE(PicturesMatch(expected, Drawn(text, &small), "mesh-no-room", 0));
    }
}

TEST_P(MeshDrawingPixels, MemoryStaysBoundedAndUnusedTrianglesMakeRoom)
{
    REQUIRE_CONTEXT(context);
    Drawn(text, &cache);
    const std::size_t one = cache.Bytes();
    MeshCache small(GetParam(), 3 * one);
    std::vector<std::unique_ptr<OrvFontString>> texts;
    for (int i = 0; i < 20; ++i)
    {
        texts.push_back(std::make_unique<OrvFontString>(text));
        for (int draw = 0; draw < 8; ++draw)
        {
            Drawn(*texts.back(), &small);
            EXPECT_LE(small.Bytes(), 4 * one);
        }
    }
    // The last text was given room: its triangles are there, beside those of at most two others.
    EXPECT_GT(small.Bytes(), one / 2);
    small.Clear();
    EXPECT_EQ(small.Bytes(), 0u);
    EXPECT_TRUE(PicturesMatch(Drawn(text, nullptr), Drawn(text, &small), "mesh-cleared"));
}
}  // namespace
