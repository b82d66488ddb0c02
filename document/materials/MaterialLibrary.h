// SPDX-License-Identifier: MIT
#pragma once

#include "material/NamedColorGroup.h"
#include "platform/Export.h"

#include <string>
#include <vector>

namespace orvane
{

/// Materials that every program has, sorted by their names.
ORVANE_API const NamedColorGroup& BuiltInMaterials();

/// The materials in the application's profile, in the order in which they were saved first.
ORVANE_API std::vector<NamedColor> SavedMaterials();

/// Saves a material in the application's profile, in place of one with the same name. Colours are
/// rounded to whole per cent, and emission is not saved. Throws Error when the profile cannot be
/// written, and OptionError when the name is empty or that of a built-in material.
ORVANE_API void SaveMaterial(const NamedColor& material);

/// Removes a material from the application's profile. Throws Error when there is none of that name,
/// or when the profile cannot be written.
ORVANE_API void RemoveMaterial(const std::string& name);

/// The material of that name, built in or saved; upper and lower case count as the same. Throws
/// OptionError, with the nearest names, when there is none.
/// \param field the name of the option's field, for the error
ORVANE_API NamedColor MaterialNamed(const char* field, const std::string& name);

}  // namespace orvane
