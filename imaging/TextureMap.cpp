// SPDX-License-Identifier: MIT
#include "imaging/TextureMap.h"

#include "host/RecordVersion.h"
#include "imaging/GLMemoryDIB.h"
#include "imaging/MemoryMappedDIB.h"
#include "imaging/PictureBitmap.h"
#include "imaging/TextureOwnership.h"
#include "platform/Files.h"
#include "platform/MultibyteCompare.h"

#include <algorithm>
#include <cstring>
#include <utility>

IMPLEMENT_SERIAL(TextureMap, CObject, VERSIONABLE_SCHEMA | 2)

namespace
{

// Slash and backslash both separate directories on every system, because a document may have been
// saved on another system.
CString NameOfFile(const CString& filename)
{
    const int start = std::max(filename.ReverseFind('\\'), filename.ReverseFind('/')) + 1;
    const int dot = filename.ReverseFind('.');
    return dot >= start ? filename.Mid(start, dot - start) : filename.Mid(start);
}

// A file or a mapping, whose handle is closed at the end.
class OpenHandle
{
public:
    explicit OpenHandle(HANDLE handle) : handle_(handle) {}
    ~OpenHandle()
    {
        if (IsOpen())
        {
            CloseHandle(handle_);
        }
    }
    OpenHandle(const OpenHandle&) = delete;
    OpenHandle& operator=(const OpenHandle&) = delete;

    bool IsOpen() const { return handle_ != nullptr && handle_ != INVALID_HANDLE_VALUE; }
    operator HANDLE() const { return handle_; }

private:
    HANDLE handle_;
};

// Reads up to two bytes from the start of a file and returns how many there were; 0 when the file
// cannot be mapped.
std::size_t ReadStart(const CString& filename, BYTE (&bytes)[2])
{
    const OpenHandle file(CreateFileA(filename, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.IsOpen())
    {
        return 0;
    }
    const OpenHandle mapping(CreateFileMappingA(file, nullptr, PAGE_READONLY, 0, 0, nullptr));
    const std::size_t count = std::min<std::size_t>(GetFileSize(file, nullptr), sizeof bytes);
    const void* const view =
        mapping.IsOpen() ? MapViewOfFile(mapping, FILE_MAP_READ, 0, 0, count) : nullptr;
    if (view != nullptr)
    {
        std::memcpy(bytes, view, count);
        UnmapViewOfFile(view);
    }
    return view != nullptr ? count : 0;
}

// Deletes a dithered image. The destructor of the image leaves no rendering context current, so
// this function restores the context that was current before.
void DeleteDithered(const GLMemoryDIB* dithered)
{
    if (dithered != nullptr)
    {
        const HDC dc = wglGetCurrentDC();
        const HGLRC context = wglGetCurrentContext();
        delete dithered;
        wglMakeCurrent(dc, context);
    }
}

}  // namespace

TextureMap::TextureMap() : mutex(CreateMutexA(nullptr, FALSE, nullptr)) {}

TextureMap::TextureMap(const TextureMap& other) : TextureMap()
{
    *this = other;
}

TextureMap::TextureMap(const CString& newFilename) : TextureMap()
{
    Load(newFilename);
}

TextureMap& TextureMap::operator=(const TextureMap& other)
{
    if (this == &other)
    {
        return *this;
    }
    const TextureOwnership owned(*this);
    FreeImage();
    FreeDitheredImage();
    modulate = other.modulate;
    filename = other.filename;
    placement = other.placement;
    textureFlags = other.textureFlags;
    horizontalLocation = other.horizontalLocation;
    name = other.name;
    quality = other.quality;
    repeatRate = other.repeatRate;
    verticalLocation = other.verticalLocation;
    return *this;
}

TextureMap::~TextureMap()
{
    delete image;
    DeleteDithered(ditheredImage);
    CloseHandle(mutex);
}

void TextureMap::Reset()
{
    *this = TextureMap();
}

void* TextureMap::GetOwnership()
{
    const DWORD result = WaitForSingleObject(mutex, INFINITE);
    return result == WAIT_OBJECT_0 || result == WAIT_ABANDONED ? mutex : nullptr;
}

int TextureMap::ReleaseOwnership()
{
    return ReleaseMutex(mutex);
}

int TextureMap::Load(const CString& newFilename)
{
    const TextureOwnership owned(*this);
    filename = newFilename;
    name = NameOfFile(filename);
    ValidateFile();
    return 1;
}

int TextureMap::ValidateFile()
{
    const TextureOwnership owned(*this);
    BYTE start[2] = {};
    const std::size_t count = filename.IsEmpty() ? 0 : ReadStart(filename, start);
    if (count == 0)
    {
        textureFlags &= ~Valid;
        return 0;
    }
    textureFlags |= Valid;
    return std::memcmp(start, "BM", sizeof start) == 0;
}

int TextureMap::LoadImage()
{
    const TextureOwnership owned(*this);
    FreeImage();
    ValidateFile();
    if ((textureFlags & Valid) == 0)
    {
        return 0;
    }
    image = DIBImageLoad(filename);
    return 1;
}

_RGBImageRecord* TextureMap::GetImage()
{
    const TextureOwnership owned(*this);
    if (image == nullptr)
    {
        LoadImage();
    }
    return image;
}

void TextureMap::FreeImage()
{
    const TextureOwnership owned(*this);
    delete std::exchange(image, nullptr);
    bitmap_.reset();
}

const MemoryMappedDIB* TextureMap::GetBitmap()
{
    const TextureOwnership owned(*this);
    if (bitmap_ == nullptr || bitmapFile_ != filename)
    {
        bitmap_ = std::make_unique<MemoryMappedDIB>();
        bitmapFile_ = filename;
        if (!orvane::ReadAsBitmap(filename, *bitmap_).empty())
        {
            bitmap_.reset();
        }
    }
    return bitmap_.get();
}

GLMemoryDIB* TextureMap::GetDitheredImage()
{
    const TextureOwnership owned(*this);
    if (ditheredImage == nullptr)
    {
        GenerateDitheredImage();
    }
    return ditheredImage;
}

void TextureMap::FreeDitheredImage()
{
    const TextureOwnership owned(*this);
    DeleteDithered(std::exchange(ditheredImage, nullptr));
}

int TextureMap::ShouldTexture() const
{
    return (textureFlags & Valid) != 0 && (textureFlags & Textured) != 0;
}

int TextureMap::CompareName(const TextureMap* other) const
{
    return CompareMultibyte(name, other->name);
}

void TextureMap::Serialize(CArchive& archive)
{
    CObject::Serialize(archive);
    if (archive.IsStoring())
    {
        WriteRecordVersion(archive, RUNTIME_CLASS(TextureMap));
        archive << modulate << filename << textureFlags << name << quality << repeatRate;
        archive << placement << horizontalLocation << verticalLocation;
        return;
    }
    ReadVersionedRecord(archive, *this, &TextureMap::DeserializeVersion1,
                        &TextureMap::DeserializeVersion2);
}

void TextureMap::DeserializeVersion1(CArchive& archive)
{
    const TextureOwnership owned(*this);
    FreeImage();
    FreeDitheredImage();
    archive >> modulate >> filename >> textureFlags >> name >> quality >> repeatRate;
    placement = static_cast<DWORD>(orvane::BackgroundPlacement::Tile);
    horizontalLocation = 0.0;
    verticalLocation = 0.0;
}

void TextureMap::DeserializeVersion2(CArchive& archive)
{
    DeserializeVersion1(archive);
    archive >> placement >> horizontalLocation >> verticalLocation;
}
