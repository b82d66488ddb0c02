// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace orvane
{

/// Makes a text that comes from a file, a font or the command line safe to print: it takes one line
/// and cannot change a terminal, reverse the text around it, or forge a line of its own. Everything
/// of this kind that the tool prints goes through this function, or through Quoted, which uses it.
///
/// Control characters (below U+0020 and from U+007F to U+009F), the separators of lines and
/// paragraphs (U+2028 and U+2029) and the marks that change the direction of writing are written as
/// \n, \r or \uXXXX. Bytes that are not UTF-8 become U+FFFD.
/// \param marked ASCII characters before which a backslash is written
std::string Printable(std::string_view text, std::string_view marked = {});

}  // namespace orvane
