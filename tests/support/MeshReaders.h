// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Other readers of 3D Studio files, where they are installed: tests and benchmarks compare with
/// them. ORVANE_HAS_ASSIMP and ORVANE_HAS_LIB3DS say which.

#ifdef ORVANE_HAS_ASSIMP
#include <assimp/cimport.h>
#include <assimp/scene.h>
#endif
#ifdef ORVANE_HAS_LIB3DS
extern "C"
{
#include <lib3ds/file.h>
#include <lib3ds/material.h>
#include <lib3ds/mesh.h>
}
#endif
