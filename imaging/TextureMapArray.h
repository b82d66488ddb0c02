// SPDX-License-Identifier: MIT
#pragma once

#include "host/GrowableArray.h"

class TextureMap;

/// A growable array of texture maps, which it does not own.
class ORVANE_API TextureMapArray : public GrowableArray<TextureMap*>
{};
