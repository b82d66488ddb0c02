// SPDX-License-Identifier: MIT
#pragma once

#include "host/CString.h"
#include "platform/Export.h"
#include "platform/Types.h"

#include <string>
#include <vector>

namespace orvane
{

/// The lines of a text (UTF-8). A line ends with LF, CR LF or CR; the last line need not end. A tab
/// becomes four spaces, because fonts have no glyph for it.
ORVANE_API std::vector<std::string> SplitLines(const std::string& text);

/// The lines of a file. Throws Error when it cannot be read.
ORVANE_API std::vector<std::string> ReadLines(const std::string& path);

/// A text in a code page, its lines separated by CR LF.
struct EncodedText
{
    UINT codePage = 0;
    CString text;
};

/// Encodes lines (UTF-8) in the first code page on offer that holds all their characters together
/// with those of \p others. Throws Error, which names the first character that fits into no code
/// page together with the characters before it.
/// \param others more text, in UTF-8, that has to fit into the same code page
ORVANE_API EncodedText EncodeLines(const std::vector<std::string>& lines,
                                   const std::string& others = {});

/// Lines (UTF-8) in a given code page. Characters that are not in it end the text.
ORVANE_API CString EncodeLinesIn(const std::vector<std::string>& lines, UINT codePage);

/// Converts a text of the process's code page to UTF-8.
ORVANE_API std::string ToUtf8(const char* text);

/// A character (UTF-8) for a message: its number, after the character itself when it can be seen.
ORVANE_API std::string Describe(const std::string& character);

/// Makes a code page the process's for as long as this object lives.
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
