// SPDX-License-Identifier: MIT
#pragma once

#include "host/CObject.h"
#include "host/FlagAccessors.h"
#include "imaging/TextureMap.h"
#include "material/ColorVector.h"
#include "platform/Types.h"

class CWnd;
class DrawingObject;
class ProjectionData;

/// What one draw call shows, and how. One object is handed down the whole tree of nodes, and nodes
/// change it on the way: the walk over children sets ShowObject, and a textured node makes its
/// texture the current one.
///
/// Everything that it points at is borrowed. Another thread may signal the termination event, and
/// do nothing else, while a draw goes on.
class ORVANE_API DrawingParameters : public CObject
{
public:
    // The mode bits. Each has a Set, a Clear and a test operation below, which say what it does.
    static constexpr DWORD renderBit = 0x0001;
    static constexpr DWORD outlineBit = 0x0002;
    static constexpr DWORD extentsBoxBit = 0x0004;
    static constexpr DWORD showObjectBit = 0x0008;
    static constexpr DWORD showChildrenBit = 0x0010;
    static constexpr DWORD showExtentsAndHandlesBit = 0x0020;
    static constexpr DWORD selectingBit = 0x0040;
    static constexpr DWORD applyProjectionBit = 0x0080;
    static constexpr DWORD showLightsBit = 0x0100;
    static constexpr DWORD showSelectedOnlyBit = 0x0200;
    static constexpr DWORD showTexturesBit = 0x0400;
    static constexpr DWORD clearAndReturnBit = 0x0800;
    static constexpr DWORD forceSolidBackgroundBit = 0x1000;
    static constexpr DWORD accurateSelectionBit = 0x2000;
    static constexpr DWORD showBackgroundTextureBit = 0x4000;
    static constexpr DWORD noTerminateBit = 0x8000;

    DrawingParameters() = default;
    DrawingParameters(const DrawingParameters& other) = default;
    DrawingParameters& operator=(const DrawingParameters& other) = default;
    ~DrawingParameters() override = default;

    /// All mode bits at once. The library uses none above 0x8000.
    unsigned long GetFlags() const { return flags; }
    void SetFlags(unsigned long newFlags) { flags = static_cast<DWORD>(newFlags); }

    /// Solid, lit geometry; with ShowTextures also textures.
    ORVANE_FLAG(flags, Render, IsRender, renderBit);
    /// Outlines, instead of or beside solids.
    ORVANE_FLAG(flags, Outline, IsOutline, outlineBit);
    /// The extents box of every node that is drawn.
    ORVANE_FLAG(flags, ExtentsBox, IsExtentsBox, extentsBoxBit);
    /// A node's own geometry. The walk over children sets it for them.
    ORVANE_FLAG(flags, ShowObject, ShouldShowObject, showObjectBit);
    /// A node's children.
    ORVANE_FLAG(flags, ShowChildren, ShouldShowChildren, showChildrenBit);
    /// The boxes of the nodes that ask for them by their own ShowExtentsBox and ShowScalingBox.
    ORVANE_FLAG(flags, ShowExtentsAndHandles, ShouldShowExtentsAndHandles,
                showExtentsAndHandlesBit);
    /// A picking pass: children and glyphs are named, textures stay off.
    ORVANE_FLAG(flags, Selecting, IsSelecting, selectingBit);
    /// The view applies the projection first.
    ORVANE_FLAG(flags, ApplyProjection, ShouldApplyProjection, applyProjectionBit);
    /// Lights as objects that can be seen.
    ORVANE_FLAG(flags, ShowLights, ShouldShowLights, showLightsBit);
    /// Selected nodes only; any other is skipped with its subtree.
    ORVANE_FLAG(flags, ShowSelectedOnly, ShouldShowSelectedOnly, showSelectedOnlyBit);
    /// The textures of nodes, with Render and without Selecting.
    ORVANE_FLAG(flags, ShowTextures, ShouldShowTextures, showTexturesBit);
    /// The view clears and draws the background, and nothing else.
    ORVANE_FLAG(flags, ClearAndReturn, ShouldClearAndReturn, clearAndReturnBit);
    /// The background is solidBackgroundColor, whatever the scene has.
    ORVANE_FLAG(flags, ForceSolidBackground, ShouldForceSolidBackground, forceSolidBackgroundBit);
    /// Picking with a window of 1 by 1 pixel in place of 5 by 5.
    ORVANE_FLAG(flags, AccurateSelection, IsAccurateSelection, accurateSelectionBit);
    /// The scene's background texture.
    ORVANE_FLAG(flags, ShowBackgroundTexture, ShouldShowBackgroundTexture,
                showBackgroundTextureBit);
    /// The termination event does not count.
    ORVANE_FLAG(flags, NoTerminate, IsNoTerminate, noTerminateBit);

    /// Bits per pixel of the target, as the caller states it. Stored only.
    int GetColorResolution() const { return colorResolution; }
    void SetColorResolution(int bits) { colorResolution = bits; }

    /// The texture that the rendering context has now. A copy, with a mutex of its own.
    TextureMap GetCurrentTexture() const { return currentTexture; }
    void SetCurrentTexture(const TextureMap& texture) { currentTexture = texture; }
    /// The same without copying.
    TextureMap& CurrentTexture() { return currentTexture; }
    const TextureMap& CurrentTexture() const { return currentTexture; }

    /// Null until someone sets it; the view then sets its own.
    ProjectionData* GetProjection() const { return projection; }
    void SetProjection(ProjectionData* newProjection) { projection = newProjection; }

    ColorVector GetSolidBackgroundColor() const { return solidBackgroundColor; }
    void SetSolidBackgroundColor(const ColorVector& color) { solidBackgroundColor = color; }

    /// An event handle, null for none.
    void* GetTerminationEvent() const { return terminationEvent; }
    void SetTerminationEvent(void* event) { terminationEvent = event; }

    /// The window for messages about the drawing, by its object or its handle, which goes first.
    CWnd* GetMessageWindow() const { return messageWindow; }
    void SetMessageWindow(CWnd* window) { messageWindow = window; }
    HWND GetMessageWindowHandle() const { return messageWindowHandle; }
    void SetMessageWindowHandle(HWND window) { messageWindowHandle = window; }

    /// Whether a draw with these parameters draws a node and everything below it. Every node is
    /// asked for before anything else of it is drawn. A derived class may leave nodes out.
    virtual bool ShouldDraw(const DrawingObject&) const { return true; }
    /// Whether transparent letters leave their depth behind as opaque letters do. A derived class
    /// may ask for it, to find out which surfaces are in front.
    virtual bool ShouldKeepTransparentDepth() const { return false; }

protected:
    int colorResolution = 0;
    TextureMap currentTexture;
    DWORD flags = 0;
    ProjectionData* projection = nullptr;
    ColorVector solidBackgroundColor;  // opaque black
    void* terminationEvent = nullptr;
    CWnd* messageWindow = nullptr;
    HWND messageWindowHandle = nullptr;
};
