// SPDX-License-Identifier: MIT
#pragma once

class OrvString;

namespace orvane
{

class JsonWriter;
class OrvShapedString;
class TextTable;

/// The text as one of any language; null when it is none.
OrvShapedString* AsShapedText(const OrvString& text);

/// Adds rows about the fonts, the lines and the spans of a text, and the characters that no font
/// has.
void AddRowsOfShapedText(TextTable& table, OrvShapedString& text);

/// Writes the same as members of the JSON object that is open.
void WriteShapedText(JsonWriter& json, OrvShapedString& text);

}  // namespace orvane
