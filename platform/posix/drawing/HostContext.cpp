// SPDX-License-Identifier: MIT
#include "platform/HostContext.h"

#include <GL/glx.h>

namespace orvane
{

struct HostContextPause::Paused
{
    Display* display;
    GLXDrawable drawn;
    GLXDrawable read;
    GLXContext context;
};

HostContextPause::HostContextPause()
{
    GLXContext const context = glXGetCurrentContext();
    if (context == nullptr)
    {
        return;
    }
    Display* const display = glXGetCurrentDisplay();
    paused_ = std::make_unique<Paused>(
        Paused{display, glXGetCurrentDrawable(), glXGetCurrentReadDrawable(), context});
    glXMakeContextCurrent(display, 0, 0, nullptr);
}

HostContextPause::~HostContextPause()
{
    if (paused_ != nullptr)
    {
        glXMakeContextCurrent(paused_->display, paused_->drawn, paused_->read, paused_->context);
    }
}

}  // namespace orvane
