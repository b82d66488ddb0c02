// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <random>
#include <string>

/// The path of a file in the folder for temporary ones, which goes when this does.
class ScratchFile
{
public:
    /// \param ending of its name.
    explicit ScratchFile(const char* ending = "")
        : path_((std::filesystem::temp_directory_path() /
                 ("orvane-bench-" + std::to_string(std::random_device()()) + ending))
                    .string())
    {}
    ~ScratchFile()
    {
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
    }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    const char* Path() const { return path_.c_str(); }

private:
    std::string path_;
};
