// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Other libraries that read 3D Studio files, for tests and benchmarks to compare with.
/// ORVANE_HAS_ASSIMP and ORVANE_HAS_LIB3DS are defined if they are installed; the tests need
/// lib3ds.

#ifdef ORVANE_HAS_ASSIMP
#include <assimp/cimport.h>
#include <assimp/scene.h>
#endif
#ifdef ORVANE_HAS_LIB3DS
extern "C"
{
#include <lib3ds/camera.h>
#include <lib3ds/file.h>
#include <lib3ds/light.h>
#include <lib3ds/material.h>
#include <lib3ds/mesh.h>
#include <lib3ds/node.h>
}
#endif
