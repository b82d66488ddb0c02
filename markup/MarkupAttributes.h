// SPDX-License-Identifier: MIT
#pragma once

#include "markup/Markup.h"

#include <string>
#include <string_view>

namespace orvane::markup
{

/// A value that an attribute or an element does not take.
struct MarkupProblem
{
    std::string found;
    std::string expected;
};

/// Changes the style by an element without its attributes. Throws MarkupProblem for a name that no
/// element has.
void ApplyElement(std::string_view element, SpanStyle& style);

/// Changes the style by an attribute of the element span. Throws MarkupProblem.
/// \param value with its entities resolved
void ApplyAttribute(std::string_view name, const std::string& value, SpanStyle& style);

bool AreEqual(const SpanStyle& a, const SpanStyle& b);

}  // namespace orvane::markup
