// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>
#include <filesystem>
#include <random>
#include <string>

/// A temporary file for readers that take a path. All inputs of a run use the same file, one after
/// the other. The destructor removes it.
class InputFile
{
public:
    InputFile()
        : path_((std::filesystem::temp_directory_path() /
                 ("orvane-fuzz-" + std::to_string(std::random_device()())))
                    .string())
    {}
    ~InputFile() { std::remove(path_.c_str()); }
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    /// Replaces the file's content by the input and returns the file's path.
    const std::string& Fill(const unsigned char* bytes, std::size_t count) const
    {
        if (std::FILE* const file = std::fopen(path_.c_str(), "wb"))
        {
            std::fwrite(bytes, 1, count, file);
            std::fclose(file);
        }
        return path_;
    }

private:
    std::string path_;
};
