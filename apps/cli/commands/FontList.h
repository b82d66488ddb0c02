// SPDX-License-Identifier: MIT
#pragma once

#include "apps/cli/info/JsonWriter.h"
#include "orvane/orvane.h"

#include <string>

namespace orvane
{

/// A list of fonts by their full names, as text and as JSON.
class FontList
{
public:
    FontList() { json_.BeginArray(); }
    void Add(const FontInfo& font);
    /// To be called once, at the end.
    std::string Result(bool asJson);

private:
    std::string names_;
    JsonWriter json_;
};

}  // namespace orvane
