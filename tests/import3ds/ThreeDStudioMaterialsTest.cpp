// SPDX-License-Identifier: MIT
#include "tests/support/Chunks.h"
#include "tests/support/ExpectVector.h"

namespace
{

using Names = std::vector<std::string>;

RecordBytes FloatColor(float red, float green, float blue)
{
    return ChunkOf(0x0010, {RecordBytes().Floats({red, green, blue})});
}

RecordBytes ByteColor(BYTE red, BYTE green, BYTE blue)
{
    return ChunkOf(0x0011, {RecordBytes().Byte(red).Byte(green).Byte(blue)});
}

RecordBytes WholePercentage(WORD value)
{
    return ChunkOf(0x0030, {Words({value})});
}

RecordBytes FloatPercentage(float value)
{
    return ChunkOf(0x0031, {RecordBytes().Float(value)});
}

/// Imports a material entry with these chunks and returns the material.
NamedColor Material(std::initializer_list<RecordBytes> parts)
{
    Imported node(FileOf({ChunkOf(0xAFFF, parts)}));
    EXPECT_EQ(node.materials.GetSize(), 2);
    return node.materials.GetSize() == 2 ? node.materials.GetAt(1) : NamedColor("none");
}

TEST(ThreeDStudioMaterials, TheFirstMaterialIsUndefinedAndGray)
{
    Imported node(FileOf({}));
    ASSERT_EQ(node.materials.GetSize(), 1);
    const NamedColor material = node.materials.GetAt(0);
    EXPECT_STREQ(material.GetName(), "Undefined");
    EXPECT_RGBA(material.GetAmbientColor(), 0.5f, 0.5f, 0.5f, 1);
    EXPECT_RGBA(material.GetDiffuseColor(), 0.5f, 0.5f, 0.5f, 1);
    EXPECT_RGBA(material.GetSpecularColor(), 1, 1, 1, 1);
    EXPECT_RGBA(material.GetEmissionColor(), 0, 0, 0, 1);
}

TEST(ThreeDStudioMaterials, AnEntryStartsWithOpaqueBlack)
{
    const NamedColor material = Material({});
    EXPECT_RGBA(material.GetAmbientColor(), 0, 0, 0, 1);
    EXPECT_RGBA(material.GetDiffuseColor(), 0, 0, 0, 1);
    EXPECT_RGBA(material.GetSpecularColor(), 0, 0, 0, 1);
    EXPECT_RGBA(material.GetEmissionColor(), 0, 0, 0, 1);
}

TEST(ThreeDStudioMaterials, AMaterialHasTheNameAndTheColorsInItsChunks)
{
    const NamedColor material = Material({ChunkOf(0xA000, {ZeroTerminated("red")}),
                                          ChunkOf(0xA010, {FloatColor(0.1f, 0.2f, 0.3f)}),
                                          ChunkOf(0xA020, {FloatColor(0.4f, 0.5f, 0.6f)}),
                                          ChunkOf(0xA030, {FloatColor(0.7f, 0.8f, 0.9f)})});
    EXPECT_STREQ(material.GetName(), "red");
    EXPECT_RGBA(material.GetAmbientColor(), 0.1f, 0.2f, 0.3f, 1);
    EXPECT_RGBA(material.GetDiffuseColor(), 0.4f, 0.5f, 0.6f, 1);
    EXPECT_RGBA(material.GetSpecularColor(), 0.7f, 0.8f, 0.9f, 1);
    EXPECT_RGBA(material.GetEmissionColor(), 0, 0, 0, 1);
}

TEST(ThreeDStudioMaterials, ByteColorsAreConvertedAsColorReferences)
{
    ColorVector expected;
    expected = 10ul + 256ul * 20ul + 65536ul * 255ul;
    const ColorVector color =
        Material({ChunkOf(0xA020, {ByteColor(10, 20, 255)})}).GetDiffuseColor();
    EXPECT_RGBA(color, expected.red, expected.green, expected.blue, 1);
    EXPECT_RGBA(color, 10 / 255.0f, 20 / 255.0f, 1, 1);
}

TEST(ThreeDStudioMaterials, TheFirstColorOfAKnownFormCounts)
{
    const RecordBytes linear = ChunkOf(0x0012, {RecordBytes().Byte(1).Byte(2).Byte(3)});
    const NamedColor material =
        Material({ChunkOf(0xA010, {linear, ByteColor(255, 0, 0)}),
                  ChunkOf(0xA020, {ByteColor(0, 255, 0), linear}),
                  ChunkOf(0xA030, {FloatColor(0, 0, 1), ByteColor(9, 9, 9)})});
    EXPECT_RGBA(material.GetAmbientColor(), 1, 0, 0, 1);
    EXPECT_RGBA(material.GetDiffuseColor(), 0, 1, 0, 1);
    EXPECT_RGBA(material.GetSpecularColor(), 0, 0, 1, 1);
}

TEST(ThreeDStudioMaterials, AColorThatIsMissingOrCutShortStaysBlack)
{
    const NamedColor material = Material(
        {ChunkOf(0xA010), ChunkOf(0xA020, {ChunkOf(0x0011, {RecordBytes().Byte(9).Byte(9)})}),
         ChunkOf(0xA030, {ChunkOf(0x0010, {RecordBytes().Floats({1, 1})})}),
         ChunkOf(0xA000, {ZeroTerminated("last")})});
    EXPECT_RGBA(material.GetAmbientColor(), 0, 0, 0, 1);
    EXPECT_RGBA(material.GetDiffuseColor(), 0, 0, 0, 1);
    EXPECT_RGBA(material.GetSpecularColor(), 0, 0, 0, 1);
    EXPECT_STREQ(material.GetName(), "last");
}

TEST(ThreeDStudioMaterials, ShininessIs128Times1MinusThePercentage)
{
    EXPECT_EQ(Material({ChunkOf(0xA040, {WholePercentage(25)})}).GetShininess(), 96.0f);
    EXPECT_EQ(Material({ChunkOf(0xA040, {WholePercentage(0)})}).GetShininess(), 128.0f);
    EXPECT_EQ(Material({ChunkOf(0xA040, {WholePercentage(100)})}).GetShininess(), 0.0f);
    EXPECT_EQ(Material({ChunkOf(0xA040, {FloatPercentage(0.25f)})}).GetShininess(), 96.0f);
    EXPECT_EQ(Material({ChunkOf(0xA040)}).GetShininess(), 128.0f);
}

TEST(ThreeDStudioMaterials, APercentageOfFloatsIsTakenAsItStands)
{
    EXPECT_EQ(Material({ChunkOf(0xA050, {FloatPercentage(50.0f)})}).GetDiffuseColor().alpha,
              -49.0f);
    EXPECT_EQ(Material({ChunkOf(0xA050, {WholePercentage(50)})}).GetDiffuseColor().alpha, 0.5f);
}

TEST(ThreeDStudioMaterials, TransparencyIsKeptBeforeAndBehindTheDiffuseColor)
{
    const RecordBytes transparency = ChunkOf(0xA050, {WholePercentage(25)});
    const RecordBytes diffuse = ChunkOf(0xA020, {ByteColor(255, 0, 0)});
    const RecordBytes floatDiffuse = ChunkOf(0xA020, {FloatColor(1, 0, 0)});
    EXPECT_RGBA(Material({transparency, diffuse}).GetDiffuseColor(), 1, 0, 0, 0.75f);
    EXPECT_RGBA(Material({transparency, floatDiffuse}).GetDiffuseColor(), 1, 0, 0, 0.75f);
    EXPECT_RGBA(Material({diffuse, transparency}).GetDiffuseColor(), 1, 0, 0, 0.75f);
    EXPECT_RGBA(Material({diffuse, transparency}).GetAmbientColor(), 0, 0, 0, 1);
}

TEST(ThreeDStudioMaterials, ASelfIlluminatedMaterialEmitsItsDiffuseColor)
{
    const NamedColor material = Material({ChunkOf(0xA080), ChunkOf(0xA020, {ByteColor(255, 0, 0)}),
                                          ChunkOf(0xA050, {WholePercentage(25)})});
    EXPECT_RGBA(material.GetEmissionColor(), 1, 0, 0, 0.75f);
    EXPECT_RGBA(material.GetDiffuseColor(), 1, 0, 0, 0.75f);
}

TEST(ThreeDStudioMaterials, AnEntryThatIsCutShortIsNotAddedAndEndsTheEditorData)
{
    Imported node(
        FileOf({MaterialChunk("red"), MaterialChunk("blue", {RecordBytes().Word(0xA080).Dword(3)}),
                MaterialChunk("green"), MeshObjectChunk("a")}));
    EXPECT_EQ(node.result, 1);
    EXPECT_EQ(node.MaterialNames(), (Names{"Undefined", "red"}));
    EXPECT_EQ(node.GetChildCount(), 0);
}

TEST(ThreeDStudioMaterials, MaterialsFromNumber65536OnAreKeptButNotFound)
{
    RecordBytes editor;
    for (int i = 0; i < 65536; ++i)
    {
        editor.Append(MaterialChunk("m" + std::to_string(i)));
    }
    // "Undefined" is material 0, so m65534 is material 65535.
    editor.Append(
        MeshObjectChunk("a", {MaterialGroup("m65534", {0}), MaterialGroup("m65535", {1})}));
    Imported node(FileOf({editor}));
    EXPECT_EQ(node.materials.GetSize(), 65537);
    ASSERT_EQ(node.GetChildCount(), 1);
    EXPECT_EQ(FaceMaterials(node.Mesh()), (std::vector<int>{65535, 0, 0, 0}));
}

}  // namespace
