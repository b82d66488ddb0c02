// SPDX-License-Identifier: MIT
#pragma once

/// A colour, 8 bits a channel.
struct Rgb
{
    int red = 0;
    int green = 0;
    int blue = 0;

    bool operator==(const Rgb&) const = default;
};
