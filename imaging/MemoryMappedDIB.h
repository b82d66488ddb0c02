// SPDX-License-Identifier: MIT
#pragma once

#include "host/CObject.h"
#include "host/CString.h"
#include "platform/Bitmaps.h"
#include "platform/Files.h"
#include "platform/Memory.h"

#include <string>
#include <vector>

class ColorVector;
struct IStorage;

/// A bitmap whose pixels lie in one of three places: in a BMP file that is mapped read-only and
/// used as it is, in a bitmap of its own that can have a BMP file of the right size behind it
/// (CopyBits fills it), or in a packed bitmap that somebody handed over as a memory block.
///
/// What comes from files and blocks is checked when it is opened: header, colours and pixels lie
/// inside. Owns its device context, bitmap, file and mapping. Not copyable.
class ORVANE_API MemoryMappedDIB : public CObject
{
    DECLARE_SERIAL(MemoryMappedDIB)

public:
    /// What Open and OpenAsTrueColor return.
    enum Status
    {
        opened = 1,
        noName = 2,
        notBitmap = 3,  ///< the file does not start with "BM"
        unusable = 4    ///< it cannot be opened or mapped, or contradicts itself
    };

    MemoryMappedDIB();
    ~MemoryMappedDIB() override;
    MemoryMappedDIB(const MemoryMappedDIB&) = delete;
    MemoryMappedDIB& operator=(const MemoryMappedDIB&) = delete;

    /// Maps a file and uses it in place. What is open is closed first.
    int Open(const CString& name);
    /// Converts a file of any depth to a 24-bit bitmap of its own, the lowest row first.
    int OpenAsTrueColor(const CString& name);
    /// Why the last of these was refused: the place in the file, what is there and what was
    /// expected. Empty when it was opened.
    const std::string& GetRefusal() const { return refusal_; }
    /// Lets go of the file; nothing points into it then. 0 when none is open.
    int Close();

    /// Makes a bitmap, and with a name a new BMP file for it, whose space is taken on the disk.
    /// \param newHorizontalResolution dots per inch, as \p newVerticalResolution.
    /// \param newHeight negative for one whose highest row comes first.
    /// \param newBitCount 1, 4, 8, 16, 24 or 32.
    /// \return 0 when it cannot be had; a file that cannot be made is reported in a message box.
    virtual int Create(int newWidth, int newHeight, int newHorizontalResolution,
                       int newVerticalResolution, int newBitCount, const CString& name);
    /// Copies the bitmap's pixels into its file. 0 without one.
    int CopyBits();

    /// The bitmap as a packed one: header, colours, pixels. Owned by the caller, who frees it with
    /// GlobalFree; null without a bitmap of its own.
    HGLOBAL GetGlobalDIB();
    /// Uses a packed bitmap in place; the block stays the caller's and locked until
    /// DetachGlobalHandle. An 8-bit one that leaves its number of colours at 0 gets 256 written
    /// into it. 0 when it is no block or too small for what its header says.
    int AttachGlobalHandle(HGLOBAL handle);
    /// 0 when nothing is attached.
    int DetachGlobalHandle();

    /// Borrowed, as the record; null when there are none.
    void* GetDIBBits() const { return dibBits; }
    BITMAPINFO* GetDIBInfo() const { return dibInfo; }
    long GetDIBWidth() const { return width; }
    /// Negative for a file whose highest row comes first.
    long GetDIBHeight() const { return height; }

    /// See FindNearestPaletteColor.
    int FindNearestColor(ColorVector* color);

    /// Stores the bitmap as a stream of that name (ASCII, at most 31 characters): header, colours
    /// or masks, pixels. Loading makes a bitmap of its own, uncompressed. 0 when it cannot be done.
    int SaveToStorage(IStorage* storage, const char* name);
    int ReadFromStorage(IStorage* storage, const char* name);

    /// Loading makes a bitmap of its own. A stored pixel block of another length than the bitmap's
    /// is taken as far as it fits. Raises generic when there is no such bitmap.
    void Serialize(CArchive& archive) override;
    void DeserializeVersion1(CArchive& archive);

    int bitCount = 0;
    HDC memoryDC;
    HBITMAP dibSection = nullptr;
    int width = 0;
    int horizontalResolution = 0;  ///< dots per inch
    int height = 0;
    int verticalResolution = 0;
    DWORD dibInfoSize = 0;  ///< header and the colours that it counts, bytes
    CString filename;
    int mappedFromFile = 0;  ///< 1 when the record lies in a mapped file
    DWORD fileSize = 0;      ///< of a file to be made, bytes
    DWORD bitsOffset = 0;    ///< of the pixels in such a file

protected:
    /// Makes the record of the bitmap that is described, and the sizes of its file. 0 when there is
    /// no such bitmap or its file would be too large.
    int GenerateDIBInfo();
    /// Makes the file, when it has a name, and the bitmap. Null when either cannot be had; no file
    /// is left then.
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
    void CloseFile_();
    void DeleteSection_();
    int MakeFile_();
    /// Copies a packed bitmap, which has been checked, into one of its own.
    int TakePacked_(const BITMAPINFO& info, const void* pixels);
    DWORD ImageSize_() const;

    int Refuse_(Status status, std::string refusal);

    std::vector<DWORD> infoStorage_;
    std::string refusal_;
};
