// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>
#include <filesystem>
#include <functional>
#include <random>
#include <string>
#include <string_view>

/// A temporary folder with one file for the input, for readers that take a path. All inputs of a
/// run use the same file, one after the other. Its name may begin with a folder. The destructor
/// removes everything.
class InputFile
{
public:
    explicit InputFile(const std::string& name = "input")
        : folder_(std::filesystem::temp_directory_path() /
                  ("orvane-fuzz-" + std::to_string(std::random_device()()))),
          path_((folder_ / name).string())
    {
        std::filesystem::create_directories(std::filesystem::path(path_).parent_path());
    }
    ~InputFile()
    {
        std::error_code error;
        std::filesystem::remove_all(folder_, error);
    }
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    /// Replaces the file's content by the input and returns the file's path.
    const std::string& Fill(const unsigned char* bytes, std::size_t count)
    {
        hash_ = std::hash<std::string_view>()({reinterpret_cast<const char*>(bytes), count});
        if (std::FILE* const file = std::fopen(path_.c_str(), "wb"))
        {
            std::fwrite(bytes, 1, count, file);
            std::fclose(file);
        }
        return path_;
    }

    const std::string& Path() const { return path_; }
    std::string Folder() const { return folder_.string(); }
    /// A number that the bytes of the input decide.
    std::size_t Hash() const { return hash_; }

private:
    std::filesystem::path folder_;
    std::string path_;
    std::size_t hash_ = 0;
};
