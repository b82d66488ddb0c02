// SPDX-License-Identifier: MIT
#include "host/RecordVersion.h"
#include "orvane/Error.h"
#include "platform/Limits.h"
#include "shapes/ContourGrid.h"
#include "solids/OrvOutlineShape.h"
#include "solids/OutlineSolids.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

// The areas of an OrvOutlineShape, which are checked wherever they come from, and its record.

namespace orvane
{

IMPLEMENT_SERIAL(OrvOutlineShape, DrawingObject, 1 | VERSIONABLE_SCHEMA)

namespace
{

std::string AtMost(std::size_t count)
{
    return "at most " + std::to_string(count);
}

void CheckContour(const shapes::Contour& contour, const std::string& place)
{
    if (contour.size() < 3)
    {
        throw Error(place, std::to_string(contour.size()) + " corners", "at least 3");
    }
    for (const contours::DoublePoint& corner : contour)
    {
        if (!(std::fabs(corner.x) <= limits::maxShapeCoordinate &&
              std::fabs(corner.y) <= limits::maxShapeCoordinate))
        {
            throw Error(place,
                        "a corner at " + std::to_string(corner.x) + ", " + std::to_string(corner.y),
                        "coordinates of at most 1,000,000 ems");
        }
    }
}

/// Checks areas one after another, as they are read.
class AreaCheck
{
public:
    /// Throws Error when the area is wrong, or one too many.
    void Add(const PlaneRegion& region)
    {
        const std::string place = "area " + std::to_string(areas_);
        if (++areas_ > limits::maxShapeColors)
        {
            throw Error("areas", std::to_string(areas_), AtMost(limits::maxShapeColors));
        }
        for (const shapes::Contour& contour : region.contours)
        {
            CheckContour(contour, place);
            corners_ += contour.size();
        }
        if (corners_ > std::size_t{limits::maxShapeSegments})
        {
            throw Error("areas", std::to_string(corners_) + " corners",
                        AtMost(limits::maxShapeSegments));
        }
        if (shapes::DoContoursMeet(region.contours, work_))
        {
            throw Error(place, "contours that cross or touch along edges",
                        "contours that touch at single corners at most");
        }
    }

private:
    std::size_t areas_ = 0;
    std::size_t corners_ = 0;
    shapes::WorkLimit work_{"areas", limits::maxShapeSteps};
};

/// \param corners of the areas that were read before; those of this one are added
PlaneRegion ReadRegion(CArchive& archive, std::size_t& corners)
{
    // Nothing is allocated before the bytes are there, because a count may be any number.
    PlaneRegion region;
    DWORD contourCount = 0;
    archive >> contourCount;
    for (DWORD i = 0; i < contourCount; ++i)
    {
        DWORD cornerCount = 0;
        archive >> cornerCount;
        corners += cornerCount;
        if (cornerCount < 3 || corners > std::size_t{limits::maxShapeSegments})
        {
            throw Error("contour " + std::to_string(i), std::to_string(cornerCount) + " corners",
                        "at least 3, and " + AtMost(limits::maxShapeSegments) + " of all areas");
        }
        shapes::Contour& contour = region.contours.emplace_back();
        for (DWORD k = 0; k < cornerCount; ++k)
        {
            contours::DoublePoint corner;
            archive >> corner.x;
            archive >> corner.y;
            contour.push_back(corner);
        }
    }
    return region;
}

/// A number of a record as a value of an enum class. Throws Error unless it is 0 to \p last.
template <typename Enum>
Enum NamedValue(LONG number, Enum last, const char* place)
{
    if (number < 0 || number > static_cast<LONG>(last))
    {
        throw Error(place, std::to_string(number),
                    "0 to " + std::to_string(static_cast<LONG>(last)));
    }
    return static_cast<Enum>(number);
}

}  // namespace

void OrvOutlineShape::SetAreas(const std::vector<OutlineArea>& areas)
{
    AreaCheck check;
    auto regions = std::make_shared<std::vector<PlaneRegion>>();
    std::vector<NamedColor> materials;
    const double infinity = std::numeric_limits<double>::infinity();
    AreaBox box = {{infinity, infinity}, {-infinity, -infinity}};
    for (const OutlineArea& area : areas)
    {
        check.Add(area.region);
        regions->push_back(area.region);
        materials.push_back(area.material);
        for (const shapes::Contour& contour : area.region.contours)
        {
            for (const contours::DoublePoint& corner : contour)
            {
                box.low = {std::min(box.low.x, corner.x), std::min(box.low.y, corner.y)};
                box.high = {std::max(box.high.x, corner.x), std::max(box.high.y, corner.y)};
            }
        }
    }
    regions_ = std::move(regions);
    materials_ = std::move(materials);
    box_ = box.low.x <= box.high.x ? box : AreaBox();
    FindTransparency();
}

void OrvOutlineShape::Serialize(CArchive& archive)
{
    DrawingObject::Serialize(archive);
    if (archive.IsLoading())
    {
        ReadRecordVersion(archive, RUNTIME_CLASS(OrvOutlineShape));
        DeserializeVersion1(archive);
        return;
    }
    WriteRecordVersion(archive, RUNTIME_CLASS(OrvOutlineShape));
    archive << fileName_;
    archive << CString(ProfileText(profile_).c_str());
    archive << LONG{static_cast<int>(sides_)};
    archive << LONG{static_cast<int>(alignment_)};
    archive << smoothAngle_;
    archive << static_cast<DWORD>(regions_->size());
    for (std::size_t i = 0; i < regions_->size(); ++i)
    {
        materials_[i].Serialize(archive);
        const PlaneRegion& region = (*regions_)[i];
        archive << static_cast<DWORD>(region.contours.size());
        for (const shapes::Contour& contour : region.contours)
        {
            archive << static_cast<DWORD>(contour.size());
            for (const contours::DoublePoint& corner : contour)
            {
                archive << corner.x;
                archive << corner.y;
            }
        }
    }
}

void OrvOutlineShape::DeserializeVersion1(CArchive& archive)
{
    CString profile;
    LONG sides = 0;
    LONG alignment = 0;
    DWORD areaCount = 0;
    archive >> fileName_;
    archive >> profile;
    archive >> sides;
    archive >> alignment;
    archive >> smoothAngle_;
    archive >> areaCount;
    try
    {
        SetProfile(ParseProfile(profile.Text()));
        sides_ = NamedValue(sides, BevelSides::Both, "the faces with a profile");
        alignment_ = NamedValue(alignment, Alignment::Right, "the alignment");
        if (!(smoothAngle_ >= 0 && smoothAngle_ <= 180))
        {
            throw Error("the smooth angle", std::to_string(smoothAngle_), "0 to 180 degrees");
        }
        if (areaCount > limits::maxShapeColors)
        {
            throw Error("areas", std::to_string(areaCount), AtMost(limits::maxShapeColors));
        }
        std::vector<OutlineArea> areas;
        std::size_t corners = 0;
        for (DWORD i = 0; i < areaCount; ++i)
        {
            OutlineArea& area = areas.emplace_back();
            area.material.Serialize(archive);
            area.region = ReadRegion(archive, corners);
        }
        SetAreas(areas);
    }
    catch (const Error& error)
    {
        AfxThrowArchiveException(CArchiveException::generic, error.what());
    }
    solids_.reset();
}

}  // namespace orvane
