// SPDX-License-Identifier: MIT
// Any bytes as an object archive.
#include "orvane.h"

#include <memory>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t count)
{
    CMemFile file(bytes, static_cast<UINT>(count));
    CArchive archive(&file, CArchive::load | CArchive::bNoFlushOnDelete);
    try
    {
        const std::unique_ptr<CObject> object(archive.ReadObject(nullptr));
    }
    catch (const CException&)
    {}
    return 0;
}
