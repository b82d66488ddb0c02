// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>
#include <filesystem>
#include <random>
#include <string>

/// A file with the bytes of one input, for readers that take a path; the same one for all inputs of
/// a run, removed at its end.
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
