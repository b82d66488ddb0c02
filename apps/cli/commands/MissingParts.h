// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Messages.h"

namespace orvane
{

class SceneDocument;

/// Whether a command goes on when a part of the scene is missing.
enum class Strictness
{
    GoOn,
    Fail
};

/// Tells on standard error which pictures and fonts a scene names and does not show, each once.
/// Throws Error when there are any and the command is to fail.
void TellMissingParts(const SceneDocument& document, Strictness strictness);

/// While an object of this class lives, messages about letters that cannot be built are collected.
/// At the end of its life they are told on standard error, each once. Make only one at a time.
class UnbuiltLetters
{
public:
    UnbuiltLetters();
    ~UnbuiltLetters();
    UnbuiltLetters(const UnbuiltLetters&) = delete;
    UnbuiltLetters& operator=(const UnbuiltLetters&) = delete;

    /// Throws Error when there was such a message.
    static void ThrowIfAny();

private:
    MessageBoxHandler previous_;
};

}  // namespace orvane
