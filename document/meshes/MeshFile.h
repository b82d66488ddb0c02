// SPDX-License-Identifier: MIT
#pragma once

#include "document/OutputFile.h"
#include "exchange/MeshWriter.h"
#include "orvane/Options.h"
#include "platform/Export.h"

#include <memory>
#include <string>
#include <vector>

namespace orvane
{

/// The format that the options or, without one there, the ending of the file's name ask for. Throws
/// OptionError for a name with another ending, and Error when the library was built without the
/// format.
ORVANE_API MeshFormat FormatOfMesh(const std::string& path, const MeshFileOptions& options);

/// A mesh file that is being written, with the files beside it: all of them appear under their
/// names together when they are complete, or none does.
class ORVANE_API MeshFile
{
public:
    /// Makes the unfinished file, so that a place that cannot be written to is found before any
    /// other work. Throws what FormatOfMesh and OutputFile throw.
    /// \param path "-" is standard output
    MeshFile(const std::string& path, const MeshFileOptions& options);
    ~MeshFile();
    MeshFile(const MeshFile&) = delete;
    MeshFile& operator=(const MeshFile&) = delete;

    MeshFormat Format() const { return format_; }
    /// Throws Error.
    /// \param scene prepared by PlaceScene for this file's format and options
    void Write(const MeshScene& scene);
    /// Puts the files in their places. Throws Error.
    void Commit();

private:
    class Output;

    ByteSink& OpenBeside(const std::string& name);

    std::string path_;
    MeshFileOptions options_;
    MeshFormat format_;
    std::vector<std::unique_ptr<Output>> outputs_;  ///< the main file and those beside it
};

}  // namespace orvane
