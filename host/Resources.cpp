// SPDX-License-Identifier: MIT
#include "host/Resources.h"

#include "host/CString.h"

#include <map>
#include <mutex>
#include <string>

namespace
{

struct StringTable
{
    std::mutex mutex;
    std::map<UINT, std::string> texts = {
        // Names under which an application can store a list of materials in its profile.
        {300, "Material Colors"},
        {301, "Material Color Number "},
        {302, "Material Color Count"},
        {303, "Current Material Color"},
        // The entries of one material in the profile.
        {311, "Ambient Red"},
        {312, "Ambient Green"},
        {313, "Ambient Blue"},
        {314, "Diffuse Red"},
        {315, "Diffuse Green"},
        {316, "Diffuse Blue"},
        {317, "Specular Red"},
        {318, "Specular Green"},
        {319, "Specular Blue"},
        {320, "Transparency"},
        {321, "Shininess"},
        // An error of bitmap files, which the library itself does not show.
        {20000, "Invalid file."},
        // The entries for the name of a material and for the file of a scene template.
        {21000, "Name"},
        {21001, "Filename"},
        // Errors when a bitmap file is created. The library itself shows only 21101.
        {21100, "Unable to create %s.\nVerify that the disk and/or file are not read-only."},
        {21101,
         "Cannot create the specified file.  Verify that there\nis space on your disk for a file "
         "of %u bytes.\n"},
    };
};

// The table is never destroyed, because static objects may still load texts while the process ends.
StringTable& TheTable()
{
    static StringTable* const table = new StringTable;
    return *table;
}

}  // namespace

void AfxSetResourceString(UINT resource, LPCSTR text)
{
    StringTable& table = TheTable();
    const std::lock_guard lock(table.mutex);
    table.texts[resource] = text == nullptr ? "" : text;
}

BOOL CString::LoadString(UINT resource)
{
    StringTable& table = TheTable();
    const std::lock_guard lock(table.mutex);
    const auto found = table.texts.find(resource);
    text_ = found == table.texts.end() ? "" : found->second;
    return found != table.texts.end();
}
