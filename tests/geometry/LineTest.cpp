// SPDX-License-Identifier: MIT
#include "geometry/Line.h"

#include "tests/support/ExpectVector.h"

namespace
{
struct Meeting
{
    int result;
    Vector point;
    float t;
};

Line Segment(float x1, float y1, float x2, float y2)
{
    return Line(Vector(x1, y1, 0.0f), Vector(x2, y2, 0.0f));
}

Meeting Intersection(const Line& line, const Line& other)
{
    Meeting meeting{0, Vector(9, 9, 9), 9.0f};
    meeting.result = line.Intersection(other, &meeting.point, &meeting.t);
    return meeting;
}

Meeting Meet(const Line& line, const Line& other)
{
    Meeting meeting{0, Vector(9, 9, 9), 9.0f};
    meeting.result = line.DoLinesIntersect(other, &meeting.point, &meeting.t);
    return meeting;
}

Meeting Probe(const Line& line, const Vector& point)
{
    Meeting meeting{0, Vector(), 9.0f};
    meeting.result = line.IsPointOnLine(point, &meeting.t);
    return meeting;
}
}  // namespace

TEST(Line, StartsAtTheOriginWithoutADirection)
{
    const Line line;
    EXPECT_XYZ(line.GetEnd1(), 0.0f, 0.0f, 0.0f);
    EXPECT_XYZ(line.GetEnd2(), 0.0f, 0.0f, 0.0f);
    EXPECT_XYZ(line.GetDirection(), 0.0f, 0.0f, 0.0f);
    EXPECT_XYZ(line.GetNormal(), 0.0f, 0.0f, 0.0f);
    EXPECT_EQ(line.Length(), 0.0f);
}

TEST(Line, KnowsItsDirectionAndLeftHandNormal)
{
    const Line line = Segment(1, 1, 4, 5);
    EXPECT_XYZ(line.GetDirection(), 0.6f, 0.8f, 0.0f);
    EXPECT_XYZ(line.GetDirection21(), -0.6f, -0.8f, 0.0f);
    EXPECT_XYZ(line.GetNormal(), -0.8f, 0.6f, 0.0f);
    EXPECT_EQ(line.Length(), 5.0f);
}

TEST(Line, ItsNormalLiesInThePlaneWhateverTheSlope)
{
    const Line line(Vector(0, 0, 0), Vector(0, 3, 4));
    EXPECT_XYZ(line.GetDirection(), 0.0f, 0.6f, 0.8f);
    EXPECT_XYZ(line.GetNormal(), -1.0f, 0.0f, 0.0f);
}

TEST(Line, SettersKeepDirectionAndNormalRight)
{
    Line line;
    line.SetEnd2(Vector(2, 0, 0));
    EXPECT_XYZ(line.GetDirection(), 1.0f, 0.0f, 0.0f);
    line.SetEnd1(Vector(2, 3, 0));
    EXPECT_XYZ(line.GetDirection(), 0.0f, -1.0f, 0.0f);
    EXPECT_XYZ(line.GetNormal(), 1.0f, 0.0f, 0.0f);
    line.SetEnds(Vector(1, 1, 1), Vector(1, 1, 1));
    EXPECT_XYZ(line.GetDirection(), 0.0f, 0.0f, 0.0f);
    EXPECT_XYZ(line.GetNormal(), 0.0f, 0.0f, 0.0f);
}

TEST(Line, CopiesCarryEverything)
{
    const Line line = Segment(1, 1, 4, 5);
    const Line copy = line;
    EXPECT_XYZ(copy.GetEnd1(), 1.0f, 1.0f, 0.0f);
    EXPECT_XYZ(copy.GetEnd2(), 4.0f, 5.0f, 0.0f);
    EXPECT_XYZ(copy.GetNormal(), -0.8f, 0.6f, 0.0f);
}

TEST(Line, IntersectionTakesTheOtherAsInfinite)
{
    const Meeting meeting = Intersection(Segment(0, 0, 2, 0), Segment(4, 5, 4, 6));
    EXPECT_EQ(meeting.result, 1);
    EXPECT_EQ(meeting.t, 2.0f);
    EXPECT_XYZ(meeting.point, 4.0f, 0.0f, 0.0f);

    const Meeting behind = Intersection(Segment(0, 0, 2, 0), Segment(-1, 5, -1, 6));
    EXPECT_EQ(behind.result, 1);
    EXPECT_EQ(behind.t, -0.5f);
}

TEST(Line, SegmentsCrossingInsideBoth)
{
    const Meeting meeting = Meet(Segment(0, 0, 2, 0), Segment(1, -1, 1, 1));
    EXPECT_EQ(meeting.result, 2 | 16);
    EXPECT_EQ(meeting.t, 0.5f);
    EXPECT_XYZ(meeting.point, 1.0f, 0.0f, 0.0f);
}

TEST(Line, SegmentsMeetingAtAnEndReportBothEnds)
{
    const Line across = Segment(0, 0, 1, 0);
    const Meeting meeting = Meet(across, Segment(1, 0, 1, 1));
    EXPECT_EQ(meeting.result, 8 | 32);
    EXPECT_EQ(meeting.t, 1.0f);
    EXPECT_EQ(Meet(across, Segment(1, 1, 1, 0)).result, 8 | 64);

    const Meeting atStart = Meet(across, Segment(0, 0, 0, 1));
    EXPECT_EQ(atStart.result, 4 | 32);
    EXPECT_EQ(atStart.t, 0.0f);
    EXPECT_EQ(Meet(across, Segment(0, 1, 0, 0)).result, 4 | 64);
}

TEST(Line, AnEndTouchingTheOthersInside)
{
    EXPECT_EQ(Meet(Segment(0, 0, 1, 0), Segment(1, -1, 1, 1)).result, 8 | 16);
    EXPECT_EQ(Meet(Segment(0, 0, 1, 0), Segment(0, -1, 0, 1)).result, 4 | 16);
    EXPECT_EQ(Meet(Segment(0, 0, 2, 0), Segment(1, 0, 1, 1)).result, 2 | 32);
    EXPECT_EQ(Meet(Segment(0, 0, 2, 0), Segment(1, 1, 1, 0)).result, 2 | 64);
}

TEST(Line, SnapsToAnEndWithinATolerance)
{
    const Line line = Segment(0, 0, 1, 0);
    const Meeting near1 = Meet(line, Segment(5e-6f, -1, 5e-6f, 1));
    EXPECT_EQ(near1.result, 4 | 16);
    EXPECT_EQ(near1.t, 0.0f);
    const Meeting near2 = Meet(line, Segment(1.000005f, -1, 1.000005f, 1));
    EXPECT_EQ(near2.result, 8 | 16);
    EXPECT_EQ(near2.t, 1.0f);
    EXPECT_EQ(Meet(line, Segment(2e-5f, -1, 2e-5f, 1)).result, 2 | 16);
    EXPECT_EQ(Meet(line, Segment(-2e-5f, -1, -2e-5f, 1)).result, 0);
}

TEST(Line, SegmentsThatMissReportNothing)
{
    EXPECT_EQ(Meet(Segment(0, 0, 2, 0), Segment(3, -1, 3, 1)).result, 0);
    EXPECT_EQ(Meet(Segment(0, 0, 2, 0), Segment(-1, -1, -1, 1)).result, 0);
    EXPECT_EQ(Meet(Segment(0, 0, 2, 0), Segment(1, 1, 1, 2)).result, 0);
    EXPECT_EQ(Meet(Segment(0, 0, 2, 0), Segment(1, -2, 1, -1)).result, 0);
}

TEST(Line, ParallelSegmentsReport256)
{
    const Meeting meeting = Meet(Segment(0, 0, 2, 0), Segment(0, 1, 2, 1));
    EXPECT_EQ(meeting.result, 256);
    EXPECT_EQ(meeting.t, -1.0f);
    EXPECT_XYZ(meeting.point, 0.0f, 0.0f, 0.0f);

    EXPECT_EQ(Intersection(Segment(0, 0, 2, 0), Segment(2, 1, 0, 1)).result, 256);
    EXPECT_EQ(Meet(Segment(0, 0, 0, 0), Segment(0, 1, 2, 1)).result, 256);
}

TEST(Line, APointInsideTheSegmentIsOnTheLine)
{
    const Meeting meeting = Probe(Segment(0, 0, 2, 0), Vector(1, 0, 0));
    EXPECT_EQ(meeting.result, 130);
    EXPECT_EQ(meeting.t, 0.5f);
}

TEST(Line, APointAtEndTwoIsOnTheLine)
{
    const Meeting meeting = Probe(Segment(0, 0, 2, 0), Vector(2, 0, 0));
    EXPECT_EQ(meeting.result, 136);
    EXPECT_EQ(meeting.t, 1.0f);
}

TEST(Line, APointNearEndOneIsOnTheLine)
{
    const Meeting meeting = Probe(Segment(0, 0, 2, 0), Vector(1e-5f, 0, 0));
    EXPECT_EQ(meeting.result, 132);
    EXPECT_EQ(meeting.t, 0.0f);
}

TEST(Line, APointExactlyAtEndOneIsNotOnTheLine)
{
    const Meeting meeting = Probe(Segment(0, 0, 2, 0), Vector(0, 0, 0));
    EXPECT_EQ(meeting.result, 0);
    EXPECT_EQ(meeting.t, -1.0f);
}

TEST(Line, PointsElsewhereAreNotOnTheLine)
{
    const Line line = Segment(0, 0, 2, 0);
    for (const Vector& point : {Vector(3, 0, 0), Vector(-1, 0, 0), Vector(1, 1, 0)})
    {
        const Meeting meeting = Probe(line, point);
        EXPECT_EQ(meeting.result, 0);
        EXPECT_EQ(meeting.t, -1.0f);
    }
}
