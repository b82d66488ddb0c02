// SPDX-License-Identifier: MIT
#pragma once

#include "apps/cli/commands/OptionAdder.h"
#include "orvane/Options.h"

#include <string>

namespace orvane
{

/// Adds the options of a command for what a picture file holds besides its pixels, and how it is
/// packed.
void AddPictureFileOptions(OptionAdder& add, PictureOptions& picture);

/// Whether a value of --background means that there is none.
bool IsNoBackground(const std::string& background);

/// Whether a value of --background names a picture: its name ends like that of a picture, or it is
/// no colour and a file has this name.
bool NamesPicture(const std::string& background);

/// How a value of --background-fit lays a background picture. Throws Error for other texts.
BackgroundPlacement ParseFit(const std::string& fit);

}  // namespace orvane
