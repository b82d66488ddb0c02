// SPDX-License-Identifier: MIT
#pragma once

#include "host/CString.h"
#include "platform/Export.h"
#include "platform/Types.h"

#include <string>
#include <vector>

class OrvFontString;

namespace orvane
{

/// The lines of a text (UTF-8). A line ends with LF, CR LF or CR, which may be missing after the
/// last line. A tab becomes four spaces, because fonts have no glyph for it.
ORVANE_API std::vector<std::string> SplitLines(const std::string& text);

/// The text of a file, which may also be a pipe or a device, without the byte order mark of UTF-8.
/// Throws Error when the file cannot be read, or is longer than \p mostBytes and a byte order mark.
/// Reading ends with the first byte beyond that.
ORVANE_API std::string ReadText(const std::string& path, std::size_t mostBytes);

/// The lines of a file of at most limits::maxTextBytes bytes, read as ReadText does.
ORVANE_API std::vector<std::string> ReadLines(const std::string& path);

/// Throws Error when lines have more than limits::maxTextBytes bytes together with the CR LF
/// between them.
ORVANE_API void CheckTextLength(const std::vector<std::string>& lines);

/// A text in a code page, its lines separated by CR LF.
struct EncodedText
{
    UINT codePage = 0;
    CString text;
};

/// Encodes lines (UTF-8) in the first code page on offer that has all their characters. Throws
/// Error if no code page has them all. The Error names the first character that no code page has
/// together with all characters before it. Throws Error, too, for lines that CheckTextLength
/// refuses.
/// \param others more text, in UTF-8, whose characters the code page must have, too
ORVANE_API EncodedText EncodeLines(const std::vector<std::string>& lines,
                                   const std::string& others = {});

/// Encodes lines (UTF-8) in a given code page. The text ends before the first character that the
/// code page lacks.
ORVANE_API CString EncodeLinesIn(const std::vector<std::string>& lines, UINT codePage);

/// Converts a text of the process's code page to UTF-8.
ORVANE_API std::string ToUtf8(const char* text);

/// Converts a part of a node's text to UTF-8, from the process's code page or from UTF-8 itself,
/// where U+FFFD replaces what is no character.
ORVANE_API std::string ToUtf8(const OrvFontString& text, const std::string& part);

/// Describes a character (UTF-8) for a message: as "é" (U+00E9), or as U+0007 if it is invisible.
ORVANE_API std::string Describe(const std::string& character);

/// Sets the process's code page for as long as this object lives.
class ORVANE_API CodePageScope
{
public:
    explicit CodePageScope(UINT codePage);
    ~CodePageScope();
    CodePageScope(const CodePageScope&) = delete;
    CodePageScope& operator=(const CodePageScope&) = delete;

private:
    UINT previous_;
};

}  // namespace orvane
