// SPDX-License-Identifier: MIT
#pragma once

#include "host/CObject.h"
#include "host/CString.h"
#include "host/FlagAccessors.h"
#include "imaging/TextureSettings.h"
#include "platform/Sync.h"

#include <memory>

class GLMemoryDIB;
class MemoryMappedDIB;

/// The pixels of a texture: sizeX times sizeY pixels of three bytes each, red, green and blue, the
/// lowest row first, without padding between the rows. Owns \c data, which was allocated with
/// new[].
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

/// A picture file, BMP by tradition, that is drawn on a node as an OpenGL 2D texture. The texture
/// map of a scene is the scene's background picture.
///
/// The pixels are loaded when they are first needed. An application may change a texture map while
/// another thread draws with it, so each texture map has a mutex. Every function that uses the
/// pixels takes the mutex ("ownership") and releases it before it returns, except EnableTextureMap.
/// A thread that holds the mutex may take it again. A copy has a mutex of its own, and loads the
/// pixels again when it needs them.
class ORVANE_API TextureMap : public CObject
{
    DECLARE_SERIAL(TextureMap)

public:
    // The flags in textureFlags.
    static constexpr DWORD Valid = 0x1;            ///< the file exists and has at least one byte
    static constexpr DWORD Textured = 0x2;         ///< the node is drawn with the texture
    static constexpr DWORD ScaleWithObject = 0x4;  ///< the texture stretches with the node

    TextureMap();
    TextureMap(const TextureMap& other);
    explicit TextureMap(const CString& filename);
    TextureMap& operator=(const TextureMap& other);
    ~TextureMap() override;

    /// Sets all values to those of a new texture map and frees the pixels.
    void Reset();

    /// Waits until the mutex is free and takes it. Returns the mutex, or null when it cannot be
    /// taken.
    void* GetOwnership();
    /// Releases the mutex. Returns 0 when the calling thread does not hold it.
    int ReleaseOwnership();

    /// Sets the file and calls ValidateFile. The texture's name becomes the file's name without its
    /// directory (up to the last slash or backslash) and without its extension (from the last dot).
    /// Returns 1.
    int Load(const CString& newFilename);

    /// Sets Valid when the file exists and is not empty, otherwise clears it. Returns whether the
    /// file begins with "BM". A file that is not a bitmap is therefore Valid while the result is 0,
    /// which is required; see ATextFileIsValidThoughItIsNoPicture.
    int ValidateFile();

    /// Loads the pixels again. Returns 0 when the file is not Valid, otherwise 1, even when the
    /// file is not a bitmap; there are no pixels then.
    int LoadImage();
    /// The pixels, loaded on first use; null when they cannot be loaded. Owned by this texture map.
    _RGBImageRecord* GetImage();
    void FreeImage();

    /// Reads a BMP file of any bit count, or a PNG, JPEG, WebP or TIFF file, as red, green and
    /// blue. A picture too large for a texture is reduced (see MemoryMappedDIB::OpenAsTexture). The
    /// caller owns the result. Null when the file is not a picture that can be read.
    static _RGBImageRecord* DIBImageLoad(const char* filename);

    /// The pixels of a file that is not a BMP as a bitmap, for backgrounds. Read on first use,
    /// owned by this texture map. Null when the file cannot be read.
    const MemoryMappedDIB* GetBitmap();

    /// The pixels as an 8-bit bitmap with OpenGL's palette, for displays of 256 colours. Made on
    /// first use, owned by this texture map. Null when it cannot be made.
    GLMemoryDIB* GetDitheredImage();
    void FreeDitheredImage();
    /// Makes the 8-bit bitmap again, by drawing the pixels in a rendering context of its own. The
    /// rendering context that was current before is current again afterwards. Returns 0 on failure.
    int GenerateDitheredImage();

    /// Makes the pixels the current OpenGL texture. With quality Mipmap, OpenGL gets mipmaps. With
    /// any other quality, width and height are scaled to the next power of two, at most 256.
    /// Returns 0 when ShouldTexture is 0. Clears Valid and returns 0 when there are no pixels.
    int GenerateTextureMaps();
    /// Switches OpenGL's texturing on and sets how the texture is applied. When ShouldTexture is 0,
    /// switches texturing off and returns 0.
    int PrepareTextureMap();
    /// Takes the mutex, which DisableTextureMap releases, and switches OpenGL's texturing on. When
    /// ShouldTexture is 0 or the mutex cannot be taken, does neither and returns 0.
    int EnableTextureMap();
    /// Switches OpenGL's texturing off and releases the mutex. Returns 1.
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

    // The operators compare names, as unsigned bytes. Drawing treats two texture maps of the same
    // name as the same OpenGL texture.
    bool operator==(const TextureMap* other) const { return CompareName(other) == 0; }
    bool operator<(const TextureMap* other) const { return CompareName(other) < 0; }
    bool operator<=(const TextureMap* other) const { return CompareName(other) <= 0; }
    bool operator>(const TextureMap* other) const { return CompareName(other) > 0; }
    bool operator>=(const TextureMap* other) const { return CompareName(other) >= 0; }

    void Serialize(CArchive& archive) override;
    void DeserializeVersion1(CArchive& archive);
    void DeserializeVersion2(CArchive& archive);

    /// Nonzero: the texture's colour is multiplied with the lit material's (GL_MODULATE). 0: the
    /// texture replaces it (GL_DECAL).
    DWORD modulate = 1;
    CString filename;
    /// Of a background picture: an orvane::BackgroundPlacement.
    DWORD placement = static_cast<DWORD>(orvane::BackgroundPlacement::Tile);
    DWORD textureFlags = 0;
    GLMemoryDIB* ditheredImage = nullptr;  ///< owned
    _RGBImageRecord* image = nullptr;      ///< owned
    HANDLE mutex;

protected:
    double horizontalLocation = 0.0;  ///< of a background picture, in pixels from the left
    CString name;
    /// An orvane::TextureQuality.
    DWORD quality = static_cast<DWORD>(orvane::TextureQuality::Nearest);
    double repeatRate = 1.0;        ///< how often the texture repeats across the object
    double verticalLocation = 0.0;  ///< of a background picture, in pixels from the top

private:
    int CompareName(const TextureMap* other) const;

    std::unique_ptr<MemoryMappedDIB> bitmap_;  ///< null until GetBitmap has read the file
    CString bitmapFile_;                       ///< the file that bitmap_ was read from
};
