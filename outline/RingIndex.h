// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Steps round a closed run of \p count elements. Both give -1 for an index outside the run.

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
