// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Faces as LOGFONTA, TEXTMETRICA and the other records describe them.

#include "platform/posix/fonts/FontCatalog.h"
#include "platform/posix/fonts/FontFace.h"

#include <vector>

namespace posix
{

/// From font units to pixels.
struct FontSize
{
    int pixels = 0;  ///< this many ...
    int units = 1;   ///< ... for so many font units
    int pixelsPerEm = 0;

    /// Rounded to the nearest, halves away from zero.
    LONG operator()(int fontUnits) const;
};

/// The size that a height means: of the em square when negative, of the cell when positive; 0 is 12
/// points at 96 dots per inch.
FontSize SizeForHeight(LONG height, const DesignMetrics& design);

/// The size in which enumeration describes a face: a cell of about 32 pixels per em.
FontSize EnumerationSize(const DesignMetrics& design);

/// What enumeration tells of a face. A face without TrueType outlines, whose file is not read, has
/// no measures.
struct FaceRecords
{
    ENUMLOGFONTA logFont = {};
    NEWTEXTMETRICA metrics = {};
    DWORD type = 0;
};
/// \param design null for a face without TrueType outlines
FaceRecords RecordsOf(const CatalogFace& face, const DesignMetrics* design, UINT codePage);

/// The outline metrics of a face, followed by its texts: family, full name, style, unique name.
/// \return the bytes of the record
std::vector<BYTE> OutlineRecord(const CatalogFace& face, const DesignMetrics& design,
                                const FontSize& size, UINT codePage);

}  // namespace posix
