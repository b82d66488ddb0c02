// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Sync.h"

/// An event that stops drawings.
class TerminationEvent
{
public:
    explicit TerminationEvent(bool signalled)
        : handle_(CreateEventA(nullptr, TRUE, signalled ? TRUE : FALSE, nullptr))
    {}
    ~TerminationEvent() { CloseHandle(handle_); }
    TerminationEvent(const TerminationEvent&) = delete;
    TerminationEvent& operator=(const TerminationEvent&) = delete;

    HANDLE Get() const { return handle_; }
    void Signal() { SetEvent(handle_); }

private:
    HANDLE handle_;
};
