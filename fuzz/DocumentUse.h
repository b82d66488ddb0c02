// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace orvane
{
class Document;
}

/// Uses a document in every way that a program would use a file from a stranger: asks for the
/// bounds of its nodes, moves every node and undoes the move, draws a small picture, picks, saves,
/// opens the saved file and saves it again. Both saved files must have the same bytes. \p folder is
/// an existing folder for the files that are written.
void UseDocument(orvane::Document& document, const std::string& folder);
