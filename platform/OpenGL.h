// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// OpenGL 1.1 and GLU, together with the header that must come before theirs.

#include "platform/Types.h"

#include <GL/gl.h>
#include <GL/glu.h>
