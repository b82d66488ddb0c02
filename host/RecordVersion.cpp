// SPDX-License-Identifier: MIT
#include "host/RecordVersion.h"

#include <string>

DWORD ReadRecordVersion(CArchive& archive, DWORD newest)
{
    DWORD version;
    archive >> version;
    if (version == 0 || version > newest)
    {
        AfxThrowArchiveException(CArchiveException::badSchema,
                                 "record version " + std::to_string(version) + " where 1 to " +
                                     std::to_string(newest) + " are known");
    }
    return version;
}
