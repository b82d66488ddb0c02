// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

namespace orvane
{

/// A pointer to what its owner builds from its settings when it is first needed; null before. A
/// copy of the owner builds its own, and an assignment to the owner makes it build again, so the
/// owner can leave its copying to the compiler.
template <typename Object>
class BuiltWhenNeeded : public std::unique_ptr<Object>
{
public:
    BuiltWhenNeeded() = default;
    BuiltWhenNeeded(const BuiltWhenNeeded& /*other*/) : std::unique_ptr<Object>() {}
    BuiltWhenNeeded& operator=(const BuiltWhenNeeded& other)
    {
        if (this != &other)
        {
            this->reset();
        }
        return *this;
    }
    ~BuiltWhenNeeded() = default;
    using std::unique_ptr<Object>::operator=;
};

}  // namespace orvane
