// SPDX-License-Identifier: MIT
#pragma once

#include "fuzz/InputFile.h"

namespace orvane
{
class Document;
}

/// Uses a document in every way that a program would use a file from a stranger: asks for the
/// bounds of its nodes, moves every node and undoes the move, draws into a small context, picks,
/// saves, opens the saved file and saves it again. Both saved files must have the same bytes. One
/// in eight documents, chosen by the input's bytes, is also drawn into a picture file.
void UseDocument(orvane::Document& document, const InputFile& input);
