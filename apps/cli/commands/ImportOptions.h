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

/// A 3D Studio file and how its meshes stand in the scene.
struct Import
{
    std::string file;
    MeshOptions options;
};

/// The options that bring 3D Studio files into a scene.
class ImportOptions
{
public:
    /// Adds the options to a command, which must live as long as this object.
    explicit ImportOptions(CLI::App& command);

    /// Each import with the options that follow it on the command line. Throws UsageError.
    std::vector<Import> Parse() const;

private:
    CLI::App& command_;
    CLI::Option* file_;
    CLI::Option* at_;
    CLI::Option* size_;
    CLI::Option* turn_;
};

}  // namespace orvane
