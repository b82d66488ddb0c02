// SPDX-License-Identifier: MIT
#pragma once

#include "orvane/Options.h"

namespace orvane
{

/// The width of a wire in a picture of that size, in pixels; 0 when the mode draws no wires.
double WireWidth(const Size& size, DrawingMode mode);

/// Sets the OpenGL state that every picture needs and that the drawing of nodes does not set.
/// \param wireWidth in pixels of the bitmap or window; 0 when no wires are drawn
void PrepareForPicture(double wireWidth);

/// Resets the OpenGL state that a host may have changed and that would change pictures.
void ResetHostState();

/// Saves the state of OpenGL and restores it at the end of this object's life.
class KeptState
{
public:
    KeptState();
    ~KeptState();
    KeptState(const KeptState&) = delete;
    KeptState& operator=(const KeptState&) = delete;

private:
    int depths_[3];  ///< of the matrix stacks, before this object's matrices
};

}  // namespace orvane
