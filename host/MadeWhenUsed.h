// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>

/// An object, owned, that is not there until somebody needs it: for what every object of a class
/// could have and few do. Any thread may be the first to need it; from then on it stays where it
/// is.
///
/// A copy has no object when the original has none. Assigning from one without gives an object
/// that is there its initial value.
template <typename Object>
class MadeWhenUsed
{
public:
    MadeWhenUsed() = default;
    ~MadeWhenUsed() { delete object_.load(std::memory_order_relaxed); }
    MadeWhenUsed(const MadeWhenUsed& other) : MadeWhenUsed() { *this = other; }
    MadeWhenUsed& operator=(const MadeWhenUsed& other)
    {
        if (this != &other && (IfMade() != nullptr || other.IfMade() != nullptr))
        {
            Get() = other.Read();
        }
        return *this;
    }

    /// Null while it is not there.
    const Object* IfMade() const { return object_.load(std::memory_order_acquire); }

    /// The object, or the initial one, which all share that have none.
    const Object& Read() const
    {
        const Object* const made = IfMade();
        return made != nullptr ? *made : Initial_();
    }

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

    /// Deletes the object, which nobody may be using.
    void Forget() { delete object_.exchange(nullptr, std::memory_order_acq_rel); }

private:
    static const Object& Initial_()
    {
        // Never destroyed: objects with static storage may ask while the process ends.
        static const Object* const initial = new Object;
        return *initial;
    }

    mutable std::atomic<Object*> object_ = nullptr;
};
