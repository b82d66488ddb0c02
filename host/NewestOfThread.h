// SPDX-License-Identifier: MIT
#pragma once

#include <utility>

namespace orvane
{

/// A member that makes its owner the newest object of its class on the thread for as long as it
/// lives, and then gives the place back to the one before. Objects of one thread are destroyed in
/// the reverse order of their construction.
template <typename Owner>
class NewestOfThread
{
public:
    explicit NewestOfThread(Owner& owner) : previous_(std::exchange(newest, &owner)) {}
    ~NewestOfThread() { newest = previous_; }
    NewestOfThread(const NewestOfThread&) = delete;
    NewestOfThread& operator=(const NewestOfThread&) = delete;

    /// Null when the thread has no object of the class.
    static Owner* Get() { return newest; }

private:
    static inline thread_local Owner* newest = nullptr;

    Owner* previous_;
};

}  // namespace orvane
