// SPDX-License-Identifier: MIT
#pragma once

#include "host/CObject.h"
#include "host/CString.h"
#include "platform/Bitmaps.h"
#include "platform/Files.h"
#include "platform/Memory.h"

#include <cstdint>
#include <string>
#include <vector>

class ColorVector;
struct IStorage;

/// A bitmap whose pixels lie in one of three places:
/// - in a BMP file, which is mapped read-only and used without copying it (Open);
/// - in a bitmap that this object makes (Create). Create can also make a BMP file of that size;
///   CopyBits then copies the finished pixels into the file;
/// - in a memory block of the caller that holds a packed bitmap (AttachGlobalHandle): a header, a
///   colour table and pixels without gaps between them.
///
/// Files and blocks are checked before they are used: header, colours and pixels must lie inside
/// them. This object owns its device context, bitmap, file and mapping. It cannot be copied.
class ORVANE_API MemoryMappedDIB : public CObject
{
    DECLARE_SERIAL(MemoryMappedDIB)

public:
    /// The results of Open and OpenAsTrueColor.
    enum Status
    {
        opened = 1,
        noName = 2,
        notBitmap = 3,  ///< the file does not start with "BM"
        unusable = 4    ///< the file cannot be opened or mapped, or its header is wrong
    };

    MemoryMappedDIB();
    ~MemoryMappedDIB() override;
    MemoryMappedDIB(const MemoryMappedDIB&) = delete;
    MemoryMappedDIB& operator=(const MemoryMappedDIB&) = delete;

    /// Maps a BMP file and uses it in place. A file that is open already is closed first.
    int Open(const CString& name);
    /// Reads a BMP file of any bit count and makes a 24-bit bitmap from it, the lowest row first.
    int OpenAsTrueColor(const CString& name);
    /// The same, but a picture that is too large for a texture is reduced to a size that fits (see
    /// FitTexture): each pixel becomes the nearest one of the file.
    int OpenAsTexture(const CString& name);
    /// Whether the open file has become too short for its picture since it was opened. The pixels
    /// beyond its end are 0 then.
    bool HasLostBytes() const;
    /// Why the last Open or OpenAsTrueColor was refused: the place in the file, the value found and
    /// the value expected. Empty after a success.
    const std::string& GetRefusal() const { return refusal_; }
    /// Closes the file. If the pixels lie in the file, the bitmap has no pixels afterwards. Returns
    /// 0 when no file is open.
    int Close();

    /// Makes a bitmap. With a name, makes also a new BMP file for it and reserves the file's space
    /// on the disk.
    /// \param newHeight in pixels; negative for a bitmap whose highest row comes first.
    /// \param newHorizontalResolution in dots per inch, like \p newVerticalResolution.
    /// \param newBitCount 1, 4, 8, 16, 24 or 32 bits per pixel.
    /// \return 0 when the bitmap or the file cannot be made. A message box reports a file that
    /// cannot be made.
    virtual int Create(int newWidth, int newHeight, int newHorizontalResolution,
                       int newVerticalResolution, int newBitCount, const CString& name);
    /// Copies the pixels into the file that Create made. Returns 0 when there is no such file.
    int CopyBits();

    /// Returns a new memory block with a packed copy of the bitmap. The caller owns the block and
    /// frees it with GlobalFree. Returns null when there is no bitmap, or when its pixels lie in a
    /// mapped file or an attached block.
    HGLOBAL GetGlobalDIB();
    /// Uses a packed bitmap in place. The block still belongs to the caller and stays locked until
    /// DetachGlobalHandle. When the header of an 8-bit bitmap gives 0 colours, 256 is written into
    /// it. Returns 0 when the handle is no memory block, or when the block is too small for the
    /// bitmap that its header describes.
    int AttachGlobalHandle(HGLOBAL handle);
    /// Unlocks the attached block and stops using it. Returns 0 when no block is attached.
    int DetachGlobalHandle();

    // The pixels and the record are borrowed; null when there is no bitmap.
    void* GetDIBBits() const { return dibBits; }
    BITMAPINFO* GetDIBInfo() const { return dibInfo; }
    long GetDIBWidth() const { return width; }
    /// Negative for a bitmap whose highest row comes first.
    long GetDIBHeight() const { return height; }

    /// See FindNearestPaletteColor.
    int FindNearestColor(ColorVector* color);

    /// Stores the bitmap as a packed bitmap in a stream of a structured-storage file. Returns 0
    /// when that fails.
    /// \param name of the stream: ASCII, at most 31 characters.
    int SaveToStorage(IStorage* storage, const char* name);
    /// Makes an uncompressed bitmap from a stream that SaveToStorage wrote. Returns 0 when that
    /// fails.
    int ReadFromStorage(IStorage* storage, const char* name);

    /// Stores or loads the size and the pixels. When the record holds fewer or more bytes of pixels
    /// than the bitmap has, loading uses the smaller number of bytes. Throws CArchiveException with
    /// cause generic when no bitmap can have the stored size.
    void Serialize(CArchive& archive) override;
    void DeserializeVersion1(CArchive& archive);

    int bitCount = 0;
    HDC memoryDC;
    HBITMAP dibSection = nullptr;
    int width = 0;
    int horizontalResolution = 0;  ///< in dots per inch
    int height = 0;
    int verticalResolution = 0;  ///< in dots per inch
    /// In bytes: the header and as many colours as it says.
    DWORD dibInfoSize = 0;
    CString filename;
    int mappedFromFile = 0;  ///< 1 when the record lies in a mapped file, otherwise 0
    DWORD fileSize = 0;      ///< of the file that Create makes, in bytes
    DWORD bitsOffset = 0;    ///< where the pixels begin in that file, in bytes

protected:
    /// Makes the record of a bitmap from width, height, bitCount and the resolutions, and computes
    /// fileSize and bitsOffset. Returns 0 when no bitmap can have these sizes, or when its file
    /// would reach 4 GiB.
    int GenerateDIBInfo();
    /// Makes the bitmap and, when filename is not empty, its file. Returns null when either cannot
    /// be made; no file is left then.
    HBITMAP CreateDIBRectangleSection();

public:
    HGDIOBJ previousBitmap = nullptr;
    void* dibBits = nullptr;
    BITMAPINFO* dibInfo = nullptr;  ///< in infoStorage_, a mapped file or an attached block
    BITMAPFILEHEADER* fileHeader = nullptr;
    HANDLE fileHandle = nullptr;
    void* fileBits = nullptr;
    HANDLE mappingHandle = nullptr;
    void* mappedView = nullptr;
    HGLOBAL globalHandle = nullptr;

private:
    enum class Reduction
    {
        None,
        ToTexture
    };
    int ConvertToTrueColor(const CString& name, Reduction reduction);
    /// Closes the file, deletes the bitmap and detaches the memory block, if there are any.
    void ReleaseBitmap();
    void CloseFile();
    void DeleteSection();
    int MakeFile();
    /// Makes an uncompressed bitmap from a packed bitmap, which the caller has checked.
    int CopyPacked(const BITMAPINFO& info, const void* pixels);
    /// The number of bytes that the pixels take; 0 without a bitmap.
    DWORD PixelBytes() const;
    /// Keeps the text for GetRefusal and returns the status.
    int Refuse(Status status, std::string refusal);

    std::vector<DWORD> infoStorage_;
    std::string refusal_;
    /// The length that the open file needs for its picture, in bytes.
    std::uint64_t neededBytes_ = 0;
};
