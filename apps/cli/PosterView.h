// SPDX-License-Identifier: MIT
#pragma once

#include "scene/ViewObject.h"

#include <vector>

class OrvString;

/// A copy of a view for pictures. Transparent texts show what is behind them, but not themselves:
/// of all that is transparent only the foremost surfaces are seen.
class PosterView : public ViewObject
{
public:
    /// The copy looks at the same scene, whose nodes stay as they are while it lives.
    explicit PosterView(const ViewObject& view);

    int DrawChildren(DrawingParameters* parameters) override;

private:
    std::vector<OrvString*> transparent_;
};
