// SPDX-License-Identifier: MIT
#pragma once

#include "host/NewestOfThread.h"
#include "platform/Export.h"

#include <string>

class TextureMap;

namespace orvane
{

/// Decides from which files the textures and the fonts of loaded nodes are read. While an object of
/// this class lives, the nodes that its thread loads ask it, and DrawingObject does not look for
/// the files itself. Objects of one thread are destroyed in the reverse order of their
/// construction.
class ORVANE_API TextureFinder
{
public:
    TextureFinder();
    virtual ~TextureFinder();
    TextureFinder(const TextureFinder&) = delete;
    TextureFinder& operator=(const TextureFinder&) = delete;

    /// Called with each texture that was loaded. Sets the file that the texture is read from and
    /// the flag Valid, or clears Valid when the texture has no file.
    virtual void Find(TextureMap& texture) = 0;

    /// The file that a loaded text may read a font from where its record names one; empty when
    /// there is none. Unless a derived class says otherwise, it may read none.
    virtual std::string FindFontFile(const std::string& name);

    /// The newest object of the calling thread; null when the thread has none.
    static TextureFinder* Current();

private:
    NewestOfThread<TextureFinder> place_;
};

}  // namespace orvane
