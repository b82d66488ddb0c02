// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

/// Something that the library does for a host, in small, and that a refused call may make fail.
class Operation
{
public:
    virtual ~Operation() = default;

    /// Makes everything as it is before an attempt.
    virtual void Prepare() = 0;
    /// Throws when it fails.
    virtual void Attempt() = 0;
    /// All that the operation may have changed, byte for byte: after an attempt that succeeded the
    /// result, and after Prepare or an attempt that failed the state as it was before.
    virtual std::string State() = 0;
    /// Whether other libraries lose memory when they run out of it.
    virtual bool MayLoseMemory() const { return false; }
};

/// An operation by its name, which is made when it is needed.
struct NamedOperation
{
    const char* name;
    std::function<std::unique_ptr<Operation>()> make;
};

const std::vector<NamedOperation>& Operations();
