// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Types.h"

#include <gtest/gtest.h>

#include <ostream>

/// A text, in UTF-8, with the code page that holds it and the character set of that.
struct Alphabet
{
    const char* name;
    const char* text;
    UINT codePage;
    BYTE characterSet;
};

inline std::ostream& operator<<(std::ostream& out, const Alphabet& alphabet)
{
    return out << alphabet.name;
}

/// One for each code page of one byte a character whose letters DejaVu Sans has.
inline auto AllAlphabets()
{
    return testing::Values(Alphabet{"CentralEuropean", "Příliš žluťoučký kůň Łódź", 1250, 238},
                           Alphabet{"Cyrillic", "Съешь ещё этих булок", 1251, 204},
                           Alphabet{"Western", "Français Ångström", 1252, 0},
                           Alphabet{"Greek", "Ξεσκεπάζω την ψυχή", 1253, 161},
                           Alphabet{"Turkish", "Çığ İstanbul şöyle", 1254, 162},
                           Alphabet{"Baltic", "Ķēniņš ąžuolą", 1257, 186});
}

inline const char* NameOf(const testing::TestParamInfo<Alphabet>& info)
{
    return info.param.name;
}
