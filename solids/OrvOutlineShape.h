// SPDX-License-Identifier: MIT
#pragma once

#include "extrude/EdgeStyle.h"
#include "platform/Export.h"
#include "profiles/EdgeProfile.h"
#include "profiles/PlaneRegion.h"
#include "scene/DrawingObject.h"
#include "solids/BuiltWhenNeeded.h"
#include "solids/UncutSolid.h"

#include <functional>
#include <memory>
#include <vector>

namespace orvane
{

class OutlineSolids;
class SurfaceRecorder;
struct BuiltSolid;
struct OutlineSettings;
struct PlacedLetter;

/// A flat area and the material of the solid that is made of it.
struct OutlineArea
{
    PlaneRegion region;  ///< in ems
    NamedColor material;
};

/// Solids made of flat areas, such as those of a picture: one for each area, closed and in one
/// material. Their edges have a profile (profiles/EdgeProfile.h), which never crosses itself:
/// strokes that meet are joined, and strokes that are too thin end in a ridge.
///
/// The front faces lie in the plane z = 0, and the solids extend towards negative z by the z of the
/// scale. The box around all areas is centred on y = 0; along x it begins, has its middle or ends
/// at the origin. The profile keeps its size whatever the scale is. A profile that is deeper than
/// the solids, or than half of them when both faces have one, is made smaller. An area whose edges
/// cannot be cut keeps square edges; limits::maxSolidSteps says when it is left out.
/// Solids of areas side by side overlap where their profile reaches out of the outline.
///
/// In a picking pass, the solid of area i has the name n + i for a node with n children, and inside
/// of it the name of its part, a number of MeshPart.
///
/// Its record is that of DrawingObject, then the version, the file's name, the profile as text, the
/// faces with a profile, the alignment, the smooth angle, and the areas: of each its material, and
/// of each contour its corners.
class ORVANE_API OrvOutlineShape : public DrawingObject
{
    DECLARE_SERIAL(OrvOutlineShape)

public:
    /// Has no areas, square edges, and is centred.
    OrvOutlineShape();
    OrvOutlineShape(const OrvOutlineShape& other);
    ~OrvOutlineShape() override;
    /// Copies all but the solids, which are made again when they are needed.
    OrvOutlineShape& operator=(const OrvOutlineShape& other);

    int AreaCount() const;
    /// \param area 0 to AreaCount() - 1
    const PlaneRegion& Region(int area) const;
    const NamedColor& Material(int area) const;
    /// The contours of an area must not meet anywhere but in single corners. Throws Error for such
    /// contours, for coordinates that are no numbers, and for more than platform/Limits.h allows;
    /// nothing has changed then. The bounds change at the next CalculateBounds.
    void SetAreas(const std::vector<OutlineArea>& areas);
    /// The material of an area. An index past the areas is ignored.
    void SetSurfaceColor(const NamedColor& color, int area) override;

    /// The file that the areas come from, as it was named; may be empty. It is never opened.
    const CString& GetFileName() const { return fileName_; }
    void SetFileName(const CString& name) { fileName_ = name; }

    /// The bounds change at the next CalculateBounds. Throws Error for a profile that CheckProfile
    /// refuses.
    void SetProfile(const EdgeProfile& profile);
    const EdgeProfile& GetProfile() const { return profile_; }
    void SetProfileSides(BevelSides sides) { sides_ = sides; }
    BevelSides GetProfileSides() const { return sides_; }
    void SetAlignment(Alignment alignment) { alignment_ = alignment; }
    Alignment GetAlignment() const { return alignment_; }
    /// Degrees; see ProfileSolidOptions::smoothAngle.
    void SetSmoothAngle(double degrees) { smoothAngle_ = degrees; }
    double GetSmoothAngle() const { return smoothAngle_; }

    /// The solid of an area; builds it if that was not done yet.
    const BuiltSolid& Solid(int area);
    /// The solids that have been built and do not have the profile.
    std::vector<UncutSolid> UncutSolids();

    /// Sets the dimensions, which are those of the box around the areas, and computes the bounds,
    /// which also hold what a profile adds, and the children. Always returns 1.
    int CalculateBounds() override;
    /// Returns 0 when drawing is cancelled.
    int DrawObject(DrawingParameters* parameters) override;
    int Resize(const DVector& point, int handle) override;

    /// Calls \p visit with each solid: its index, as character, line and glyph index, at the
    /// origin.
    void PlaceSolids(const std::function<void(const PlacedLetter&)>& visit) const;
    void RecordSolid(int area, SurfaceRecorder& recorder);

    int SaveToUndo() override;
    int RestoreFromUndo() override;

    void Serialize(CArchive& archive) override;
    void DeserializeVersion1(CArchive& archive);

private:
    friend class OutlineMeshDrawing;  // compares the settings of its triangles with these

    /// The box around all areas, in ems. Its corners are the origin when there are no areas.
    struct AreaBox
    {
        contours::DoublePoint low;
        contours::DoublePoint high;
    };

    OutlineSettings CurrentSettings() const;
    OutlineSolids& CurrentSolids();
    template <typename Sink>
    void EmitSolid(int area, Sink& sink);
    int DrawSolids(DrawingParameters* parameters);
    /// Draws them in immediate mode, or in a picking pass. Returns 0 when drawing is cancelled.
    int DrawSolidsDirectly(DrawingParameters* parameters);
    int DrawContours(DrawingParameters* parameters) const;
    void FindTransparency();

    std::shared_ptr<const std::vector<PlaneRegion>> regions_;
    std::vector<NamedColor> materials_;  ///< of each region
    AreaBox box_;
    DVector overhang_;  ///< how much wider and higher the bounds are than the scaled dimensions
    CString fileName_;
    EdgeProfile profile_;
    BevelSides sides_ = BevelSides::Both;
    Alignment alignment_ = Alignment::Center;
    double smoothAngle_;
    BuiltWhenNeeded<OutlineSolids> solids_;
};

}  // namespace orvane
