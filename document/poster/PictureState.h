// SPDX-License-Identifier: MIT
#pragma once

#include "orvane/Options.h"

namespace orvane
{

/// The width of a wire in a picture of that size, in pixels; 0 when the mode draws no wires.
double WireWidth(const Size& size, DrawingMode mode);

/// Sets the OpenGL state that every picture needs and that nodes do not set themselves.
/// \param wireWidth in pixels of the drawing; 0 for none
void PrepareForPicture(double wireWidth);

/// Resets the OpenGL state that a host may have changed and that would change pictures.
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
