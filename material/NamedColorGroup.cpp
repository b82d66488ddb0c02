// SPDX-License-Identifier: MIT
#include "material/NamedColorGroup.h"

IMPLEMENT_DYNCREATE(NamedColorGroup, NamedColorArray)

int NamedColorGroup::Add(NamedColor& color)
{
    color.SetColorGroup(colorGroup);
    return NamedColorArray::Add(color);
}
