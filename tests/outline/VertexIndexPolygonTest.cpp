// SPDX-License-Identifier: MIT
#include "outline/VertexIndexPolygon.h"

#include "platform/OpenGL.h"

#include <gtest/gtest.h>

TEST(VertexIndexPolygon, ThePolygonAndItsPolylineHaveSeparateActiveMarks)
{
    VertexIndexPolygon polygon;
    EXPECT_EQ(polygon.polygonFlags, 0u);
    EXPECT_EQ(polygon.GetType(), 0u);
    polygon.SetActive();
    EXPECT_EQ(polygon.IsActive(), 1);
    EXPECT_EQ(polygon.polylineFlags, 0u);
    polygon.VertexIndexPolyline::SetActive();
    polygon.ClearActive();
    EXPECT_EQ(polygon.IsActive(), 0);
    EXPECT_EQ(polygon.VertexIndexPolyline::IsActive(), 1);
}

TEST(VertexIndexPolygon, CopiesCarryIndicesMarksAndType)
{
    VertexIndexPolygon polygon;
    polygon.Add(4);
    polygon.SetType(GL_TRIANGLE_FAN);
    polygon.SetActive();
    polygon.SetClockwiseWinding();
    VertexIndexPolygon copy;
    copy = polygon;
    polygon[0] = 5;
    EXPECT_EQ(copy.GetSize(), 1);
    EXPECT_EQ(copy[0], 4);
    EXPECT_EQ(copy.GetType(), static_cast<unsigned long>(GL_TRIANGLE_FAN));
    EXPECT_EQ(copy.IsActive(), 1);
    EXPECT_EQ(copy.IsClockwiseWinding(), 2);
}

TEST(VertexIndexPolygon, SizeIsThatOfTheObjectPlusThatOfItsArray)
{
    VertexIndexPolygon polygon;
    polygon.Add(1);
    EXPECT_EQ(polygon.SizeOf(),
              sizeof(VertexIndexPolygon) + sizeof(VertexIndexArray) + sizeof(unsigned short));
}
