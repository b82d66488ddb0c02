// SPDX-License-Identifier: MIT
#pragma once

#include "imaging/TextureMap.h"

/// Takes a texture map's mutex, if that is possible, and releases it in the destructor.
class TextureOwnership
{
public:
    explicit TextureOwnership(TextureMap& texture)
        : texture_(texture), owned_(texture.GetOwnership() != nullptr)
    {}
    ~TextureOwnership()
    {
        if (owned_)
        {
            texture_.ReleaseOwnership();
        }
    }
    TextureOwnership(const TextureOwnership&) = delete;
    TextureOwnership& operator=(const TextureOwnership&) = delete;

    bool IsOwned() const { return owned_; }

private:
    TextureMap& texture_;
    bool owned_;
};
