// SPDX-License-Identifier: MIT
#include "platform/Storage.h"

#include "platform/posix/CompoundFile.h"

#include <glib.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <string>
#include <vector>

using orvane::Compound;
using orvane::Content;
using orvane::KeyOf;

namespace
{

constexpr std::size_t longestName = 31;
constexpr DWORD accessBits = STGM_WRITE | STGM_READWRITE;

/// Empty when the text is not valid UTF-16.
std::string ToUtf8(const OLECHAR* text)
{
    gchar* const utf8 = text == nullptr ? nullptr
                                        : g_utf16_to_utf8(reinterpret_cast<const gunichar2*>(text),
                                                          -1, nullptr, nullptr, nullptr);
    std::string result = utf8 == nullptr ? "" : utf8;
    g_free(utf8);
    return result;
}

bool IsStreamName(const OLECHAR* name)
{
    const std::u16string_view text = name == nullptr ? u"" : name;
    return !text.empty() && text.size() <= longestName && !ToUtf8(name).empty() &&
           std::all_of(text.begin(), text.end(), [](char16_t character) {
               return character >= 32 &&
                      std::u16string_view(u"/\\:!").find(character) == std::u16string_view::npos;
           });
}

/// An implementation of AddRef and Release.
template <typename Interface>
class Referenced : public Interface
{
public:
    ULONG AddRef() override { return ++references_; }
    ULONG Release() override
    {
        const ULONG left = --references_;
        if (left == 0)
        {
            delete this;
        }
        return left;
    }

private:
    ULONG references_ = 1;
};

class Stream final : public Referenced<IStream>
{
public:
    Stream(std::shared_ptr<Compound> compound, std::shared_ptr<Content> content, bool isWritable)
        : compound_(std::move(compound)), content_(std::move(content)), isWritable_(isWritable)
    {}

    HRESULT Read(void* bytes, ULONG count, ULONG* done) override
    {
        const std::vector<BYTE>& all = content_->bytes;
        const std::size_t at = static_cast<std::size_t>(std::min<std::uint64_t>(at_, all.size()));
        const std::size_t taken = std::min<std::size_t>(count, all.size() - at);
        if (bytes == nullptr && count != 0)
        {
            return STG_E_INVALIDPOINTER;
        }
        if (taken != 0)
        {
            std::memcpy(bytes, all.data() + at, taken);
        }
        at_ += taken;
        Report(done, static_cast<ULONG>(taken));
        return S_OK;
    }

    HRESULT Write(const void* bytes, ULONG count, ULONG* done) override
    {
        Report(done, 0);
        if (bytes == nullptr && count != 0)
        {
            return STG_E_INVALIDPOINTER;
        }
        if (count == 0)
        {
            return S_OK;
        }
        const std::uint64_t end = at_ + count;
        const HRESULT result =
            end > content_->bytes.size() ? SetSize(ULARGE_INTEGER{end}) : Change();
        if (SUCCEEDED(result))
        {
            std::memcpy(content_->bytes.data() + at_, bytes, count);
            at_ = end;
            Report(done, count);
        }
        return result;
    }

    HRESULT Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* position) override
    {
        const std::uint64_t from = origin == STREAM_SEEK_CUR   ? at_
                                   : origin == STREAM_SEEK_END ? content_->bytes.size()
                                                               : 0;
        // Positions are below 2 to the 63rd, so the sum of two positions fits an unsigned number of
        // 64 bits.
        const std::uint64_t to = from + static_cast<std::uint64_t>(move.QuadPart);
        if (origin > STREAM_SEEK_END || to > std::numeric_limits<std::int64_t>::max())
        {
            return STG_E_INVALIDFUNCTION;
        }
        at_ = to;
        if (position != nullptr)
        {
            position->QuadPart = at_;
        }
        return S_OK;
    }

    HRESULT SetSize(ULARGE_INTEGER size) override
    {
        const HRESULT result = Change();
        if (FAILED(result))
        {
            return result;
        }
        try
        {
            if (size.QuadPart > content_->bytes.max_size())
            {
                return STG_E_INSUFFICIENTMEMORY;
            }
            content_->bytes.resize(static_cast<std::size_t>(size.QuadPart));
        }
        catch (const std::bad_alloc&)
        {
            return STG_E_INSUFFICIENTMEMORY;
        }
        return S_OK;
    }

private:
    static void Report(ULONG* done, ULONG count)
    {
        if (done != nullptr)
        {
            *done = count;
        }
    }
    HRESULT Change()
    {
        compound_->isChanged = compound_->isChanged || isWritable_;
        return isWritable_ ? S_OK : STG_E_ACCESSDENIED;
    }

    std::shared_ptr<Compound> compound_;
    std::shared_ptr<Content> content_;
    bool isWritable_;
    std::uint64_t at_ = 0;
};

class Storage final : public Referenced<IStorage>
{
public:
    explicit Storage(std::shared_ptr<Compound> compound) : compound_(std::move(compound)) {}
    ~Storage() override { Commit(STGC_DEFAULT); }

    HRESULT CreateStream(const OLECHAR* name, DWORD mode, DWORD, DWORD, IStream** stream) override
    {
        if (stream == nullptr)
        {
            return STG_E_INVALIDPOINTER;
        }
        *stream = nullptr;
        if (!IsStreamName(name))
        {
            return STG_E_INVALIDNAME;
        }
        if (!compound_->IsWritable())
        {
            return STG_E_ACCESSDENIED;
        }
        const std::string utf8 = ToUtf8(name);
        std::shared_ptr<Content>& content = compound_->streams[KeyOf(utf8)];
        if (content != nullptr && (mode & STGM_CREATE) == 0)
        {
            return STG_E_FILEALREADYEXISTS;
        }
        content = std::make_shared<Content>(Content{utf8, {}});
        compound_->isChanged = true;
        *stream = new Stream(compound_, content, true);
        return S_OK;
    }

    HRESULT OpenStream(const OLECHAR* name, void*, DWORD mode, DWORD, IStream** stream) override
    {
        if (stream == nullptr)
        {
            return STG_E_INVALIDPOINTER;
        }
        *stream = nullptr;
        const auto found = compound_->streams.find(KeyOf(ToUtf8(name)));
        if (found == compound_->streams.end())
        {
            return STG_E_FILENOTFOUND;
        }
        const bool wantsToWrite = (mode & accessBits) != STGM_READ;
        if (wantsToWrite && !compound_->IsWritable())
        {
            return STG_E_ACCESSDENIED;
        }
        *stream = new Stream(compound_, found->second, wantsToWrite);
        return S_OK;
    }

    HRESULT Commit(DWORD) override
    {
        return compound_->isChanged ? orvane::WriteCompound(*compound_) : S_OK;
    }

    HRESULT DestroyElement(const OLECHAR* name) override
    {
        if (!compound_->IsWritable())
        {
            return STG_E_ACCESSDENIED;
        }
        if (compound_->streams.erase(KeyOf(ToUtf8(name))) == 0)
        {
            return STG_E_FILENOTFOUND;
        }
        compound_->isChanged = true;
        return S_OK;
    }

private:
    std::shared_ptr<Compound> compound_;
};

/// The contents for a file that is to be opened or made. Null, with the reason stored, when the
/// arguments are not valid.
std::shared_ptr<Compound> Named(const OLECHAR* name, DWORD mode, IStorage** storage,
                                HRESULT* reason)
{
    if (storage == nullptr)
    {
        *reason = STG_E_INVALIDPOINTER;
        return nullptr;
    }
    *storage = nullptr;
    auto compound = std::make_shared<Compound>();
    compound->path = ToUtf8(name);
    compound->access = mode & accessBits;
    if (compound->path.empty())
    {
        *reason = STG_E_INVALIDNAME;
        return nullptr;
    }
    return compound;
}

}  // namespace

HRESULT StgCreateDocfile(const OLECHAR* name, DWORD mode, DWORD, IStorage** storage)
{
    HRESULT result = S_OK;
    const std::shared_ptr<Compound> compound = Named(name, mode, storage, &result);
    if (compound == nullptr)
    {
        return result;
    }
    if (!compound->IsWritable())
    {
        return STG_E_ACCESSDENIED;
    }
    if ((mode & STGM_CREATE) == 0 && access(compound->path.c_str(), F_OK) == 0)
    {
        return STG_E_FILEALREADYEXISTS;
    }
    result = orvane::WriteCompound(*compound);
    if (SUCCEEDED(result))
    {
        *storage = new Storage(compound);
    }
    return result;
}

HRESULT StgOpenStorage(const OLECHAR* name, IStorage* priority, DWORD mode, const void* exclude,
                       DWORD reserved, IStorage** storage)
{
    HRESULT result = S_OK;
    const std::shared_ptr<Compound> compound = Named(name, mode, storage, &result);
    if (compound == nullptr)
    {
        return result;
    }
    if (priority != nullptr || exclude != nullptr || reserved != 0)
    {
        return STG_E_INVALIDFUNCTION;
    }
    if (compound->IsWritable() && access(compound->path.c_str(), F_OK) == 0 &&
        access(compound->path.c_str(), W_OK) != 0)
    {
        return STG_E_ACCESSDENIED;
    }
    try
    {
        result = orvane::ReadCompound(*compound);
    }
    catch (const std::bad_alloc&)
    {
        result = STG_E_INSUFFICIENTMEMORY;
    }
    if (SUCCEEDED(result))
    {
        *storage = new Storage(compound);
    }
    return result;
}
