// SPDX-License-Identifier: MIT
#include "document/Cancellation.h"

#include "platform/Sync.h"

namespace orvane
{

Cancellation::Cancellation()
    : event_(CreateEventA(nullptr, TRUE, FALSE, nullptr), [](HANDLE event) { CloseHandle(event); })
{}

Cancellation::~Cancellation() = default;
Cancellation::Cancellation(const Cancellation&) = default;
Cancellation& Cancellation::operator=(const Cancellation&) = default;

void Cancellation::Cancel()
{
    SetEvent(event_.get());
}

bool Cancellation::IsCancelled() const
{
    return WaitForSingleObject(event_.get(), 0) == WAIT_OBJECT_0;
}

HANDLE EventOf(const Cancellation& cancellation)
{
    return cancellation.event_.get();
}

}  // namespace orvane
