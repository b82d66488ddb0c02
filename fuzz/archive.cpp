// SPDX-License-Identifier: MIT
// Reads the input as an archive with one object.
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
