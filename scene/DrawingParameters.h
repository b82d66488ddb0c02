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

namespace orvane
{
class SolidDrawer;
}

/// The settings of one draw call: what it shows, and how. The same object is passed to every node
/// of the tree, and nodes change it: the walk over children sets ShowObject, and a textured node
/// makes its texture the current one.
///
/// Every object that a pointer field names is borrowed. While a draw is running, another thread may
/// only signal the termination event.
class ORVANE_API DrawingParameters : public CObject
{
public:
    // The mode bits. The functions that set, clear and test a bit are below, with a comment on what
    // the bit does.
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

    /// All mode bits at once. The library does not use the bits above 0x8000.
    unsigned long GetFlags() const { return flags; }
    void SetFlags(unsigned long newFlags) { flags = static_cast<DWORD>(newFlags); }

    /// Draw solid, lit geometry; with ShowTextures also textures.
    ORVANE_FLAG(flags, Render, IsRender, renderBit);
    /// Draw outlines. Has no effect while Render is set: texts and meshes then draw only solids.
    ORVANE_FLAG(flags, Outline, IsOutline, outlineBit);
    /// Draw the extents box of every Editable node that is drawn. A node that is not Editable draws
    /// it only if ShowExtentsAndHandles and the node's ShowExtentsBox bit are set as well.
    ORVANE_FLAG(flags, ExtentsBox, IsExtentsBox, extentsBoxBit);
    /// Draw a node's own geometry. The walk over a node's children sets this bit for them.
    ORVANE_FLAG(flags, ShowObject, ShouldShowObject, showObjectBit);
    /// Draw a node's children.
    ORVANE_FLAG(flags, ShowChildren, ShouldShowChildren, showChildrenBit);
    /// Draw the boxes that nodes ask for with their own ShowExtentsBox and ShowScalingBox bits.
    ORVANE_FLAG(flags, ShowExtentsAndHandles, ShouldShowExtentsAndHandles,
                showExtentsAndHandlesBit);
    /// This is a picking pass: children and letters get names, and textures stay off.
    ORVANE_FLAG(flags, Selecting, IsSelecting, selectingBit);
    /// The view sets OpenGL's projection before it draws.
    ORVANE_FLAG(flags, ApplyProjection, ShouldApplyProjection, applyProjectionBit);
    /// Draw lights as visible objects.
    ORVANE_FLAG(flags, ShowLights, ShouldShowLights, showLightsBit);
    /// Draw selected nodes only. A node that is not selected is skipped with its subtree.
    ORVANE_FLAG(flags, ShowSelectedOnly, ShouldShowSelectedOnly, showSelectedOnlyBit);
    /// Draw nodes with their textures, if Render is set and Selecting is not.
    ORVANE_FLAG(flags, ShowTextures, ShouldShowTextures, showTexturesBit);
    /// The view clears the buffers and draws the background, but no nodes. It still sets the
    /// projection if ApplyProjection is set, and lights that do not turn with the scene.
    ORVANE_FLAG(flags, ClearAndReturn, ShouldClearAndReturn, clearAndReturnBit);
    /// Clear to solidBackgroundColor in place of the scene's background colour. A background
    /// picture that is shown (ShowBackgroundTexture) is drawn all the same.
    ORVANE_FLAG(flags, ForceSolidBackground, ShouldForceSolidBackground, forceSolidBackgroundBit);
    /// Pick with a window of 1 by 1 pixel in place of 5 by 5.
    ORVANE_FLAG(flags, AccurateSelection, IsAccurateSelection, accurateSelectionBit);
    /// Draw the scene's background texture.
    ORVANE_FLAG(flags, ShowBackgroundTexture, ShouldShowBackgroundTexture,
                showBackgroundTextureBit);
    /// Ignore the termination event.
    ORVANE_FLAG(flags, NoTerminate, IsNoTerminate, noTerminateBit);

    /// Bits per pixel of the target, as the caller states them. The library does not use the
    /// number.
    int GetColorResolution() const { return colorResolution; }
    void SetColorResolution(int bits) { colorResolution = bits; }

    /// A copy of the texture that is set in the rendering context now. The copy has its own mutex.
    TextureMap GetCurrentTexture() const { return currentTexture; }
    void SetCurrentTexture(const TextureMap& texture) { currentTexture = texture; }
    /// The texture itself, without copying.
    TextureMap& CurrentTexture() { return currentTexture; }
    const TextureMap& CurrentTexture() const { return currentTexture; }

    /// The lens to draw with, null at first. A view that finds null here sets a pointer to its own
    /// lens.
    ProjectionData* GetProjection() const { return projection; }
    void SetProjection(ProjectionData* newProjection) { projection = newProjection; }

    ColorVector GetSolidBackgroundColor() const { return solidBackgroundColor; }
    void SetSolidBackgroundColor(const ColorVector& color) { solidBackgroundColor = color; }

    /// An event handle, null for none.
    void* GetTerminationEvent() const { return terminationEvent; }
    void SetTerminationEvent(void* event) { terminationEvent = event; }

    /// The window for messages about the drawing, given as an object or as a handle. If both are
    /// set, the handle is used.
    CWnd* GetMessageWindow() const { return messageWindow; }
    void SetMessageWindow(CWnd* window) { messageWindow = window; }
    HWND GetMessageWindowHandle() const { return messageWindowHandle; }
    void SetMessageWindowHandle(HWND window) { messageWindowHandle = window; }

    /// Draws the solids of texts and imported meshes in their place, null for none. With a drawer
    /// such as orvane::MeshCache, an unchanged scene is drawn faster again and again.
    orvane::SolidDrawer* GetSolidDrawer() const { return solidDrawer; }
    void SetSolidDrawer(orvane::SolidDrawer* drawer) { solidDrawer = drawer; }

    /// Whether to draw a node and its subtree. Every node calls this before it draws anything. A
    /// derived class can leave nodes out; this class draws all.
    virtual bool ShouldDraw(const DrawingObject&) const { return true; }
    /// Whether transparent letters write into the depth buffer as opaque letters do. A derived
    /// class can return true to find out which surfaces are in front.
    virtual bool ShouldKeepTransparentDepth() const { return false; }
    /// Called when the background picture cannot be read, or becomes shorter, while it is drawn, so
    /// that it is not drawn or only in part. A derived class can tell somebody.
    virtual void LoseBackgroundPicture() {}

protected:
    int colorResolution = 0;
    TextureMap currentTexture;
    DWORD flags = 0;
    ProjectionData* projection = nullptr;
    ColorVector solidBackgroundColor;  // opaque black
    void* terminationEvent = nullptr;
    CWnd* messageWindow = nullptr;
    HWND messageWindowHandle = nullptr;
    orvane::SolidDrawer* solidDrawer = nullptr;
};
