// SPDX-License-Identifier: MIT
#pragma once

#include "host/CString.h"
#include "orvane/Options.h"
#include "platform/Export.h"
#include "scene/DescendentWalk.h"
#include "scene/OrvFontString.h"

#include <memory>
#include <vector>

class OrvFont;

namespace orvane
{

class SceneDocument;

/// Throws OptionError when a number of the options is out of its range.
ORVANE_API void CheckTextOptions(const TextOptions& options);

/// Sets the materials, the alignment, the spacings, the sides of the bevels and the depth of a
/// text.
ORVANE_API void SetLook(OrvFontString& node, const TextOptions& options);

// The materials of the surfaces of texts.

ORVANE_API NamedColor FaceMaterial(const ColorVector& color);
ORVANE_API NamedColor EdgeMaterial(const ColorVector& color);
ORVANE_API NamedColor BevelMaterial(const ColorVector& color);

/// A text node that is ready to be drawn.
/// \param text in the font's code page, its lines separated by CR LF
/// \param options the font and the texture in them are ignored
ORVANE_API std::unique_ptr<OrvFontString> MakeTextNode(const CString& text, OrvFont* font,
                                                       const TextOptions& options);

/// Calls visit(text) for every text of a scene that is in the document's code page and has a font.
template <typename Visit>
void ForEachText(const DrawingObject& scene, Visit visit)
{
    VisitDescendents(scene, [&visit](DrawingObject& node) {
        auto* const text = dynamic_cast<OrvFontString*>(&node);
        if (text != nullptr && text->GetFont() != nullptr && !text->IsUtf8())
        {
            visit(*text);
        }
        return true;
    });
}

/// The letters of a document's texts whose outlines cannot be read, each once for each font, in the
/// order of the texts. Builds the letters that no drawing has built yet.
ORVANE_API std::vector<MissingLetter> MissingLettersOf(const SceneDocument& document);

}  // namespace orvane
