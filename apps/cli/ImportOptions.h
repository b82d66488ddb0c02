// SPDX-License-Identifier: MIT
#pragma once

#include "apps/cli/MeshImport.h"

#include <memory>
#include <vector>

namespace CLI
{
class App;
}

/// The options that bring 3D Studio files into a scene, in the order of the command line.
class ImportOptions
{
public:
    /// Adds the options to a command, which must outlive this.
    explicit ImportOptions(CLI::App& command);
    ~ImportOptions();

    bool AreGiven() const;

    /// Each import with the options behind it. Throws UsageError, naming the option.
    std::vector<ImportLook> Parse() const;

private:
    struct Options;
    std::unique_ptr<Options> options_;
};
