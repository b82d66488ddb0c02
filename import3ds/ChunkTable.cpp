// SPDX-License-Identifier: MIT
#include "import3ds/ChunkTable.h"

#include <algorithm>
#include <cstdio>
#include <initializer_list>

namespace orvane
{

namespace
{

// Reasons that several chunks share.
constexpr char textures[] = "texture maps are not imported";
constexpr char views[] = "a setting of the program that made the file";
constexpr char motion[] = "keyframes are not imported: the meshes stand as they were modelled";
constexpr char shading[] = "materials have colours, shininess and transparency only";
constexpr char light[] = "lights are not imported: the scene has its own lights";
constexpr char camera[] = "cameras are not imported: the view has its own camera";
constexpr char another[] = "a second form of a value that is read already";
constexpr char background[] = "the scene has its own background";
constexpr char shadows[] = "shadows are not drawn";
constexpr char fog[] = "fog is not drawn";
constexpr char behindMesh[] = "the chunk has an effect only after the object's mesh";

constexpr ChunkContent values = {ChunkContent::Kind::Values};
constexpr ChunkContent chunks = {ChunkContent::Kind::Chunks};
constexpr ChunkContent nameThenChunks = {ChunkContent::Kind::NameThenChunks};
constexpr ChunkContent facesThenChunks = {ChunkContent::Kind::FacesThenChunks};

constexpr ChunkContent ChunksAfter(BYTE bytes)
{
    return {ChunkContent::Kind::Chunks, bytes};
}

constexpr ChunkKind Read(ChunkId id, const char* name, ChunkContent content,
                         std::initializer_list<ChunkId> parents, const char* whySkipped = nullptr)
{
    ChunkKind kind = {static_cast<WORD>(id), name, content, {}, whySkipped};
    std::copy(parents.begin(), parents.end(), kind.readIn.begin());
    return kind;
}

constexpr ChunkKind Skipped(WORD id, const char* name, ChunkContent content, const char* why)
{
    return {id, name, content, {}, why};
}

constexpr ChunkKind kinds[] = {
    Skipped(0x0002, "file version", values, views),
    Read(ChunkId::FloatColor, "colour", values,
         {ChunkId::AmbientColor, ChunkId::DiffuseColor, ChunkId::SpecularColor}),
    Read(ChunkId::ByteColor, "colour in bytes", values,
         {ChunkId::AmbientColor, ChunkId::DiffuseColor, ChunkId::SpecularColor}),
    Skipped(0x0012, "colour in bytes, linear", values, another),
    Skipped(0x0013, "colour, linear", values, another),
    Read(ChunkId::WholePercentage, "percentage", values,
         {ChunkId::Shininess, ChunkId::Transparency}),
    Read(ChunkId::FloatPercentage, "percentage as a float", values,
         {ChunkId::Shininess, ChunkId::Transparency}),
    Skipped(0x0100, "scale of the unit", values, views),
    Skipped(0x1100, "background picture", values, background),
    Skipped(0x1101, "background picture in use", values, background),
    Skipped(0x1200, "background colour", chunks, background),
    Skipped(0x1201, "background colour in use", values, background),
    Skipped(0x1300, "background gradient", ChunksAfter(4), background),
    Skipped(0x1301, "background gradient in use", values, background),
    Skipped(0x1400, "shadow bias", values, shadows),
    Skipped(0x1420, "size of shadow maps", values, shadows),
    Skipped(0x1450, "shadow samples", values, shadows),
    Skipped(0x1460, "shadow range", values, shadows),
    Skipped(0x1470, "shadow filter", values, shadows),
    Skipped(0x1500, "origin of construction planes", values, views),
    Skipped(0x2100, "ambient light", chunks, light),
    Skipped(0x2200, "fog", ChunksAfter(16), fog),
    Skipped(0x2201, "fog in use", values, fog),
    Skipped(0x2210, "fog on the background", values, fog),
    Skipped(0x2300, "distance cue", ChunksAfter(16), fog),
    Skipped(0x2302, "layered fog", values, fog),
    Read(ChunkId::EditorData, "editor data", chunks, {ChunkId::Main, ChunkId::Project}),
    Skipped(0x3D3E, "version of the editor data", values, views),
    Read(ChunkId::NamedObject, "object", nameThenChunks, {ChunkId::EditorData}),
    Read(ChunkId::ObjectHidden, "object is hidden", values, {ChunkId::NamedObject}, behindMesh),
    Skipped(0x4011, "object is not rendered", values, views),
    Read(ChunkId::ObjectShadow, "object casts no shadow", values, {ChunkId::NamedObject},
         behindMesh),
    Skipped(0x4013, "object is a matte", values, shading),
    Skipped(0x4014, "object is fast to draw", values, views),
    Skipped(0x4015, "object is procedural", values, views),
    Skipped(0x4017, "object receives no shadow", values, shadows),
    Read(ChunkId::TriangleMesh, "mesh", chunks, {ChunkId::NamedObject}),
    Read(ChunkId::VertexList, "vertices", values, {ChunkId::TriangleMesh}),
    Skipped(0x4111, "flags of vertices", values, "selections of the program that made the file"),
    Read(ChunkId::FaceList, "faces", facesThenChunks, {ChunkId::TriangleMesh}),
    Read(ChunkId::FaceMaterials, "material of faces", values, {ChunkId::FaceList}),
    Skipped(0x4140, "texture coordinates", values, textures),
    Skipped(0x4150, "smoothing groups", values,
            "vertex normals are the mean over all faces at the vertex"),
    Skipped(0x4160, "local axes", values, "vertices are in the world's coordinates already"),
    Skipped(0x4165, "colour in the editor", values, views),
    Skipped(0x4170, "texture projection", values, textures),
    Skipped(0x4190, "box map", values, textures),
    Skipped(0x4600, "light", ChunksAfter(12), light),
    Skipped(0x4610, "spotlight", ChunksAfter(20), light),
    Skipped(0x4620, "light is off", values, light),
    Skipped(0x4700, "camera", ChunksAfter(32), camera),
    Skipped(0x4710, "camera cone is shown", values, camera),
    Skipped(0x4720, "range of the camera", values, camera),
    Read(ChunkId::Main, "main", chunks, {ChunkId::File}),
    Skipped(0x7001, "layout of the editor", values, views),
    Read(ChunkId::MaterialName, "material name", values, {ChunkId::MaterialEntry}),
    Read(ChunkId::AmbientColor, "ambient colour", chunks, {ChunkId::MaterialEntry}),
    Read(ChunkId::DiffuseColor, "diffuse colour", chunks, {ChunkId::MaterialEntry}),
    Read(ChunkId::SpecularColor, "specular colour", chunks, {ChunkId::MaterialEntry}),
    Read(ChunkId::Shininess, "shininess", chunks, {ChunkId::MaterialEntry}),
    Skipped(0xA041, "strength of the shine", chunks, shading),
    Read(ChunkId::Transparency, "transparency", chunks, {ChunkId::MaterialEntry}),
    Skipped(0xA052, "falloff of transparency", chunks, shading),
    Skipped(0xA053, "blur of reflections", chunks, shading),
    Read(ChunkId::SelfIllumination, "self-illumination", values, {ChunkId::MaterialEntry}),
    Skipped(0xA081, "two-sided", values, "all faces are drawn from both sides"),
    Skipped(0xA083, "additive transparency", values, shading),
    Skipped(0xA084, "strength of self-illumination", chunks, shading),
    Skipped(0xA085, "wires", values, shading),
    Skipped(0xA087, "width of wires", values, shading),
    Skipped(0xA088, "face map", values, textures),
    Skipped(0xA08A, "falloff inwards", values, shading),
    Skipped(0xA08C, "soft highlights", values, shading),
    Skipped(0xA08E, "wires in units", values, shading),
    Skipped(0xA100, "shading", values, shading),
    Skipped(0xA200, "texture map", chunks, textures),
    Skipped(0xA204, "specular map", chunks, textures),
    Skipped(0xA210, "opacity map", chunks, textures),
    Skipped(0xA220, "reflection map", chunks, textures),
    Skipped(0xA230, "bump map", chunks, textures),
    Skipped(0xA240, "use of the reflection map", values, textures),
    Skipped(0xA250, "strength of bumps", values, textures),
    Skipped(0xA252, "use of bumps", values, textures),
    Skipped(0xA300, "name of a map's file", values, textures),
    Skipped(0xA310, "automatic reflection", values, textures),
    Skipped(0xA33A, "second texture map", chunks, textures),
    Skipped(0xA33C, "shininess map", chunks, textures),
    Skipped(0xA33D, "self-illumination map", chunks, textures),
    Skipped(0xA33E, "texture mask", chunks, textures),
    Skipped(0xA351, "tiling of a map", values, textures),
    Skipped(0xA353, "blur of a map", values, textures),
    Read(ChunkId::MaterialEntry, "material", chunks, {ChunkId::EditorData}),
    Skipped(0xB000, "keyframes", chunks, motion),
    Skipped(0xB001, "motion of ambient light", chunks, motion),
    Skipped(0xB002, "motion of an object", chunks, motion),
    Skipped(0xB003, "motion of a camera", chunks, motion),
    Skipped(0xB004, "motion of a camera's target", chunks, motion),
    Skipped(0xB005, "motion of a light", chunks, motion),
    Skipped(0xB006, "motion of a light's target", chunks, motion),
    Skipped(0xB007, "motion of a spotlight", chunks, motion),
    Skipped(0xB008, "segment of keyframes", values, motion),
    Skipped(0xB009, "current keyframe", values, motion),
    Skipped(0xB00A, "head of keyframes", values, motion),
    Skipped(0xB010, "node", values, motion),
    Skipped(0xB013, "pivot", values, motion),
    Skipped(0xB014, "bounding box", values, motion),
    Skipped(0xB020, "track of positions", values, motion),
    Skipped(0xB021, "track of rotations", values, motion),
    Skipped(0xB022, "track of scales", values, motion),
    Skipped(0xB023, "track of fields of view", values, motion),
    Skipped(0xB024, "track of rolls", values, motion),
    Skipped(0xB025, "track of colours", values, motion),
    Skipped(0xB029, "track of visibility", values, motion),
    Skipped(0xB030, "number of the node", values, motion),
    Read(ChunkId::Project, "project", chunks, {ChunkId::File}),
};

}  // namespace

bool ChunkKind::IsReadIn(ChunkId parent) const
{
    return parent != ChunkId::None &&
           std::find(readIn.begin(), readIn.end(), parent) != readIn.end();
}

std::span<const ChunkKind> AllChunkKinds()
{
    return kinds;
}

const ChunkKind& KindOfChunk(WORD id)
{
    static constexpr ChunkKind unknown =
        Skipped(0, "unknown", values, "the meaning of this id is not known");
    const ChunkKind* const kind =
        std::lower_bound(std::begin(kinds), std::end(kinds), id,
                         [](const ChunkKind& row, WORD wanted) { return row.id < wanted; });
    return kind != std::end(kinds) && kind->id == id ? *kind : unknown;
}

std::string ChunkIdText(WORD id)
{
    char text[8];
    std::snprintf(text, sizeof text, "0x%04X", static_cast<unsigned>(id));
    return text;
}

}  // namespace orvane
