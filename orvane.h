// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Everything that Orvane offers, in one include.

#include "orvane/classes.h"
#include "orvane/orvane.h"
