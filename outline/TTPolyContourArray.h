// SPDX-License-Identifier: MIT
#pragma once

#include "host/GrowableArray.h"
#include "outline/TTPolyContour.h"
#include "platform/Export.h"

/// The contours of a flattened glyph.
class ORVANE_API TTPolyContourArray : public GrowableArray<TTPolyContour>
{
public:
    /// Bytes of this object and of every allocated slot.
    unsigned long SizeOf() const { return sizeof *this + maxSize * sizeof(TTPolyContour); }
};
