// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// OpenGL 1.1 and GLU, with what their headers need before them.

#include "platform/Types.h"

#include <GL/gl.h>
#include <GL/glu.h>
