// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Two functions that step through a closed run of \p count elements, in which the first element
/// follows the last. Both return -1 for an index outside 0 to count - 1.

inline int NextRingIndex(int index, int count)
{
    if (index < 0 || index >= count)
    {
        return -1;
    }
    return index + 1 < count ? index + 1 : 0;
}

inline int PreviousRingIndex(int index, int count)
{
    if (index < 0 || index >= count)
    {
        return -1;
    }
    return index > 0 ? index - 1 : count - 1;
}
