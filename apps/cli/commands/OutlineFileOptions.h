// SPDX-License-Identifier: MIT
#pragma once

#include "orvane/Options.h"

#include <string>
#include <vector>

namespace CLI
{
class App;
class Option;
}  // namespace CLI

namespace orvane
{

/// An SVG file and how its solids stand in the scene. How they look is not set.
struct OutlineFile
{
    std::string file;
    OutlineOptions options;
};

/// The options that bring SVG files into a scene.
class OutlineFileOptions
{
public:
    /// Adds the options to a command, which must live as long as this object.
    explicit OutlineFileOptions(CLI::App& command);

    /// Each file with the options that follow it on the command line. Throws UsageError.
    std::vector<OutlineFile> Parse() const;

    std::vector<CLI::Option*> all;

private:
    CLI::App& command_;
    CLI::Option* file_;
    CLI::Option* at_;
    CLI::Option* width_;
    CLI::Option* height_;
};

}  // namespace orvane
