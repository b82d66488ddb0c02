// SPDX-License-Identifier: MIT
// Uses the input as an application's profile: reads a material from it, writes it back under
// another index, and reads it again.
#include "fuzz/Check.h"
#include "fuzz/InputFile.h"
#include "orvane.h"

#include <string>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t count)
{
    static InputFile input("orvane.ini");
    const std::string& path = input.Fill(bytes, count);
    CWinApp application;
    application.SetProfilePath(path.c_str());
    const NamedColor material(0, "Materials", "Material");
    material.Save(1, "Materials", "Material");
    Check(NamedColor(1, "Materials", "Material").GetName() == std::string(material.GetName()),
          "a written material has its name again");
    Check(application.WriteProfileString("Fuzz", "Written", " = 1\n") != FALSE,
          "a profile is written");

    CWinApp reader;
    reader.SetProfilePath(path.c_str());
    Check(reader.GetProfileString("Fuzz", "Written") == " = 1\n", "a written entry is read again");
    return 0;
}
