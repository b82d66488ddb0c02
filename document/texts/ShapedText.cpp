// SPDX-License-Identifier: MIT
#include "orvane/ShapedText.h"

#include "document/Colors.h"
#include "document/DocumentState.h"
#include "document/FontChoice.h"
#include "document/ScenePictures.h"
#include "document/TextEncoding.h"
#include "document/TextNode.h"
#include "document/texts/ShapedTextNode.h"
#include "markup/Markup.h"
#include "platform/CodePages.h"
#include "platform/FontMatching.h"
#include "platform/Utf8.h"
#include "scene/DescendentWalk.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"
#include "shapedtext/OrvShapedString.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace orvane
{

namespace
{

bool AreSame(const FontQuery& a, const FontQuery& b)
{
    const auto isSameAxis = [](const AxisValue& left, const AxisValue& right) {
        return left.tag == right.tag && left.value == right.value;
    };
    const auto fields = [](const FontQuery& query) {
        return std::tie(query.name, query.pattern, query.file, query.index, query.weight,
                        query.width, query.isItalic, query.instance);
    };
    return fields(a) == fields(b) &&
           std::equal(a.axes.begin(), a.axes.end(), b.axes.begin(), b.axes.end(), isSameAxis);
}

/// Makes the settings of a text out of options and markup.
class SettingsMaker
{
public:
    explicit SettingsMaker(const ShapedOptions& options)
    {
        std::vector<FontQuery> fonts = options.fonts;
        if (fonts.empty())
        {
            fonts.emplace_back().name = options.look.font.value_or(std::string());
        }
        if (fonts.front().name.empty() && options.fonts.empty())
        {
            fonts.front().name = DefaultShapedFont();
        }
        for (const FontQuery& font : fonts)
        {
            settings_.style.fonts.push_back(IndexOf(font));
        }
        settings_.style.usesInstalledFonts = options.usesInstalledFonts;
        settings_.style.size = options.size;
        settings_.style.language = options.language;
        settings_.style.script = options.script;
        settings_.style.features = options.features;
        settings_.usesColorGlyphs = options.usesColorGlyphs;
        static_cast<LineSettings&>(settings_) = options;
    }

    void Add(const TextSpan& span)
    {
        const SpanStyle& wanted = span.style;
        settings_.spans.push_back({span.begin, span.end, settings_.style});
        ShapedStyle& style = settings_.spans.back().style;
        const std::size_t first = style.fonts.front();
        const std::size_t font = IndexOf(QueryOf(wanted, settings_.fonts[first].query));
        if (font != first)
        {
            style.fonts.insert(style.fonts.begin(), font);
        }
        style.rise = style.size * wanted.rise;
        style.size *= wanted.size;
        style.features.insert(style.features.end(), wanted.features.begin(), wanted.features.end());
        if (wanted.face)
        {
            style.face = FaceMaterial(ToColorVector(*wanted.face));
        }
        if (wanted.edge)
        {
            style.edge = EdgeMaterial(ToColorVector(*wanted.edge));
        }
        if (wanted.bevel)
        {
            style.bevel = BevelMaterial(ToColorVector(*wanted.bevel));
        }
    }

    const ShapedTextSettings& Settings() const { return settings_; }

private:
    static FontQuery QueryOf(const SpanStyle& style, const FontQuery& ofText)
    {
        FontQuery query = ofText;
        if (!style.font.empty())
        {
            query = FontQuery();
            query.name = style.font;
        }
        if (style.bold)
        {
            query.weight = 700;
        }
        if (style.italic)
        {
            query.isItalic = true;
        }
        query.axes.insert(query.axes.end(), style.axes.begin(), style.axes.end());
        return query;
    }

    std::size_t IndexOf(const FontQuery& query)
    {
        const auto known =
            std::find_if(settings_.fonts.begin(), settings_.fonts.end(),
                         [&](const ShapedFont& font) { return AreSame(font.query, query); });
        const auto index = static_cast<std::size_t>(known - settings_.fonts.begin());
        if (known == settings_.fonts.end())
        {
            settings_.fonts.emplace_back().query = query;
        }
        return index;
    }

    ShapedTextSettings settings_;
};

/// Sentences about what is not as it was asked for.
std::vector<std::string> NoticesOf(OrvShapedString& text)
{
    std::vector<std::string> notices = text.GetFontNotices();
    for (const MissingCharacter& missing : text.GetMissingCharacters())
    {
        notices.push_back("no font has the character " + Describe(Utf8Of(missing.character)) +
                          " at byte " + std::to_string(missing.offset) + " of the text");
    }
    for (const UnreadLetter& unread : text.UnreadLetters())
    {
        notices.push_back("the letter \"" + unread.letter + "\" is left out: the font \"" +
                          unread.font + "\" has no readable outline of it");
    }
    return notices;
}

}  // namespace

std::string DefaultShapedFont()
{
    for (const char* const name : defaultFonts)
    {
        if (FindFontByFullName(name))
        {
            return name;
        }
    }
    const std::vector<InstalledFont> fonts = InstalledFonts();
    if (fonts.empty())
    {
        throw Error("fonts", "no font is installed (try the package fonts-dejavu-core)");
    }
    return std::min_element(fonts.begin(), fonts.end(),
                            [](const InstalledFont& a, const InstalledFont& b) {
                                return a.fullName < b.fullName;
                            })
        ->fullName;
}

PreparedText PrepareShapedText(const std::string& text, const ShapedOptions& options)
{
    SettingsMaker settings(options);
    MarkedText marked = options.isMarkup ? ParseMarkup(text) : MarkedText{text, {}};
    for (const TextSpan& span : marked.spans)
    {
        settings.Add(span);
    }
    return {std::move(marked.text), settings.Settings()};
}

std::unique_ptr<OrvShapedString> MakeShapedText(const std::string& text,
                                                const ShapedOptions& options)
{
    CheckTextOptions(options.look);
    const PreparedText prepared = PrepareShapedText(text, options);
    auto node = std::make_unique<OrvShapedString>();
    node->SetText(prepared.text, prepared.settings);
    SetLook(*node, options.look);
    if (options.look.profile)
    {
        node->SetHasProfile(true);
        node->SetProfile(ParseProfile(*options.look.profile, options.look.bevelWidth));
        node->SetFusion(options.look.fusion);
    }
    else
    {
        node->SetBevelStyle(static_cast<int>(options.look.edgeStyle));
        node->SetBevelDepth(static_cast<float>(options.look.bevelWidth));
    }
    return node;
}

AddedText AddShapedText(Document& document, const std::string& text, const ShapedOptions& options)
{
    const std::shared_ptr<DocumentState> state = DocumentState::Of(document).shared_from_this();
    const CodePageScope scope(state->scene.codePage);
    std::unique_ptr<OrvShapedString> node = MakeShapedText(text, options);
    AddedText added = {Node(), NoticesOf(*node)};
    if (options.isStrict && !added.notices.empty())
    {
        throw Error("text", added.notices.front());
    }
    if (options.look.texture)
    {
        SetTexture(*node, *options.look.texture);
    }
    node->CalculateBounds();
    added.node = state->Add(std::move(node));
    if (options.look.texture)
    {
        state->scene.view->SetShowTextures();
    }
    return added;
}

std::vector<std::string> EmbedFonts(Document& document)
{
    std::vector<std::string> notices;
    VisitDescendents(*DocumentState::Of(document).scene.scene, [&notices](DrawingObject& node) {
        if (auto* const text = dynamic_cast<OrvShapedString*>(&node))
        {
            for (const std::string& notice : text->EmbedFonts())
            {
                if (std::find(notices.begin(), notices.end(), notice) == notices.end())
                {
                    notices.push_back(notice);
                }
            }
        }
        return true;
    });
    return notices;
}

}  // namespace orvane
