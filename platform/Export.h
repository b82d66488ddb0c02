// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Marks what the shared library offers to its users. Everything else is hidden.

#if defined(_WIN32)
#if defined(ORVANE_BUILDING)
#define ORVANE_API __declspec(dllexport)
#else
#define ORVANE_API __declspec(dllimport)
#endif
#else
#define ORVANE_API __attribute__((visibility("default")))
#endif
