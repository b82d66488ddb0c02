// SPDX-License-Identifier: MIT
#pragma once

#include "exchange/ByteSink.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace orvane
{

/// Writes a ZIP archive from front to back, so that it can go to standard output. Every file in it
/// is dated 1980-01-01, so that the same content gives the same archive.
///
///     ZipWriter zip(sink);
///     zip.BeginFile("a.txt");
///     zip.Write(bytes, count);
///     zip.EndFile();
///     zip.Finish();
class ZipWriter : public ByteSink
{
public:
    /// \param sink borrowed
    explicit ZipWriter(ByteSink& sink);
    ~ZipWriter() override;
    ZipWriter(const ZipWriter&) = delete;
    ZipWriter& operator=(const ZipWriter&) = delete;

    void BeginFile(const std::string& name);
    /// Compresses the next bytes of the file that was begun last.
    void Write(const void* bytes, std::size_t count) override;
    /// Throws Error when the archive has become larger than the 4 GiB that the format holds.
    void EndFile();
    /// Writes the table of contents.
    void Finish();

private:
    struct Deflater;

    struct Entry
    {
        std::string name;
        std::uint32_t checksum = 0;
        std::uint64_t packedBytes = 0;
        std::uint64_t bytes = 0;
        std::uint64_t offset = 0;  ///< in the archive
    };

    void Compress(const void* bytes, std::size_t count, bool isLast);
    void Emit(const void* bytes, std::size_t count);
    void EmitNumbers(std::initializer_list<std::uint32_t> numbers32);
    void EmitShorts(std::initializer_list<std::uint16_t> numbers16);
    void CheckSize() const;

    BufferedSink out_;
    std::uint64_t written_ = 0;  ///< bytes of the archive so far
    std::vector<Entry> entries_;
    std::unique_ptr<Deflater> deflater_;  ///< of the file in hand
};

}  // namespace orvane
