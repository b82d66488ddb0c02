// SPDX-License-Identifier: MIT
// The record of outlines.
#include "platform/Limits.h"
#include "tests/support/NodeRecords.h"
#include "tests/support/OutlineAreas.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace
{
using namespace orvane;

/// The fields of the class's own part, which can be replaced.
struct OwnPart
{
    DWORD version = 1;
    const char* fileName = "logo.svg";
    const char* profile = "0,0 -0.25,-0.5";
    LONG sides = 0;
    LONG alignment = 2;
    double smoothAngle = 45;
    DWORD areaCount = 1;
    RecordBytes material = NamedColorRecord("#ff0000");
    DWORD contourCount = 1;
    DWORD cornerCount = 3;
    std::vector<double> corners = {0, 0, 1, 0, 0, 0.5};

    RecordBytes Get() const
    {
        RecordBytes record;
        record.Dword(version).String(fileName).String(profile).Long(sides).Long(alignment);
        record.Double(smoothAngle).Dword(areaCount).Append(material);
        record.Dword(contourCount).Dword(cornerCount);
        for (const double coordinate : corners)
        {
            record.Double(coordinate);
        }
        return record;
    }
};

Bytes Record(const OwnPart& own)
{
    return NodeRecord().Get().Append(own.Get());
}

int CauseOf(const OwnPart& own)
{
    OrvOutlineShape read;
    return LoadCause(read, Record(own));
}

TEST(OrvOutlineShapeRecord, IsThatOfANodeThenTheAreas)
{
    OrvOutlineShape shape;
    shape.SetFileName("logo.svg");
    shape.SetProfile(ParseProfile("0,0 -0.25,-0.5"));
    shape.SetProfileSides(BevelSides::Front);
    shape.SetAlignment(Alignment::Right);
    shape.SetSmoothAngle(45);
    shape.SetAreas({{{{{{0, 0}, {1, 0}, {0, 0.5}}}}, NamedColor("#ff0000")}});
    EXPECT_EQ(Stored(shape), Record(OwnPart()));
}

TEST(OrvOutlineShapeRecord, IsReadBack)
{
    OrvOutlineShape read;
    LoadRecord(read, Record(OwnPart()));
    EXPECT_STREQ(read.GetFileName(), "logo.svg");
    EXPECT_EQ(read.GetProfile(), ParseProfile("0,0 -0.25,-0.5"));
    EXPECT_EQ(read.GetProfileSides(), BevelSides::Front);
    EXPECT_EQ(read.GetAlignment(), Alignment::Right);
    EXPECT_EQ(read.GetSmoothAngle(), 45);
    ASSERT_EQ(read.AreaCount(), 1);
    EXPECT_STREQ(read.Material(0).GetName(), "#ff0000");
    ASSERT_EQ(read.Region(0).contours.size(), 1u);
    EXPECT_EQ(read.Region(0).contours[0][2], (contours::DoublePoint{0, 0.5}));
    EXPECT_EQ(Stored(read), Record(OwnPart()));
}

TEST(OrvOutlineShapeRecord, OfSeveralAreasAndContoursIsTheSameAgain)
{
    OrvOutlineShape shape;
    shape.SetAreas({FrameArea(), FillingArea()});
    const Bytes bytes = Stored(shape);
    OrvOutlineShape read;
    LoadRecord(read, bytes);
    EXPECT_EQ(read.AreaCount(), 2);
    EXPECT_EQ(read.Region(0).contours.size(), 2u);
    EXPECT_EQ(Stored(read), bytes);
}

TEST(OrvOutlineShapeRecord, OfAnotherVersionIsRefused)
{
    OwnPart own;
    own.version = 2;
    EXPECT_EQ(CauseOf(own), CArchiveException::badSchema);
}

TEST(OrvOutlineShapeRecord, WithBadValuesIsRefused)
{
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const auto with = [](auto change) {
        OwnPart own;
        change(own);
        return own;
    };
    const OwnPart wrong[] = {
        with([](OwnPart& own) { own.profile = ""; }),
        with([](OwnPart& own) { own.profile = "0,0 x"; }),
        with([](OwnPart& own) { own.sides = -1; }),
        with([](OwnPart& own) { own.sides = 3; }),
        with([](OwnPart& own) { own.alignment = -1; }),
        with([](OwnPart& own) { own.alignment = 3; }),
        with([](OwnPart& own) { own.smoothAngle = 180.5; }),
        with([](OwnPart& own) { own.smoothAngle = -1; }),
        with([](OwnPart& own) { own.smoothAngle = nan; }),
        with([](OwnPart& own) { own.areaCount = 1001; }),
        with([](OwnPart& own) { own.cornerCount = 2; }),
        with([](OwnPart& own) { own.cornerCount = 0; }),
        with([](OwnPart& own) { own.cornerCount = 1'000'001; }),
        with([](OwnPart& own) { own.cornerCount = 0xFFFFFFFF; }),
        with([](OwnPart& own) { own.corners[3] = nan; }),
        with([](OwnPart& own) { own.corners[3] = -infinity; }),
        with([](OwnPart& own) { own.corners[5] = 1'000'000.5; }),
        with([](OwnPart& own) {
            own.cornerCount = 4;
            own.corners = {0, 0, 1, 1, 1, 0, 0, 1};  // crosses itself
        }),
    };
    for (const OwnPart& own : wrong)
    {
        EXPECT_EQ(CauseOf(own), CArchiveException::generic) << &own - wrong;
    }
}

TEST(OrvOutlineShapeRecord, ThatEndsTooEarlyIsRefused)
{
    const Bytes whole = Record(OwnPart());
    const std::size_t own = OwnPart().Get().Get().size();
    for (std::size_t missing = 1; missing < own; ++missing)
    {
        OrvOutlineShape read;
        EXPECT_EQ(LoadCause(read, Bytes(whole.begin(),
                                        whole.end() - static_cast<std::ptrdiff_t>(missing))),
                  CArchiveException::endOfFile)
            << missing;
    }
}

TEST(OrvOutlineShapeRecord, HasAtMostAMillionCornersInAllAreas)
{
    // Each contour is a triangle of a row; two areas have half of the corners each.
    const auto row = [](int triangles) {
        PlaneRegion region;
        for (int i = 0; i < triangles; ++i)
        {
            const double x = i * 0.001;
            region.contours.push_back({{x, 0}, {x + 0.0005, 0}, {x, 1}});
        }
        return region;
    };
    OrvOutlineShape shape;
    shape.SetAreas({{row(166'666), NamedColor()}, {row(166'667), NamedColor()}});  // 999,999
    EXPECT_EQ(shape.AreaCount(), 2);
    Bytes bytes = Stored(shape);
    // One area more, of three corners, makes it 1,000,002.
    const Bytes more =
        RecordBytes().Append(NamedColorRecord()).Dword(1).Dword(3).Doubles({0, 0, 1, 0, 0, 1});
    bytes.insert(bytes.end(), more.begin(), more.end());
    const std::size_t start = NodeRecord().Get().Get().size();
    bytes[start + 4 + 1 + 4 + 4 + 4 + 8] = 3;  // version, no name, "0,0", sides, alignment, angle
    OrvOutlineShape read;
    EXPECT_EQ(LoadCause(read, bytes), CArchiveException::generic);
}

TEST(OrvOutlineShapeRecord, WhoseContoursCrossAMillionTimesIsRefusedAtOnce)
{
    // A star whose 2,001 edges all cross each other.
    OwnPart own;
    own.cornerCount = 2001;
    own.corners.clear();
    for (int i = 0; i < 2001; ++i)
    {
        const double angle = i * 1000 * 2 * 3.14159265358979 / 2001;
        own.corners.push_back(std::cos(angle));
        own.corners.push_back(std::sin(angle));
    }
    EXPECT_EQ(CauseOf(own), CArchiveException::generic);
}
}  // namespace
