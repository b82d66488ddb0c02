// SPDX-License-Identifier: MIT
#include "document/MeshDamage.h"

#include <gtest/gtest.h>

namespace
{

using Part = ThreeDStudioObject::SkippedPart;
using Skip = ThreeDStudioObject::SkipReason;

// A vertex list inside a mesh.
constexpr WORD vertices = 0x4110;
constexpr WORD mesh = 0x4100;

TEST(MeshDamage, EveryReasonIsSaidInWords)
{
    const auto reason = [](Skip why, WORD id = vertices) {
        return orvane::ReasonText(Part{mesh, id, 100, 20, why});
    };
    EXPECT_EQ(reason(Skip::PastParent), "the chunk ends past the end of its parent, 0x4100");
    EXPECT_EQ(reason(Skip::Incomplete),
              "the chunk is too short for the values that it must contain");
    EXPECT_EQ(reason(Skip::NoHeader, 0),
              "the next bytes in 0x4100 are not the header of a chunk: the file is cut off or "
              "damaged");
    EXPECT_EQ(reason(Skip::Landscape),
              "an object named Landscape ends the import of its editor data");
    EXPECT_EQ(reason(Skip::AfterFailure), "an earlier chunk ended the import of 0x4100");
    EXPECT_EQ(reason(Skip::NotUsed, 0), "an import uses only the first value in 0x4100");
    EXPECT_EQ(reason(Skip::NotUsed, 0x1234), "the meaning of this id is not known");
    // The materials of faces belong into a list of faces.
    EXPECT_EQ(reason(Skip::NotUsed, 0x4130), "the chunk has no meaning inside 0x4100");
}

TEST(MeshDamage, TheFirstDamagedPartIsDescribed)
{
    const Part unused = {mesh, 0x1234, 10, 6, Skip::NotUsed};
    const Part landscape = {0x3D3D, 0x4000, 10, 6, Skip::Landscape};
    EXPECT_EQ(orvane::DamageText({}), "");
    EXPECT_EQ(orvane::DamageText({unused, landscape}), "");
    EXPECT_EQ(orvane::DamageText({unused, {mesh, vertices, 1034, 1176, Skip::PastParent, 1998}}),
              "chunk 0x4110 at byte 1034 ends at 2210, past its parent's end 1998");
    EXPECT_EQ(orvane::DamageText(
                  {{mesh, vertices, 50, 7, Skip::Incomplete}, {mesh, 0, 60, 7, Skip::NoHeader}}),
              "chunk 0x4110 at byte 50 is too short for the values that it must contain");
    EXPECT_EQ(orvane::DamageText({{mesh, 0, 60, 7, Skip::NoHeader}}),
              "no chunk can be read at byte 60, inside the chunk 0x4100");
}

}  // namespace
