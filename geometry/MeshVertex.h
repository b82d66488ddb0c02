// SPDX-License-Identifier: MIT
#pragma once

namespace orvane
{

/// One corner of triangles. The texture coordinate is 0, 0 where the node has no texture.
struct MeshVertex
{
    float position[3];
    float normal[3];   ///< out of the solid; its length is 1 within 0.0005
    float texture[2];  ///< u to the right and v up, in pictures
};

/// The surface of a solid that triangles belong to.
enum class MeshPart
{
    Face,    ///< the front and the back face of letters
    Edge,    ///< the side walls of letters
    Bevel,   ///< the bevelled, rounded or profiled edges of letters
    Surface  ///< of an imported mesh
};

}  // namespace orvane
