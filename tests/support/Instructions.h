// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The cost of a call as a number that does not depend on the machine's speed or load.

#include <functional>
#include <optional>

/// How many machine instructions a call executes. A child process makes the call, one instruction
/// after the other under this process's control, so the call changes nothing here. One instruction
/// takes some microseconds: count calls of up to 100,000.
///
/// Empty where processes may not trace their children.
std::optional<long> CountInstructions(const std::function<void()>& call);
