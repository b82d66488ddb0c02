// SPDX-License-Identifier: MIT
#include "platform/HostContext.h"

#include "platform/posix/drawing/ForeignContext.h"

#include <utility>

namespace orvane
{

struct HostContextPause::Paused
{
    std::unique_ptr<posix::ForeignContext> context;
};

HostContextPause::HostContextPause()
{
    if (std::unique_ptr<posix::ForeignContext> context = posix::CurrentGlxContext())
    {
        context->MakeNotCurrent();
        paused_ = std::make_unique<Paused>(Paused{std::move(context)});
    }
}

HostContextPause::~HostContextPause()
{
    if (paused_ != nullptr)
    {
        paused_->context->MakeCurrent();
    }
}

}  // namespace orvane
