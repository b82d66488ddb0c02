// SPDX-License-Identifier: MIT
#pragma once

#include "host/CObject.h"
#include "host/CString.h"
#include "host/FlagAccessors.h"
#include "imaging/TextureSettings.h"
#include "platform/Sync.h"

class GLMemoryDIB;

/// The pixels of a texture: sizeX times sizeY of three bytes red, green, blue, rows tightly packed,
/// the lowest row first. Owns \c data, which was allocated with new[].
struct ORVANE_API _RGBImageRecord
{
    _RGBImageRecord() = default;
    _RGBImageRecord(int width, int height, BYTE* pixels) : sizeX(width), sizeY(height), data(pixels)
    {}
    ~_RGBImageRecord() { delete[] data; }
    _RGBImageRecord(const _RGBImageRecord&) = delete;
    _RGBImageRecord& operator=(const _RGBImageRecord&) = delete;

    int sizeX = 0;
    int sizeY = 0;
    BYTE* data = nullptr;
};

/// A picture file bound to a node, drawn on it as an OpenGL 2D texture; the scene's own is its
/// background.
///
/// The pixels are loaded on first use and are guarded by a mutex, one per texture map, because an
/// application may change a texture while another thread draws with it: everything that touches
/// them takes ownership and gives it back on every path. The mutex is recursive. A copy has a mutex
/// of its own and no pixels; it loads them again when it needs them.
class ORVANE_API TextureMap : public CObject
{
    DECLARE_SERIAL(TextureMap)

public:
    /// Bits of textureFlags.
    static constexpr DWORD Valid = 0x1;     ///< the file exists and can be mapped
    static constexpr DWORD Textured = 0x2;  ///< texturing is switched on
    static constexpr DWORD ScaleWithObject = 0x4;

    TextureMap();
    TextureMap(const TextureMap& other);
    explicit TextureMap(const CString& filename);
    TextureMap& operator=(const TextureMap& other);
    ~TextureMap() override;

    /// Back to the initial values, and lets go of the pixels.
    void Reset();

    /// Waits for the mutex for as long as it takes. The mutex handle; null when it cannot be had.
    void* GetOwnership();
    /// 0 when the calling thread does not own the texture map.
    int ReleaseOwnership();

    /// Takes a file: its name without directory (up to the last slash or backslash) and extension
    /// (from the last dot) becomes the texture's name, and the file is validated. Always 1.
    int Load(const CString& newFilename);

    /// Sets or clears Valid, by whether there is a file with bytes in it, and returns whether these
    /// begin with "BM". A file that is no picture is therefore Valid while the result is 0; that is
    /// meant, see ATextFileIsValidThoughItIsNoPicture.
    int ValidateFile();

    /// Loads the pixels anew, of a file that can be mapped; they stay missing when it is no
    /// picture, which is no failure here. 0 when the file is not Valid.
    int LoadImage();
    /// The pixels, owned by this texture map and loaded on first use; null when there are none.
    _RGBImageRecord* GetImage();
    void FreeImage();

    /// A BMP file of any depth as red, green and blue, owned by the caller; null when it is none.
    static _RGBImageRecord* DIBImageLoad(const char* filename);

    /// The pixels on OpenGL's own palette of 8 bits, for displays that have no more; owned by this
    /// texture map and made on first use. Null when there are none.
    GLMemoryDIB* GetDitheredImage();
    void FreeDitheredImage();
    /// Makes it anew, in a context of its own; the current one is current again afterwards.
    int GenerateDitheredImage();

    /// Makes the pixels the current OpenGL texture: scaled to powers of two of at most 256, or as
    /// mipmaps with quality 2. 0 unless Valid and Textured; without pixels Valid is cleared.
    int GenerateTextureMaps();
    /// Sets how the current texture is applied; switches texturing off and returns 0 unless Valid
    /// and Textured.
    int PrepareTextureMap();
    /// Switches texturing on and keeps ownership until DisableTextureMap. 0, and neither, unless
    /// Valid and Textured.
    int EnableTextureMap();
    /// Switches texturing off and gives ownership back. Always 1.
    int DisableTextureMap();

    CString GetName() const { return name; }
    void SetName(const CString& newName) { name = newName; }
    void SetFilename(const CString& newFilename) { filename = newFilename; }
    unsigned long GetQuality() const { return quality; }
    void SetQuality(unsigned long newQuality) { quality = static_cast<DWORD>(newQuality); }
    double GetRepeatRate() const { return repeatRate; }
    void SetRepeatRate(double rate) { repeatRate = rate; }
    double GetHorizontalLocation() const { return horizontalLocation; }
    void SetHorizontalLocation(double pixels) { horizontalLocation = pixels; }
    double GetVerticalLocation() const { return verticalLocation; }
    void SetVerticalLocation(double pixels) { verticalLocation = pixels; }
    ORVANE_FLAG(textureFlags, ScaleWithObject, ShouldScaleWithObject, ScaleWithObject);

    /// Whether both Valid and Textured are set.
    int ShouldTexture() const;

    // By name, bytes as unsigned. Drawing takes two of one name for the same OpenGL texture.
    bool operator==(const TextureMap* other) const { return CompareName_(other) == 0; }
    bool operator<(const TextureMap* other) const { return CompareName_(other) < 0; }
    bool operator<=(const TextureMap* other) const { return CompareName_(other) <= 0; }
    bool operator>(const TextureMap* other) const { return CompareName_(other) > 0; }
    bool operator>=(const TextureMap* other) const { return CompareName_(other) >= 0; }

    void Serialize(CArchive& archive) override;
    void DeserializeVersion1(CArchive& archive);
    void DeserializeVersion2(CArchive& archive);

    DWORD modulate = 1;  ///< nonzero: GL_MODULATE, the lit material shows through; zero: GL_DECAL
    CString filename;
    /// Of a background picture; an orvane::BackgroundPlacement.
    DWORD placement = static_cast<DWORD>(orvane::BackgroundPlacement::Tile);
    DWORD textureFlags = 0;
    GLMemoryDIB* ditheredImage = nullptr;  ///< owned
    _RGBImageRecord* image = nullptr;      ///< owned
    HANDLE mutex;

protected:
    double horizontalLocation = 0.0;  ///< of a background, pixels
    CString name;
    DWORD quality = static_cast<DWORD>(orvane::TextureQuality::Nearest);
    double repeatRate = 1.0;  ///< repetitions across the object
    double verticalLocation = 0.0;

private:
    int CompareName_(const TextureMap* other) const;
};
