// SPDX-License-Identifier: MIT
#pragma once

#include "extrude/EdgeStyle.h"
#include "platform/Export.h"
#include "profiles/EdgeProfile.h"
#include "scene/OrvFontString.h"
#include "solids/BuiltWhenNeeded.h"
#include "solids/UncutSolid.h"

#include <array>
#include <vector>

namespace orvane
{

class LetterDrawing;
class ProfileTextSolids;
struct PlaneRegion;
struct ProfileTextSettings;
struct SolidSurface;
struct SurfaceMaterials;

/// A text whose letters are closed solids. Their edges have a profile, which never crosses itself:
/// strokes that meet are joined, and strokes that are too thin end in a ridge.
///
/// The front faces lie in the plane z = 0 like those of other texts. Where a profile reaches out of
/// the outline, letters and lines move apart by its reach if AdjustSpacingForBevels is set. While
/// ScaleBevels is set, the profile is scaled with the letters; otherwise it keeps its size whatever
/// the text's scale is. A profile that is deeper than the letter, or than half of it when both
/// faces have one, is made smaller. The location of the bevels (SetBevelLocation) says which faces
/// have the profile; a number without a name counts as both.
///
/// While outlines are drawn, and not solids, the text draws the rings of the profile's steps and
/// the sharp edges of its solids. In a picking pass, the solid of joined letters has the name of
/// its first letter.
///
/// Its record is that of OrvFontString, then the version, the profile as text, the fusion and the
/// smooth angle.
class ORVANE_API OrvProfileString : public OrvFontString
{
    DECLARE_SERIAL(OrvProfileString)

public:
    OrvProfileString();
    OrvProfileString(const OrvProfileString& other);
    ~OrvProfileString() override;
    /// Copies all but the solids, which are made again when they are needed.
    OrvProfileString& operator=(const OrvProfileString& other);

    /// A new text has the profile "chamfer" with a width of 0.03 outside of the outline.
    const EdgeProfile& GetProfile() const { return profile_; }
    /// The bounds change at the next CalculateBounds. Throws Error for a profile that CheckProfile
    /// refuses.
    void SetProfile(const EdgeProfile& profile);

    LetterFusion GetFusion() const { return fusion_; }
    void SetFusion(LetterFusion fusion) { fusion_ = fusion; }

    /// Degrees; see ProfileSolidOptions::smoothAngle.
    double GetSmoothAngle() const { return smoothAngle_; }
    void SetSmoothAngle(double degrees) { smoothAngle_ = degrees; }

    /// Whether the edges have the profile. A derived class may have texts whose edges are those of
    /// other texts.
    virtual bool HasProfile() const { return true; }
    /// Whether letters have materials of their own beside those of the text.
    virtual bool HasLetterColors() const { return false; }
    /// A copy without children whose edges have another profile.
    virtual std::unique_ptr<OrvProfileString> CopyWithProfile(const EdgeProfile& profile) const;

    int CalculateBounds() override;

    int DrawNamedCharacters(DrawingParameters* parameters) override;
    void PlaceSolids(const std::function<void(const PlacedLetter&)>& visit) override;
    void RecordSolid(int glyphIndex, SurfaceRecorder& recorder) override;

    /// The solids that have been built for drawing or for a mesh and do not have the profile, each
    /// once. A letter keeps square edges when they cannot be cut. It is left out when that cannot
    /// be done either, or when the text has no width, height or depth.
    std::vector<UncutSolid> UncutSolids();
    /// The letters of a text in UTF-8 (IsUtf8) that are left out because their outlines cannot be
    /// read, each letter once for each font. Builds the letters that no drawing has built yet.
    virtual std::vector<UnreadLetter> UnreadLetters() { return {}; }

    int SaveToUndo() override;
    int RestoreFromUndo() override;

    void Serialize(CArchive& archive) override;
    void DeserializeVersion1(CArchive& archive);

protected:
    int DrawLettersDirectly(DrawingParameters* parameters) override;

    /// Calls \p visit with each letter and its place, line by line.
    virtual void PlaceLetters(const std::function<void(const PlacedLetter&)>& visit);
    /// The outline of a letter, in ems; empty when there is none.
    virtual PlaneRegion RegionOfLetter(int glyphIndex) const;
    /// \param solid as RecordSolid takes it
    virtual SurfaceMaterials MaterialsOf(int solid) const;
    void StoreProfile(CArchive& archive) const;

private:
    friend class TextMeshDrawing;  // compares the settings of its triangles with these

    ProfileTextSettings CurrentSettings() const;
    /// The solids for the current settings and, where letters are joined, for the current text.
    ProfileTextSolids& CurrentSolids();
    void EmitLines(const std::vector<std::array<float, 3>>& lines, const LetterDrawing& drawing);
    template <typename Sink>
    void EmitSolid(int solid, const SolidSurface& surface, Sink& sink) const;
    /// Draws all solids, or their lines.
    int DrawSolids(DrawingParameters* parameters, bool named);
    void UseReachAsBevel();

    EdgeProfile profile_;
    LetterFusion fusion_ = LetterFusion::Separate;
    double smoothAngle_;
    BuiltWhenNeeded<ProfileTextSolids> solids_;
};

}  // namespace orvane
