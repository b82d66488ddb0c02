// SPDX-License-Identifier: MIT
#pragma once

#include "orvane/Options.h"

namespace orvane
{

/// The width of a wire in a picture of that size, in pixels; 0 when the mode draws no wires.
double WireWidth(const Size& size, DrawingMode mode);

/// Sets the state of OpenGL that all pictures need and that the library's drawing leaves alone.
/// \param wireWidth in pixels of the drawing; 0 for none
void PrepareForPicture(double wireWidth);

/// Sets everything else that a host may have changed in its context back to OpenGL's defaults, as
/// far as it matters to pictures.
void ResetHostState();

/// Keeps the state of OpenGL for as long as this object lives.
class KeptState
{
public:
    KeptState();
    ~KeptState();
    KeptState(const KeptState&) = delete;
    KeptState& operator=(const KeptState&) = delete;
};

}  // namespace orvane
