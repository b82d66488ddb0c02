// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The version of Orvane. It is written only in this file: CMake reads it from here for the
/// library, the pkg-config file and the CMake package, and `orvane --version` prints it.

/// major.minor.patch
#define ORVANE_VERSION "0.1.0"
