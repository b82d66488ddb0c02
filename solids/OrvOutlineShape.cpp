// SPDX-License-Identifier: MIT
#include "solids/OrvOutlineShape.h"

#include "extrude/LetterDrawing.h"
#include "extrude/OrvFont.h"
#include "geometry/SurfaceRecorder.h"
#include "material/Unlit.h"
#include "scene/DrawingParameters.h"
#include "scene/SolidDrawer.h"
#include "solids/OutlineSolids.h"

#include <algorithm>
#include <cmath>

// Areas, solids, bounds and drawing. Records are in OrvOutlineShapeArchive.cpp.

namespace orvane
{

OrvOutlineShape::OrvOutlineShape()
    : regions_(std::make_shared<std::vector<PlaneRegion>>()),
      profile_{{ProfileStep{}}},
      smoothAngle_(ProfileSolidOptions().smoothAngle)
{}

OrvOutlineShape::OrvOutlineShape(const OrvOutlineShape& other) = default;
OrvOutlineShape::~OrvOutlineShape() = default;
OrvOutlineShape& OrvOutlineShape::operator=(const OrvOutlineShape& other) = default;

int OrvOutlineShape::AreaCount() const
{
    return static_cast<int>(regions_->size());
}

const PlaneRegion& OrvOutlineShape::Region(int area) const
{
    return (*regions_)[static_cast<std::size_t>(area)];
}

const NamedColor& OrvOutlineShape::Material(int area) const
{
    return materials_[static_cast<std::size_t>(area)];
}

void OrvOutlineShape::SetSurfaceColor(const NamedColor& color, int area)
{
    if (area >= 0 && area < AreaCount())
    {
        materials_[static_cast<std::size_t>(area)] = color;
        FindTransparency();
    }
}

void OrvOutlineShape::FindTransparency()
{
    const bool isTransparent =
        std::any_of(materials_.begin(), materials_.end(),
                    [](const NamedColor& material) { return material.IsTransparent() != 0; });
    isTransparent ? SetTransparent() : ClearTransparent();
}

void OrvOutlineShape::SetProfile(const EdgeProfile& profile)
{
    CheckProfile(profile);
    profile_ = profile;
}

OutlineSettings OrvOutlineShape::CurrentSettings() const
{
    OutlineSettings settings;
    settings.regions = regions_;
    settings.offset = (box_.low + box_.high) / -2.0;
    if (alignment_ != Alignment::Center)
    {
        settings.offset.x = alignment_ == Alignment::Left ? -box_.low.x : -box_.high.x;
    }
    const ProfileSides sides = sides_ == BevelSides::Front  ? ProfileSides::Front
                               : sides_ == BevelSides::Back ? ProfileSides::Back
                                                            : ProfileSides::Both;
    settings.solid = SettingsFor(GetScale(), profile_, sides, smoothAngle_, ProfileScaling::Fixed);
    return settings;
}

OutlineSolids& OrvOutlineShape::CurrentSolids()
{
    OutlineSettings settings = CurrentSettings();
    if (solids_ == nullptr || !solids_->AreOf(settings))
    {
        solids_ = std::make_unique<OutlineSolids>(std::move(settings));
    }
    return *solids_;
}

const BuiltSolid& OrvOutlineShape::Solid(int area)
{
    return CurrentSolids().Of(static_cast<std::size_t>(area));
}

std::vector<UncutSolid> OrvOutlineShape::UncutSolids()
{
    std::vector<UncutSolid> uncut;
    const OutlineSolids& solids = CurrentSolids();
    for (int area = 0; area < AreaCount(); ++area)
    {
        const BuiltSolid* const solid = solids.Known(static_cast<std::size_t>(area));
        if (solid != nullptr && solid->outcome != SolidOutcome::Profiled)
        {
            uncut.push_back({static_cast<std::size_t>(area), area,
                             solid->outcome == SolidOutcome::Missing, solid->problem});
        }
    }
    return uncut;
}

int OrvOutlineShape::CalculateBounds()
{
    bounds.ResetLocalBounds();
    CalculateChildBounds();
    if (AreaCount() > 0)
    {
        const OutlineSettings settings = CurrentSettings();
        const DVector scale = GetScale();
        const contours::DoublePoint low = box_.low + settings.offset;
        const contours::DoublePoint high = box_.high + settings.offset;
        // The sizes are written straight into the details, because the setters would derive the
        // scale from them.
        Details& details = EnsureDetails();
        details.unscaledDimensions = DVector(high.x - low.x, high.y - low.y, 1.0);
        details.scaledDimensions = DVector(details.unscaledDimensions.x * scale.x,
                                           details.unscaledDimensions.y * scale.y, scale.z);
        Vector minimum(static_cast<float>(std::min(low.x * scale.x, high.x * scale.x)),
                       static_cast<float>(std::min(low.y * scale.y, high.y * scale.y)),
                       static_cast<float>(std::min(0.0, -scale.z)));
        Vector maximum(static_cast<float>(std::max(low.x * scale.x, high.x * scale.x)),
                       static_cast<float>(std::max(low.y * scale.y, high.y * scale.y)),
                       static_cast<float>(std::max(0.0, -scale.z)));
        const Vector size = maximum - minimum;
        // A tip may reach further than the profile, so only the solids tell how far it is.
        for (int area = 0; ReachOf(settings.solid.profile) > 0 && area < AreaCount(); ++area)
        {
            for (const SolidSurface::Corner& corner : Solid(area).surface.corners)
            {
                minimum.SetVector(std::min(minimum.x, corner.place[0]),
                                  std::min(minimum.y, corner.place[1]), minimum.z);
                maximum.SetVector(std::max(maximum.x, corner.place[0]),
                                  std::max(maximum.y, corner.place[1]), maximum.z);
            }
        }
        overhang_ = DVector(maximum - minimum - size);
        Sphere sphere;
        sphere.CalculateSphere(minimum, maximum);
        bounds.AccumulateLocalBounds(minimum, maximum, sphere);
    }
    bounds.CalculateBounds(transform);
    return 1;
}

int OrvOutlineShape::Resize(const DVector& point, int handle)
{
    const HandleDrag drag = MeasureDrag(point, handle);
    const auto without = [](double extent, double overhang) {
        constexpr double smallest = 0.00001;
        return std::copysign(std::max(std::fabs(extent) - overhang, smallest), extent);
    };
    SetScaledDimensions(DVector(without(drag.extents.x, overhang_.x),
                                without(drag.extents.y, overhang_.y), drag.extents.z));
    return KeepAnchorInPlace(drag);
}

template <typename Sink>
void OrvOutlineShape::EmitSolid(int area, Sink& sink)
{
    const NamedColor& material = Material(area);
    const DVector scale = GetScale();
    EmitSurface(Solid(area).surface, SurfaceMaterials{material, material, material},
                SurfaceTexture(CurrentDetails().texture, scale), scale, sink);
}

int OrvOutlineShape::DrawObject(DrawingParameters* parameters)
{
    if (ShouldTerminateDrawing(parameters))
    {
        return 0;
    }
    const int drawn = parameters->IsRender()    ? DrawSolids(parameters)
                      : parameters->IsOutline() ? DrawContours(parameters)
                                                : 1;
    if (!drawn)
    {
        return 0;
    }
    DrawingObject::DrawObject(parameters);
    return 1;
}

int OrvOutlineShape::DrawSolids(DrawingParameters* parameters)
{
    SolidDrawer* const drawer = parameters->GetSolidDrawer();
    const SolidDrawing drawing = drawer != nullptr && AreaCount() > 0 && !parameters->IsSelecting()
                                     ? drawer->DrawOutlines(*this, *parameters)
                                     : SolidDrawing::NotDrawn;
    const bool isCancelled = drawing == SolidDrawing::NotDrawn ? !DrawSolidsDirectly(parameters)
                                                               : drawing == SolidDrawing::Stopped;
    if (isCancelled)
    {
        return 0;
    }
    if (IsTransparent())
    {
        // Other nodes than texts expect that nothing is blended.
        glDisable(GL_BLEND);
        glDepthMask(GL_TRUE);
    }
    return 1;
}

int OrvOutlineShape::DrawSolidsDirectly(DrawingParameters* parameters)
{
    const bool isNamed = parameters->IsSelecting() != 0;
    LetterDrawing drawing(*parameters);
    for (int area = 0; area < AreaCount(); ++area)
    {
        if (ShouldTerminateDrawing(parameters))
        {
            return 0;
        }
        Solid(area);  // before a name is pushed, because there may be too little memory
        if (isNamed)
        {
            glPushName(static_cast<GLuint>(GetChildCount() + area));
        }
        EmitSolid(area, drawing);
        if (isNamed)
        {
            glPopName();
        }
    }
    return 1;
}

int OrvOutlineShape::DrawContours(DrawingParameters* parameters) const
{
    const OutlineSettings settings = CurrentSettings();
    const DVector scale = GetScale();
    const bool isNamed = parameters->IsSelecting() != 0;
    const LetterDrawing drawing(*parameters);
    for (int area = 0; area < AreaCount(); ++area)
    {
        if (ShouldTerminateDrawing(parameters))
        {
            return 0;
        }
        drawing.UseMaterial(Material(area));
        const Unlit unlit;
        if (isNamed)
        {
            glPushName(static_cast<GLuint>(GetChildCount() + area));
        }
        drawing.BeginPart(MeshPart::Face);
        for (const double z : {-scale.z, 0.0})
        {
            for (const std::vector<contours::DoublePoint>& contour : Region(area).contours)
            {
                glBegin(GL_LINE_LOOP);
                for (const contours::DoublePoint& corner : contour)
                {
                    const contours::DoublePoint place = corner + settings.offset;
                    glVertex3d(place.x * scale.x, place.y * scale.y, z);
                }
                glEnd();
            }
        }
        drawing.EndPart();
        if (isNamed)
        {
            glPopName();
        }
    }
    glDisable(GL_COLOR_MATERIAL);
    return 1;
}

void OrvOutlineShape::PlaceSolids(const std::function<void(const PlacedLetter&)>& visit) const
{
    for (int area = 0; area < AreaCount(); ++area)
    {
        visit({static_cast<std::size_t>(area), area, area, 0, 0});
    }
}

void OrvOutlineShape::RecordSolid(int area, SurfaceRecorder& recorder)
{
    EmitSolid(area, recorder);
}

int OrvOutlineShape::SaveToUndo()
{
    return SaveCopy(new OrvOutlineShape(*this));
}

int OrvOutlineShape::RestoreFromUndo()
{
    return RestoreSavedCopy<OrvOutlineShape>();
}

}  // namespace orvane
