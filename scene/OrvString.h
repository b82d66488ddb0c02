// SPDX-License-Identifier: MIT
#pragma once

#include "extrude/EdgeStyle.h"
#include "extrude/ExtrusionData.h"
#include "host/FlagAccessors.h"
#include "material/NamedColor.h"
#include "scene/DrawingObject.h"

/// A three-dimensional text: its characters in the process's code page, the materials of its faces,
/// side walls and bevels, its edge style, spacing and justification. This class has no font and
/// draws no letters; OrvFontString does.
///
/// Lengths are in the node's units, in which one em is 1 before the node's scale is applied.
class ORVANE_API OrvString : public DrawingObject
{
    DECLARE_SERIAL(OrvString)

public:
    // The bits of stringFlags.
    static constexpr DWORD useBevelColorBit = 0x1;
    static constexpr DWORD useEdgeColorBit = 0x2;
    static constexpr DWORD adjustSpacingForBevelsBit = 0x4;
    static constexpr DWORD scaleBevelsBit = 0x8;

    // The surfaces of a text, for SetSurfaceColor.
    static constexpr int faceSurface = 0;
    static constexpr int edgeSurface = 1;
    static constexpr int bevelSurface = 2;

    OrvString();
    OrvString(const OrvString& other);
    ~OrvString() override;

    /// Copies the node's part as DrawingObject does, and all fields of this class.
    OrvString& operator=(const OrvString& other);

    const CString* GetTextString() const { return &textString; }
    CString* GetTextString() { return &textString; }
    void SetTextString(const CString& text) { textString = text; }
    /// Whether the text has no characters except carriage returns, line feeds and spaces. A tab is
    /// content.
    int IsStringEmpty() const;

    /// The requested width of the bevels. GetAllowableBevelDepth returns the width that is drawn.
    float GetBevelDepth() const { return bevelDepth; }
    void SetBevelDepth(float depth) { bevelDepth = depth; }

    /// Where the bevels are: the value of an orvane::BevelSides. The tests return 1 or 0.
    int GetBevelLocation() const { return bevelLocation; }
    void SetBevelLocation(int location) { bevelLocation = location; }
    int IsFrontFaceOnly() const
    {
        return bevelLocation == static_cast<int>(orvane::BevelSides::Front);
    }
    int IsBackFaceOnly() const
    {
        return bevelLocation == static_cast<int>(orvane::BevelSides::Back);
    }
    int IsBothFaces() const { return bevelLocation == static_cast<int>(orvane::BevelSides::Both); }

    /// How the edges look: the value of an orvane::EdgeStyle. The tests return 1 or 0.
    int GetBevelStyle() const { return bevelStyle; }
    void SetBevelStyle(int style) { bevelStyle = style; }
    int ShouldSquareEdges() const
    {
        return bevelStyle == static_cast<int>(orvane::EdgeStyle::Square);
    }
    int ShouldBevelEdges() const
    {
        return bevelStyle == static_cast<int>(orvane::EdgeStyle::Bevel);
    }
    int ShouldRoundEdges() const
    {
        return bevelStyle == static_cast<int>(orvane::EdgeStyle::Round);
    }

    /// How lines are aligned: the value of an orvane::Alignment. The tests return 1 or 0.
    int GetJustification() const { return justification; }
    void SetJustification(int side) { justification = side; }
    int ShouldLeftJustify() const
    {
        return justification == static_cast<int>(orvane::Alignment::Left);
    }
    int ShouldCenterJustify() const
    {
        return justification == static_cast<int>(orvane::Alignment::Center);
    }
    int ShouldRightJustify() const
    {
        return justification == static_cast<int>(orvane::Alignment::Right);
    }

    /// The distance from the origin of the first line up to the top of the text, as last measured.
    float GetFirstLineOffset() const { return firstLineOffset; }
    void SetFirstLineOffset(float offset) { firstLineOffset = offset; }
    float GetInterCharacterSpacing() const { return interCharacterSpacing; }
    void SetInterCharacterSpacing(float spacing) { interCharacterSpacing = spacing; }
    float GetInterLineSpacing() const { return interLineSpacing; }
    void SetInterLineSpacing(float spacing) { interLineSpacing = spacing; }

    /// The getters return copies of the materials.
    NamedColor GetBevelColor() const { return bevelColor; }
    NamedColor GetEdgeColor() const { return edgeColor; }
    NamedColor GetFaceColor() const { return faceColor; }
    /// Each setter also updates the node's Transparent bit.
    void SetBevelColor(const NamedColor& color);
    void SetEdgeColor(const NamedColor& color);
    void SetFaceColor(const NamedColor& color);
    /// \param which faceSurface, edgeSurface or bevelSurface; any other number changes nothing.
    void SetSurfaceColor(const NamedColor& color, int which) override;
    /// Sets the node's Transparent bit if a material in use is transparent, and clears it
    /// otherwise.
    void SetTransparency();

    ORVANE_FLAG(stringFlags, UseBevelColor, ShouldUseBevelColor, useBevelColorBit);
    ORVANE_FLAG(stringFlags, UseEdgeColor, ShouldUseEdgeColor, useEdgeColorBit);
    /// Characters are spaced wider by the width that bevels add to them.
    ORVANE_FLAG(stringFlags, AdjustSpacingForBevels, ShouldAdjustSpacingForBevels,
                adjustSpacingForBevelsBit);
    /// Bevels scale with the node; otherwise they keep their width.
    ORVANE_FLAG(stringFlags, ScaleBevels, ShouldScaleBevels, scaleBevelsBit);

    /// Half of the smallest of the three scale factors, as CalculateMaximumBevelDepth last computed
    /// it.
    float GetMaximumBevelDepth() const { return maximumBevelDepth; }
    /// Always returns 1.
    int CalculateMaximumBevelDepth();
    /// The width of the bevels that are drawn: the bevel depth, but at most the depth of the text,
    /// or half the depth of the text when both sides are bevelled. 0 for square edges.
    float GetAllowableBevelDepth() const;

    /// The parameters with which this text is extruded when it is drawn.
    ExtrusionData GetExtrusionData() const;

    void Serialize(CArchive& archive) override;
    void DeserializeVersion1(CArchive& archive);
    void DeserializeVersion2(CArchive& archive);

    DWORD stringFlags = useBevelColorBit | useEdgeColorBit | adjustSpacingForBevelsBit;
    float maximumBevelDepth = 0;

protected:
    NamedColor bevelColor;
    float bevelDepth = 0;
    int bevelLocation = static_cast<int>(orvane::BevelSides::Both);
    int bevelStyle = static_cast<int>(orvane::EdgeStyle::Square);
    NamedColor edgeColor;
    NamedColor faceColor;
    float firstLineOffset = 0;
    float interCharacterSpacing = 0;
    float interLineSpacing = 0;
    int justification = static_cast<int>(orvane::Alignment::Left);
    CString textString;

private:
    friend class OrvFont;  // reads text and materials for every letter without copying them
};
