// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The records by which callers see faces: LOGFONTA, TEXTMETRICA and others.

#include "platform/posix/fonts/FontCatalog.h"
#include "platform/posix/fonts/FontFace.h"

#include <vector>

namespace posix
{

/// The scale of a font, from font units to pixels.
struct FontSize
{
    int pixels = 0;  ///< the number of pixels that ...
    int units = 1;   ///< ... this number of font units takes
    int pixelsPerEm = 0;

    /// Font units in pixels, rounded to the nearest, halves away from zero.
    LONG operator()(int fontUnits) const;
};

/// The size for a LOGFONTA::lfHeight. A negative value is minus the height of the em square in
/// pixels, a positive value is the height of the cell in pixels, and 0 means 12 points at 96 dots
/// per inch.
FontSize SizeForHeight(LONG height, const DesignMetrics& design);

/// The size for which an enumeration describes a face, of about 32 pixels per em.
FontSize EnumerationSize(const DesignMetrics& design);

/// The records that an enumeration delivers for a face.
struct FaceRecords
{
    ENUMLOGFONTA logFont = {};
    NEWTEXTMETRICA metrics = {};
    DWORD type = 0;
};
/// Fills the records of a face.
/// \param design null for a face that is not usable, whose measures stay 0
FaceRecords RecordsOf(const CatalogFace& face, const DesignMetrics* design, UINT codePage);

/// The bytes of an OUTLINETEXTMETRICA, followed by the texts that it points to: family, full name,
/// style and unique name.
std::vector<BYTE> OutlineRecord(const CatalogFace& face, const DesignMetrics& design,
                                const FontSize& size, UINT codePage);

}  // namespace posix
