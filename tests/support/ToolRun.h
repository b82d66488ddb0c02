// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Runs of the command-line tool, each in a folder of the test's own.

#include <cstdint>
#include <string>
#include <vector>

/// What a run left.
struct ToolResult
{
    int status = -1;  ///< the exit status, 128 and the signal's number when a signal ended it
    std::string out;
    std::string err;
    std::uint64_t writtenBytes = 0;  ///< to files, pipes and terminals together
    long peakKiB = 0;                ///< the most memory that was resident
};

/// A folder for the files of one test, the current one of the runs, removed at the end.
class ToolFolder
{
public:
    ToolFolder();
    ~ToolFolder();
    ToolFolder(const ToolFolder&) = delete;
    ToolFolder& operator=(const ToolFolder&) = delete;

    /// Runs the tool and waits for its end.
    ToolResult Run(const std::vector<std::string>& arguments);

    /// Runs a shell script in which "$@" is the tool with the arguments.
    ToolResult RunInShell(const std::string& script, const std::vector<std::string>& arguments);

    /// Starts the tool, and sends it the signal as soon as it writes to a file in the folder.
    ToolResult InterruptWriting(const std::vector<std::string>& arguments, int signal);

    /// From now on only these font files are installed for the runs.
    void UseFonts(const std::vector<std::string>& files);

    /// From now on standard error leads to this file, which is a terminal perhaps.
    void SetStandardError(const std::string& path) { standardError_ = path; }

    std::string Path(const std::string& name) const { return folder_ + "/" + name; }
    void Write(const std::string& name, const std::string& content) const;
    std::string Read(const std::string& name) const;
    bool Has(const std::string& name) const;

    /// The names of all files in the folder, hidden ones too.
    std::vector<std::string> Names() const;

private:
    int Start(const std::vector<std::string>& command) const;
    ToolResult Finish(int process) const;

    std::string folder_;
    std::string logs_;  // beside the folder: standard output and error, the font configuration
    std::string standardError_;
    std::vector<std::string> environment_;
};
