// SPDX-License-Identifier: MIT
#include "platform/posix/CompoundFile.h"

#include "platform/FileReplacement.h"

#include <gsf/gsf-infile-impl.h>
#include <gsf/gsf-infile-msole.h>
#include <gsf/gsf-infile.h>
#include <gsf/gsf-input-stdio.h>
#include <gsf/gsf-outfile-msole.h>
#include <gsf/gsf-outfile.h>
#include <gsf/gsf-output-memory.h>
#include <gsf/gsf-utils.h>

#include <algorithm>
#include <cstdint>
#include <new>
#include <optional>

namespace orvane
{

namespace
{

/// Releases a reference to an object of libgsf, the library that reads and writes the files.
struct Unreferrer
{
    void operator()(void* object) const { g_object_unref(object); }
};
template <typename Object>
using Counted = std::unique_ptr<Object, Unreferrer>;

/// As long as this object exists, libgsf writes no messages about damaged files to standard error.
class Quiet
{
public:
    Quiet()
        : handler_(g_log_set_handler(
              domain, G_LOG_LEVEL_MASK, [](const gchar*, GLogLevelFlags, const gchar*, gpointer) {},
              nullptr))
    {}
    ~Quiet() { g_log_remove_handler(domain, handler_); }
    Quiet(const Quiet&) = delete;
    Quiet& operator=(const Quiet&) = delete;

private:
    static constexpr const char* domain = "libgsf:msole";
    guint handler_;
};

void Begin()
{
    static const bool begun = (gsf_init(), true);
    static_cast<void>(begun);
}

bool WriteContent(GsfOutfile* file, const Content& content)
{
    const Counted<GsfOutput> child(gsf_outfile_new_child(file, content.name.c_str(), FALSE));
    const bool isWritten = child != nullptr && (content.bytes.empty() ||
                                                gsf_output_write(child.get(), content.bytes.size(),
                                                                 content.bytes.data()));
    return child != nullptr && gsf_output_close(child.get()) && isWritten;
}

/// Puts the bytes in the place of the old file, which stays if there is an error before.
HRESULT ReplaceFile(const std::string& path, const guint8* bytes, std::size_t count)
{
    FileReplacement file;
    if (file.Begin(path))
    {
        return STG_E_ACCESSDENIED;
    }
    return file.Write(bytes, count) || file.Finish() || file.Place() ? STG_E_WRITEFAULT : S_OK;
}

/// Reads a stream to its end. It does not trust the stated length, which in a damaged file can be
/// any number.
std::vector<BYTE> ReadAll(GsfInput* input)
{
    constexpr std::size_t piece = 65536;
    std::vector<BYTE> bytes;
    for (;;)
    {
        const gsf_off_t left = gsf_input_remaining(input);
        const std::size_t count =
            std::min(piece, static_cast<std::size_t>(std::max<gsf_off_t>(left, 0)));
        const guint8* const data = count == 0 ? nullptr : gsf_input_read(input, count, nullptr);
        if (data == nullptr)
        {
            return bytes;
        }
        bytes.insert(bytes.end(), data, data + count);
    }
}

/// The 32-bit number at this offset of the file, with its lowest byte first; empty outside of the
/// file.
std::optional<std::uint32_t> NumberAt(GsfInput* input, std::uint64_t offset)
{
    const gsf_off_t size = gsf_input_size(input);
    if (size < 4 || offset > static_cast<std::uint64_t>(size) - 4 ||
        gsf_input_seek(input, static_cast<gsf_off_t>(offset), G_SEEK_SET))
    {
        return std::nullopt;
    }
    const guint8* const bytes = gsf_input_read(input, 4, nullptr);
    return bytes == nullptr ? std::nullopt : std::optional(GSF_LE_GET_GUINT32(bytes));
}

/// Whether the first entry of the directory, the root, has no siblings, as the format demands
/// ([MS-CFB], 2.6.2). libgsf reads the root's siblings, but never frees them.
bool RootHasNoSiblings(GsfInput* input)
{
    constexpr std::uint32_t noEntry = 0xFFFFFFFF;
    constexpr std::uint32_t highestSectorShift = 30;
    const std::uint32_t sectorShift = NumberAt(input, 0x1E).value_or(0) & 0xFFFF;
    const std::optional<std::uint32_t> directory = NumberAt(input, 0x30);
    if (!directory || sectorShift > highestSectorShift)
    {
        return false;
    }
    // The header takes one sector, or 512 bytes where sectors are smaller.
    const std::uint64_t header = std::max<std::uint64_t>(512, std::uint64_t{1} << sectorShift);
    const std::uint64_t root = header + (std::uint64_t{*directory} << sectorShift);
    return NumberAt(input, root + 0x44) == noEntry && NumberAt(input, root + 0x48) == noEntry;
}

/// A stream or storage of the file; null if it cannot be read. The public function of libgsf prints
/// such errors.
GsfInput* ChildAt(GsfInfile* file, int index)
{
    return GSF_INFILE_CLASS(G_OBJECT_GET_CLASS(file))->child_by_index(file, index, nullptr);
}

}  // namespace

std::string KeyOf(std::string name)
{
    for (char& character : name)
    {
        character = g_ascii_toupper(character);
    }
    return name;
}

HRESULT WriteCompound(Compound& compound) noexcept
try
{
    Begin();
    const Counted<GsfOutput> output(gsf_output_memory_new());
    const Counted<GsfOutfile> file(gsf_outfile_msole_new(output.get()));
    bool isWritten = true;
    for (const auto& [key, content] : compound.streams)
    {
        isWritten = isWritten && WriteContent(file.get(), *content);
    }
    // This closes \c output, too.
    isWritten = gsf_output_close(GSF_OUTPUT(file.get())) && isWritten;
    const HRESULT result =
        isWritten ? ReplaceFile(compound.path,
                                gsf_output_memory_get_bytes(GSF_OUTPUT_MEMORY(output.get())),
                                static_cast<std::size_t>(gsf_output_size(output.get())))
                  : STG_E_WRITEFAULT;
    compound.isChanged = compound.isChanged && FAILED(result);
    return result;
}
catch (const std::bad_alloc&)
{
    return STG_E_INSUFFICIENTMEMORY;
}

HRESULT ReadCompound(Compound& compound)
{
    Begin();
    const Counted<GsfInput> input(gsf_input_stdio_new(compound.path.c_str(), nullptr));
    if (input == nullptr)
    {
        return STG_E_FILENOTFOUND;
    }
    if (!RootHasNoSiblings(input.get()))
    {
        return STG_E_OLDFORMAT;
    }
    const Quiet quiet;
    const Counted<GsfInfile> file(gsf_infile_msole_new(input.get(), nullptr));
    if (file == nullptr)
    {
        return STG_E_OLDFORMAT;
    }
    for (int i = 0; i < gsf_infile_num_children(file.get()); ++i)
    {
        const char* const name = gsf_infile_name_by_index(file.get(), i);
        const Counted<GsfInput> child(ChildAt(file.get(), i));
        const bool isStorage = child != nullptr && GSF_IS_INFILE(child.get()) &&
                               gsf_infile_num_children(GSF_INFILE(child.get())) >= 0;
        if (child != nullptr && name != nullptr && !isStorage)
        {
            compound.streams[KeyOf(name)] =
                std::make_shared<Content>(Content{name, ReadAll(child.get())});
        }
    }
    return S_OK;
}

}  // namespace orvane
