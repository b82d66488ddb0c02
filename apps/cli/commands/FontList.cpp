// SPDX-License-Identifier: MIT
#include "apps/cli/commands/FontList.h"

#include "apps/cli/PrintableText.h"

namespace orvane
{

void FontList::Add(const FontInfo& font)
{
    names_ += Printable(font.name) + '\n';
    json_.BeginObject(JsonWriter::Layout::OneLine);
    json_.Member("name", font.name);
    json_.Member("family", font.family);
    json_.Member("style", font.style);
    json_.Member("weight", font.weight);
    json_.Member("italic", font.italic);
    json_.EndObject();
}

std::string FontList::Result(bool asJson)
{
    json_.EndArray();
    return asJson ? json_.Result() : names_;
}

}  // namespace orvane
