// SPDX-License-Identifier: MIT
#include "apps/cli/info/ChunkNames.h"

namespace
{

const char textures[] = "texture maps are not imported";
const char views[] = "the settings of the program that made the file";
const char motion[] = "keyframes are not imported: the meshes stand as they were modelled";
const char shading[] = "materials have colours, shininess and transparency only";
const char light[] = "lights are not imported: the scene has its own";
const char camera[] = "cameras are not imported: the view has its own";
const char another[] = "another form of what is read already";

// In the order of their ids, the main chunk last.
const ChunkKind kinds[] = {
    {0x0002, "file version", noChunksInside, views},
    {0x0010, "colour", noChunksInside, nullptr},
    {0x0011, "colour in bytes", noChunksInside, nullptr},
    {0x0012, "colour in bytes, linear", noChunksInside, another},
    {0x0013, "colour, linear", noChunksInside, another},
    {0x0030, "percentage", noChunksInside, nullptr},
    {0x0031, "percentage as a float", noChunksInside, nullptr},
    {0x0100, "scale of the unit", noChunksInside, views},
    {0x1100, "background picture", noChunksInside, "the scene has its own background"},
    {0x1101, "background picture in use", noChunksInside, "the scene has its own background"},
    {0x1200, "background colour", 0, "the scene has its own background"},
    {0x1201, "background colour in use", noChunksInside, "the scene has its own background"},
    {0x1300, "background gradient", 4, "the scene has its own background"},
    {0x1301, "background gradient in use", noChunksInside, "the scene has its own background"},
    {0x1400, "shadow bias", noChunksInside, "shadows are not drawn"},
    {0x1420, "size of shadow maps", noChunksInside, "shadows are not drawn"},
    {0x1450, "shadow samples", noChunksInside, "shadows are not drawn"},
    {0x1460, "shadow range", noChunksInside, "shadows are not drawn"},
    {0x1470, "shadow filter", noChunksInside, "shadows are not drawn"},
    {0x1500, "origin of construction planes", noChunksInside, views},
    {0x2100, "ambient light", 0, light},
    {0x2200, "fog", 16, "fog is not drawn"},
    {0x2201, "fog in use", noChunksInside, "fog is not drawn"},
    {0x2210, "fog on the background", noChunksInside, "fog is not drawn"},
    {0x2300, "distance cue", 16, "fog is not drawn"},
    {0x2302, "layered fog", noChunksInside, "fog is not drawn"},
    {0x3D3D, "editor data", 0, nullptr},
    {0x3D3E, "version of the editor data", noChunksInside, views},
    {0x4000, "object", textBefore, nullptr},
    {0x4010, "object is hidden", noChunksInside, "it counts only behind the object's mesh"},
    {0x4011, "object is not rendered", noChunksInside, views},
    {0x4012, "object casts no shadow", noChunksInside, "it counts only behind the object's mesh"},
    {0x4013, "object is a matte", noChunksInside, shading},
    {0x4014, "object is fast to draw", noChunksInside, views},
    {0x4015, "object is procedural", noChunksInside, views},
    {0x4017, "object receives no shadow", noChunksInside, "shadows are not drawn"},
    {0x4100, "mesh", 0, nullptr},
    {0x4110, "vertices", noChunksInside, nullptr},
    {0x4111, "flags of vertices", noChunksInside, "selections of the program that made the file"},
    {0x4120, "faces", facesBefore, nullptr},
    {0x4130, "material of faces", noChunksInside, nullptr},
    {0x4140, "texture coordinates", noChunksInside, textures},
    {0x4150, "smoothing groups", noChunksInside,
     "vertex normals are the mean over all faces at the vertex"},
    {0x4160, "local axes", noChunksInside, "vertices are in the world's coordinates already"},
    {0x4165, "colour in the editor", noChunksInside, views},
    {0x4170, "texture projection", noChunksInside, textures},
    {0x4190, "box map", noChunksInside, textures},
    {0x4600, "light", 12, light},
    {0x4610, "spotlight", 20, light},
    {0x4620, "light is off", noChunksInside, light},
    {0x4700, "camera", 32, camera},
    {0x4710, "camera cone is shown", noChunksInside, camera},
    {0x4720, "range of the camera", noChunksInside, camera},
    {0x7001, "layout of the editor", noChunksInside, views},
    {0xA000, "material name", noChunksInside, nullptr},
    {0xA010, "ambient colour", 0, nullptr},
    {0xA020, "diffuse colour", 0, nullptr},
    {0xA030, "specular colour", 0, nullptr},
    {0xA040, "shininess", 0, nullptr},
    {0xA041, "strength of the shine", 0, shading},
    {0xA050, "transparency", 0, nullptr},
    {0xA052, "falloff of transparency", 0, shading},
    {0xA053, "blur of reflections", 0, shading},
    {0xA080, "self-illumination", noChunksInside, nullptr},
    {0xA081, "two-sided", noChunksInside, "all faces are drawn from both sides"},
    {0xA083, "additive transparency", noChunksInside, shading},
    {0xA084, "strength of self-illumination", 0, shading},
    {0xA085, "wires", noChunksInside, shading},
    {0xA087, "width of wires", noChunksInside, shading},
    {0xA088, "face map", noChunksInside, textures},
    {0xA08A, "falloff inwards", noChunksInside, shading},
    {0xA08C, "soft highlights", noChunksInside, shading},
    {0xA08E, "wires in units", noChunksInside, shading},
    {0xA100, "shading", noChunksInside, shading},
    {0xA200, "texture map", 0, textures},
    {0xA204, "specular map", 0, textures},
    {0xA210, "opacity map", 0, textures},
    {0xA220, "reflection map", 0, textures},
    {0xA230, "bump map", 0, textures},
    {0xA240, "use of the reflection map", noChunksInside, textures},
    {0xA250, "strength of bumps", noChunksInside, textures},
    {0xA252, "use of bumps", noChunksInside, textures},
    {0xA300, "name of a map's file", noChunksInside, textures},
    {0xA310, "automatic reflection", noChunksInside, textures},
    {0xA33A, "second texture map", 0, textures},
    {0xA33C, "shininess map", 0, textures},
    {0xA33D, "self-illumination map", 0, textures},
    {0xA33E, "texture mask", 0, textures},
    {0xA351, "tiling of a map", noChunksInside, textures},
    {0xA353, "blur of a map", noChunksInside, textures},
    {0xAFFF, "material", 0, nullptr},
    {0xB000, "keyframes", 0, motion},
    {0xB001, "motion of ambient light", 0, motion},
    {0xB002, "motion of an object", 0, motion},
    {0xB003, "motion of a camera", 0, motion},
    {0xB004, "motion of a camera's target", 0, motion},
    {0xB005, "motion of a light", 0, motion},
    {0xB006, "motion of a light's target", 0, motion},
    {0xB007, "motion of a spotlight", 0, motion},
    {0xB008, "segment of keyframes", noChunksInside, motion},
    {0xB009, "current keyframe", noChunksInside, motion},
    {0xB00A, "head of keyframes", noChunksInside, motion},
    {0xB010, "node", noChunksInside, motion},
    {0xB013, "pivot", noChunksInside, motion},
    {0xB014, "bounding box", noChunksInside, motion},
    {0xB020, "track of positions", noChunksInside, motion},
    {0xB021, "track of rotations", noChunksInside, motion},
    {0xB022, "track of scales", noChunksInside, motion},
    {0xB023, "track of fields of view", noChunksInside, motion},
    {0xB024, "track of rolls", noChunksInside, motion},
    {0xB025, "track of colours", noChunksInside, motion},
    {0xB029, "track of visibility", noChunksInside, motion},
    {0xB030, "number of the node", noChunksInside, motion},
    {0xC23D, "project", 0, nullptr},
    {0x4D4D, "main", 0, nullptr},
};

}  // namespace

const ChunkKind& KindOfChunk(WORD id)
{
    static const ChunkKind unknown = {0, "unknown", noChunksInside, "no such chunk is known here"};
    for (const ChunkKind& kind : kinds)
    {
        if (kind.id == id)
        {
            return kind;
        }
    }
    return unknown;
}
