// SPDX-License-Identifier: MIT
#pragma once

#include "platform/OpenGL.h"

/// Switches OpenGL's lighting off while an object of this class exists. The destructor switches
/// lighting on again if it was on before.
class Unlit
{
public:
    Unlit() : wasLit_(glIsEnabled(GL_LIGHTING) != GL_FALSE)
    {
        if (wasLit_)
        {
            glDisable(GL_LIGHTING);
        }
    }
    ~Unlit()
    {
        if (wasLit_)
        {
            glEnable(GL_LIGHTING);
        }
    }
    Unlit(const Unlit&) = delete;
    Unlit& operator=(const Unlit&) = delete;

private:
    bool wasLit_;
};
