// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// ORVANE_API marks the functions and classes that a shared library exports. All others are hidden.

#if defined(_WIN32)
#if defined(ORVANE_BUILDING)
#define ORVANE_API __declspec(dllexport)
#else
#define ORVANE_API __declspec(dllimport)
#endif
#else
#define ORVANE_API __attribute__((visibility("default")))
#endif
