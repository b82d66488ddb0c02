// SPDX-License-Identifier: MIT
#pragma once

#include "host/GrowableArray.h"
#include "outline/TTPolyContour.h"
#include "platform/Export.h"

/// The contours of a flattened glyph.
class ORVANE_API TTPolyContourArray : public GrowableArray<TTPolyContour>
{
public:
    /// The bytes of this object and of all contours that it has room for.
    unsigned long SizeOf() const { return sizeof *this + maxSize * sizeof(TTPolyContour); }
};
