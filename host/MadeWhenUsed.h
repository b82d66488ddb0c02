// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>

/// An object, owned, that is not there until somebody needs it: for what every object of a class
/// could have and few do. Any thread may be the first to need it; from then on it stays where it
/// is.
template <typename Object>
class MadeWhenUsed
{
public:
    MadeWhenUsed() = default;
    ~MadeWhenUsed() { delete object_.load(std::memory_order_relaxed); }
    MadeWhenUsed(const MadeWhenUsed&) = delete;
    MadeWhenUsed& operator=(const MadeWhenUsed&) = delete;

    /// Null while it is not there.
    const Object* IfMade() const { return object_.load(std::memory_order_acquire); }

    /// The object, which \p make returns when it is not there.
    template <typename Make>
    Object& Get(Make make) const
    {
        Object* object = object_.load(std::memory_order_acquire);
        if (object == nullptr)
        {
            Object* const made = new Object(make());
            if (object_.compare_exchange_strong(object, made, std::memory_order_acq_rel))
            {
                return *made;
            }
            delete made;  // another thread was first
        }
        return *object;
    }
    Object& Get() const
    {
        return Get([] { return Object(); });
    }

private:
    mutable std::atomic<Object*> object_ = nullptr;
};
