// SPDX-License-Identifier: MIT
#pragma once

#include "extrude/EdgeStyle.h"
#include "extrude/ExtrusionData.h"
#include "host/FlagAccessors.h"
#include "material/NamedColor.h"
#include "scene/DrawingObject.h"

/// A node that holds a three-dimensional text: its characters in the process's code page, the
/// materials of its faces, walls and bevels, its edge style, spacing and justification. Without a
/// font it draws nothing of its own; see OrvFontString.
///
/// Lengths are in object units: one em is 1 before the node's scale.
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

    /// Copies the node's own part and every field here; no children and no undo copies.
    OrvString& operator=(const OrvString& other);

    const CString* GetTextString() const { return &textString; }
    CString* GetTextString() { return &textString; }
    void SetTextString(const CString& text) { textString = text; }
    /// Whether there are only carriage returns, line feeds and spaces. A tab counts as content.
    int IsStringEmpty() const;

    /// The width that was asked for; GetAllowableBevelDepth gives the one used.
    float GetBevelDepth() const { return bevelDepth; }
    void SetBevelDepth(float depth) { bevelDepth = depth; }

    /// 0 front face only, 1 back face only, 2 both. The tests return 1 or 0.
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

    /// 0 square edges, 1 bevelled, 2 rounded. The tests return 1 or 0.
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

    /// 0 left, 1 centre, 2 right. The tests return 1 or 0.
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

    /// How far the top of the text lies above its first line's origin, as last measured.
    float GetFirstLineOffset() const { return firstLineOffset; }
    void SetFirstLineOffset(float offset) { firstLineOffset = offset; }
    float GetInterCharacterSpacing() const { return interCharacterSpacing; }
    void SetInterCharacterSpacing(float spacing) { interCharacterSpacing = spacing; }
    float GetInterLineSpacing() const { return interLineSpacing; }
    void SetInterLineSpacing(float spacing) { interLineSpacing = spacing; }

    /// Copies.
    NamedColor GetBevelColor() const { return bevelColor; }
    NamedColor GetEdgeColor() const { return edgeColor; }
    NamedColor GetFaceColor() const { return faceColor; }
    /// Each keeps the node's Transparent bit up to date.
    void SetBevelColor(const NamedColor& color);
    void SetEdgeColor(const NamedColor& color);
    void SetFaceColor(const NamedColor& color);
    /// \param which faceSurface, edgeSurface or bevelSurface; any other number changes nothing.
    void SetSurfaceColor(const NamedColor& color, int which) override;
    /// Sets the node's Transparent bit when a material in use is transparent, else clears it.
    void SetTransparency();

    ORVANE_FLAG(stringFlags, UseBevelColor, ShouldUseBevelColor, useBevelColorBit);
    ORVANE_FLAG(stringFlags, UseEdgeColor, ShouldUseEdgeColor, useEdgeColorBit);
    /// Characters stand further apart by what the bevels add to them.
    ORVANE_FLAG(stringFlags, AdjustSpacingForBevels, ShouldAdjustSpacingForBevels,
                adjustSpacingForBevelsBit);
    /// Bevels grow with the node's scale instead of keeping their width.
    ORVANE_FLAG(stringFlags, ScaleBevels, ShouldScaleBevels, scaleBevelsBit);

    /// Half of the smallest scale, as last computed.
    float GetMaximumBevelDepth() const { return maximumBevelDepth; }
    /// Returns 1.
    int CalculateMaximumBevelDepth();
    /// The bevel depth, limited by the text's depth, by half of it when both faces share it; 0 for
    /// square edges.
    float GetAllowableBevelDepth() const;

    /// What a draw of this text needs, with its heights calculated.
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
    friend class OrvFont;  // reads the text and the materials for every glyph, without copies
};
