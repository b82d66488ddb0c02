// SPDX-License-Identifier: MIT
#include "document/FileErrors.h"

#include "host/CException.h"
#include "host/CFile.h"

#include <cstdio>
#include <filesystem>
#include <system_error>

namespace orvane
{

std::string FileStart(CFile& file)
{
    BYTE bytes[2];
    const UINT count = file.Read(bytes, sizeof bytes);
    if (count < sizeof bytes)
    {
        return count == 0 ? "the file is empty" : "the file has one byte";
    }
    char text[16];
    std::snprintf(text, sizeof text, "found %02X %02X", bytes[0], bytes[1]);
    return text;
}

void OpenRegularFile(CFile& file, const std::string& path)
{
    std::error_code ignored;
    const std::filesystem::file_status status = std::filesystem::status(path, ignored);
    const bool isOther = std::filesystem::exists(status) &&
                         !std::filesystem::is_regular_file(status) &&
                         !std::filesystem::is_directory(status);
    if (isOther)
    {
        throw Error(path, "is a pipe or a device, expected a regular file");
    }
    CFileException refused;
    if (!file.Open(path.c_str(), CFile::modeRead, &refused))
    {
        throw FileError(path, path, refused);
    }
}

Error FileError(const std::string& place, const std::string& knownName, const CException& error)
{
    const std::string text = error.what();
    const std::string known = knownName + ": ";
    return Error(place, text.starts_with(known) ? text.substr(known.size()) : text);
}

}  // namespace orvane
