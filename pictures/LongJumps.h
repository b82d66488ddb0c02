// SPDX-License-Identifier: MIT
#pragma once

#include "orvane/Error.h"

#include <csetjmp>
#include <exception>
#include <string>
#include <utility>

namespace orvane
{

/// Calls of a library that is written in C and leaves a failing call by a long jump. Exceptions
/// must not pass through such a library. So a callback keeps an exception here and jumps out of the
/// library, and Run throws it again.
class LongJumps
{
public:
    /// \param place begins the text of errors
    explicit LongJumps(std::string place) : place_(std::move(place)) {}

    /// Calls a function that calls the library. The function must not create objects with
    /// destructors, because a long jump skips them. Throws what Keep has kept, or Error.
    template <typename Step>
    void Run(Step step)
    {
        if (setjmp(start_) == 0)
        {
            step();
            return;
        }
        if (error_ != nullptr)
        {
            std::rethrow_exception(std::exchange(error_, nullptr));
        }
        throw Error(place_, complaint_);
    }

    /// Keeps the exception that is being handled.
    void Keep() { error_ = std::current_exception(); }
    bool HasKept() const { return error_ != nullptr; }
    /// Leaves the library. To be called from inside of Run only.
    [[noreturn]] void Jump(const char* complaint)
    {
        complaint_ = complaint;
        std::longjmp(start_, 1);
    }

private:
    std::string place_;
    std::string complaint_;
    std::exception_ptr error_;
    std::jmp_buf start_;
};

}  // namespace orvane
