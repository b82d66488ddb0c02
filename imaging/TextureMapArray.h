// SPDX-License-Identifier: MIT
#pragma once

#include "host/GrowableArray.h"

class TextureMap;

/// A growable array of borrowed texture maps.
class ORVANE_API TextureMapArray : public GrowableArray<TextureMap*>
{};
