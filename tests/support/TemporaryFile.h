// SPDX-License-Identifier: MIT
#pragma once

#include "host/CString.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

/// A folder of this process alone, for tests run side by side; it goes at the end. Ends in a slash.
inline const std::string& TemporaryFolder()
{
    struct Folder
    {
        Folder() { std::filesystem::create_directory(path); }
        ~Folder()
        {
            std::error_code ignored;
            std::filesystem::remove_all(path, ignored);
        }

        const std::string path =
            testing::TempDir() + "orvane-tests-" + std::to_string(std::random_device{}()) + "/";
    };
    static const Folder folder;
    return folder.path;
}

/// The name of a file that does not exist, and of none again once its object ends.
class TemporaryName
{
public:
    explicit TemporaryName(const std::string& name) : path_(TemporaryFolder() + name)
    {
        std::remove(path_.c_str());
    }
    ~TemporaryName() { std::remove(path_.c_str()); }
    TemporaryName(const TemporaryName&) = delete;
    TemporaryName& operator=(const TemporaryName&) = delete;

    CString Path() const { return path_; }
    /// The file's bytes; none when there is no file.
    std::vector<BYTE> Read() const
    {
        std::ifstream file(path_, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }
    bool Exists() const { return std::ifstream(path_).good(); }

private:
    std::string path_;
};

/// A file that lives as long as its object.
class TemporaryFile : public TemporaryName
{
public:
    TemporaryFile(const std::string& name, const std::string& content) : TemporaryName(name)
    {
        std::ofstream(Path(), std::ios::binary) << content;
    }
    TemporaryFile(const std::string& name, const std::vector<BYTE>& content)
        : TemporaryFile(name, std::string(content.begin(), content.end()))
    {}
};
