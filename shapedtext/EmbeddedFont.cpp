// SPDX-License-Identifier: MIT
#include "shapedtext/EmbeddedFont.h"

#include "extrude/FontDC.h"
#include "host/CFile.h"
#include "host/RecordVersion.h"
#include "platform/DeviceContexts.h"
#include "platform/Limits.h"

#include <algorithm>
#include <map>
#include <mutex>

namespace orvane
{

IMPLEMENT_SERIAL(EmbeddedFont, CObject, 1 | VERSIONABLE_SCHEMA)

std::shared_ptr<const EmbeddedFont> EmbeddedFont::Read(CArchive& archive)
{
    auto* const font = static_cast<EmbeddedFont*>(archive.ReadObject(RUNTIME_CLASS(EmbeddedFont)));
    if (font == nullptr)
    {
        return nullptr;
    }
    // An object that was read before belongs to the texts that have it.
    std::shared_ptr<const EmbeddedFont> known = font->weak_from_this().lock();
    return known != nullptr ? known : std::shared_ptr<const EmbeddedFont>(font);
}

std::shared_ptr<const EmbeddedFont> EmbeddedFont::OfFile(const std::string& file)
{
    static std::mutex mutex;
    static std::map<std::string, std::weak_ptr<const EmbeddedFont>> known;

    const std::shared_ptr<EmbeddedFont> read(new EmbeddedFont);
    try
    {
        CFile opened(file.c_str(), CFile::modeRead);
        const std::uint64_t length = opened.GetLength();
        if (length > limits::maxEmbeddedFontBytes)
        {
            return nullptr;
        }
        read->bytes_.resize(static_cast<std::size_t>(length));
        read->bytes_.resize(opened.Read(read->bytes_.data(), static_cast<UINT>(length)));
    }
    catch (const CFileException&)
    {
        return nullptr;
    }
    const std::lock_guard<std::mutex> lock(mutex);
    std::erase_if(known, [](const auto& each) { return each.second.expired(); });
    std::weak_ptr<const EmbeddedFont>& place = known[file];
    std::shared_ptr<const EmbeddedFont> earlier = place.lock();
    if (earlier != nullptr && earlier->bytes_ == read->bytes_)
    {
        return earlier;
    }
    place = read;
    return read;
}

std::shared_ptr<const ShapingFace> EmbeddedFont::Open(const FaceIdentity& face) const
{
    if (file_ == nullptr)
    {
        file_ = MemoryFile::Make(bytes_);
    }
    if (file_ == nullptr)
    {
        return nullptr;
    }
    FaceFile wanted;
    wanted.file = file_->Path();
    wanted.index = face.index;
    wanted.axes = face.axes;
    std::string problem;
    return ShapingFace::Open(wanted, &problem);
}

void EmbeddedFont::Serialize(CArchive& archive)
{
    if (archive.IsStoring())
    {
        WriteRecordVersion(archive, RUNTIME_CLASS(EmbeddedFont));
        archive << static_cast<DWORD>(bytes_.size());
        archive.Write(bytes_.data(), static_cast<UINT>(bytes_.size()));
        return;
    }
    ReadRecordVersion(archive, RUNTIME_CLASS(EmbeddedFont));
    DWORD size = 0;
    archive >> size;
    if (size > limits::maxEmbeddedFontBytes)
    {
        archive.Fail(CArchiveException::generic, "a font of " + std::to_string(size) +
                                                     " bytes, expected at most " +
                                                     std::to_string(limits::maxEmbeddedFontBytes));
    }
    // A file that ends early must not take memory for the bytes that it does not have.
    constexpr std::size_t part = std::size_t{1} << 16;
    bytes_.clear();
    while (bytes_.size() < size)
    {
        const std::size_t begin = bytes_.size();
        bytes_.resize(std::min<std::size_t>(begin + part, size));
        archive.ReadExactly(bytes_.data() + begin, static_cast<UINT>(bytes_.size() - begin));
    }
}

bool MayBeEmbedded(const ShapingFace& face)
{
    constexpr UINT restricted = 0x2;
    constexpr UINT previewAndPrint = 0x4;
    constexpr UINT editable = 0x8;
    constexpr UINT bitmapsOnly = 0x200;
    const HFONT font = face.MakeFont(-face.Metrics().unitsPerEm);
    if (font == nullptr)
    {
        return false;
    }
    const OutlineMetricsBuffer metrics = ReadOutlineMetrics(font);
    DeleteObject(font);
    if (metrics.Get() == nullptr)
    {
        return false;
    }
    const UINT bits = metrics.Get()->otmfsType;
    // Where a font sets several bits, the least restrictive counts.
    return (bits & bitmapsOnly) == 0 &&
           ((bits & editable) != 0 || (bits & (restricted | previewAndPrint)) == 0);
}

}  // namespace orvane
