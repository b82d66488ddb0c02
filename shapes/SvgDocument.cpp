// SPDX-License-Identifier: MIT
#include "shapes/SvgDocument.h"

#include "platform/Limits.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>

namespace orvane::shapes
{

namespace
{

/// Properties that change a picture and are not supported.
constexpr std::array<std::string_view, 9> leftOutProperties = {
    "filter", "marker",         "marker-end", "marker-mid",   "marker-start",
    "mask",   "mix-blend-mode", "transform",  "vector-effect"};

bool IsLeftOut(std::string_view property)
{
    return std::find(leftOutProperties.begin(), leftOutProperties.end(), property) !=
           leftOutProperties.end();
}

/// The node after a node in the order of the file; empty after the last one of the tree.
pugi::xml_node NextInTree(pugi::xml_node node, pugi::xml_node tree)
{
    if (node.first_child())
    {
        return node.first_child();
    }
    while (node != tree && !node.next_sibling())
    {
        node = node.parent();
    }
    return node == tree ? pugi::xml_node() : node.next_sibling();
}

std::vector<std::string_view> WordsOf(std::string_view text)
{
    std::vector<std::string_view> words;
    for (text = Trimmed(text); !text.empty(); text = Trimmed(text))
    {
        const std::size_t end = std::min(text.find_first_of(" \t\r\n\f"), text.size());
        words.push_back(text.substr(0, end));
        text.remove_prefix(end);
    }
    return words;
}

}  // namespace

SvgDocument::SvgDocument(std::string_view bytes, const std::string& name)
    : bytes_(bytes), name_(name), work_(name, limits::maxShapeSteps)
{
    Parse();
    CollectIdsAndSheets();
}

void SvgDocument::CountBytes(std::size_t count)
{
    // Reading a byte takes about ten times as long as comparing two edges.
    constexpr std::int64_t stepsOfByte = 10;
    work_.Add(stepsOfByte * static_cast<std::int64_t>(1 + count));
}

void SvgDocument::CollectLineEnds()
{
    lineEnds_.reserve(static_cast<std::size_t>(std::count(bytes_.begin(), bytes_.end(), '\n')));
    for (std::size_t at = bytes_.find('\n'); at != std::string_view::npos;
         at = bytes_.find('\n', at + 1))
    {
        lineEnds_.push_back(static_cast<std::uint32_t>(at));
    }
}

void SvgDocument::Parse()
{
    if (bytes_.size() > limits::maxSvgBytes)
    {
        throw Error(name_, std::to_string(bytes_.size()) + " bytes",
                    "at most " + std::to_string(limits::maxSvgBytes));
    }
    CollectLineEnds();
    const pugi::xml_parse_result parsed =
        xml_.load_buffer(bytes_.data(), bytes_.size(),
                         pugi::parse_default | pugi::parse_doctype | pugi::parse_ws_pcdata_single,
                         pugi::encoding_utf8);
    // The document type may declare entities where the parser stops.
    RefuseEntities();
    if (!parsed)
    {
        std::string problem = parsed.description();
        problem[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(problem[0])));
        throw Error(FileLine(parsed.offset), problem, "an SVG file in UTF-8");
    }
    root_ = xml_.document_element();
    const std::string_view name = root_.name();
    const std::size_t colon = name.find(':');
    prefix_ =
        colon == std::string_view::npos ? std::string() : std::string(name.substr(0, colon + 1));
    if (NameOf(root_) != "svg")
    {
        throw Error(FileLine(root_.offset_debug()), "the element <" + std::string(name) + ">",
                    "<svg>");
    }
}

void SvgDocument::RefuseEntities() const
{
    for (const pugi::xml_node node : xml_.children())
    {
        if (node.type() == pugi::node_doctype && std::strstr(node.value(), "<!ENTITY") != nullptr)
        {
            throw Error(FileLine(node.offset_debug()), "a declaration <!ENTITY",
                        "a document type without entities");
        }
    }
}

void SvgDocument::CollectIdsAndSheets()
{
    for (pugi::xml_node node = root_; node; node = NextInTree(node, root_))
    {
        if (node.type() == pugi::node_pi && std::strcmp(node.name(), "xml-stylesheet") == 0)
        {
            AddNotice(node, "a style sheet in another file is not read");
        }
        if (node.type() != pugi::node_element)
        {
            continue;
        }
        if (const pugi::xml_attribute id = node.attribute("id"))
        {
            byId_.emplace(id.value(), node);
        }
        if (NameOf(node) == "style")
        {
            std::string css;
            for (const pugi::xml_node text : node.children())
            {
                css += text.value();
            }
            sheet_.Add(css);
            for (const std::string& part : sheet_.LeftOut())
            {
                AddNotice(node, "\"" + part + "\" is not supported and left out");
            }
        }
    }
}

pugi::xml_node SvgDocument::FindElement(const std::string& id) const
{
    const auto found = byId_.find(id);
    return found == byId_.end() ? pugi::xml_node() : found->second;
}

pugi::xml_node SvgDocument::Referenced(pugi::xml_node element)
{
    for (const pugi::xml_attribute attribute : element.attributes())
    {
        const std::string_view name = attribute.name();
        if (name != "href" && !name.ends_with(":href"))
        {
            continue;
        }
        const std::string_view target = Trimmed(attribute.value());
        CountBytes(target.size());
        if (!target.starts_with('#'))
        {
            AddNotice(element, "a reference to something outside of the file is not followed");
            return {};
        }
        const pugi::xml_node found = FindElement(std::string(target.substr(1)));
        if (!found)
        {
            AddNotice(element, "refers to an element that is not in the file");
        }
        return found;
    }
    return {};
}

std::string_view SvgDocument::NameOf(pugi::xml_node node) const
{
    const std::string_view name = node.name();
    if (node.type() != pugi::node_element || !name.starts_with(prefix_))
    {
        return {};
    }
    const std::string_view local = name.substr(prefix_.size());
    return local.find(':') == std::string_view::npos ? local : std::string_view();
}

SvgStyle SvgDocument::StyleOf(pugi::xml_node element, const SvgStyle& parent,
                              const SvgViewport& viewport)
{
    SvgStyle style = parent.Inherited();
    const auto apply = [&](std::string_view property, std::string_view value) {
        ApplyDeclaration(element, style, parent, property, value, viewport);
    };
    for (const pugi::xml_attribute attribute : element.attributes())
    {
        const std::string_view name = attribute.name();
        const std::string_view value = attribute.value();
        CountBytes(name.size() + value.size());
        if (name != "transform")
        {
            apply(name, value);
        }
    }
    const CssElement described = {NameOf(element), element.attribute("id").value(),
                                  WordsOf(element.attribute("class").value())};
    const std::vector<const CssDeclaration*> ruled = sheet_.DeclarationsFor(described, work_);
    const std::vector<CssDeclaration> own = ParseDeclarations(element.attribute("style").value());
    for (const bool isImportant : {false, true})
    {
        for (const CssDeclaration* const declaration : ruled)
        {
            if (declaration->isImportant == isImportant)
            {
                apply(declaration->name, declaration->value);
            }
        }
        for (const CssDeclaration& declaration : own)
        {
            if (declaration.isImportant == isImportant)
            {
                apply(declaration.name, declaration.value);
            }
        }
    }
    return style;
}

void SvgDocument::ApplyDeclaration(pugi::xml_node element, SvgStyle& style, const SvgStyle& parent,
                                   std::string_view property, std::string_view value,
                                   const SvgViewport& viewport)
{
    CountBytes(property.size() + value.size());
    if (IsLeftOut(property))
    {
        const std::string_view trimmed = Trimmed(value);
        if (trimmed != "none" && trimmed != "normal" && trimmed != "inherit")
        {
            AddNotice(element, std::string(property) + " is not supported and left out");
        }
        return;
    }
    try
    {
        SetProperty(style, parent, property, value, viewport);
    }
    catch (const SvgSyntaxError& error)
    {
        AddNotice(element, std::string(property) + " is ignored: " + error.what());
    }
}

double SvgDocument::LengthOf(pugi::xml_node element, const char* attribute, double whole,
                             double missing) const
{
    if (!element.attribute(attribute))
    {
        return missing;
    }
    return ParseAttribute(element, attribute,
                          [&](std::string_view text) { return ParseLength(text, whole); });
}

double SvgDocument::SizeOf(pugi::xml_node element, const char* attribute, double whole,
                           double missing) const
{
    const double size = LengthOf(element, attribute, whole, missing);
    if (size < 0)
    {
        FailAt(element, attribute,
               SvgSyntaxError(0, "a negative length", "a length that is not negative"));
    }
    return size;
}

Affine SvgDocument::TransformOf(pugi::xml_node element, const char* attribute) const
{
    return ParseAttribute(element, attribute, ParseTransforms);
}

std::vector<double> SvgDocument::ViewBoxOf(pugi::xml_node element) const
{
    if (!element.attribute("viewBox"))
    {
        return {};
    }
    std::vector<double> box = ParseAttribute(element, "viewBox", ParseNumbers);
    if (box.size() != 4 || box[2] <= 0 || box[3] <= 0)
    {
        FailAt(element, "viewBox",
               SvgSyntaxError(0, "\"" + std::string(element.attribute("viewBox").value()) + "\"",
                              "four numbers, a width and a height above 0"));
    }
    return box;
}

std::string SvgDocument::PlaceOf(pugi::xml_node element) const
{
    return FileLine(element.offset_debug()) + ": <" + element.name() + ">";
}

void SvgDocument::AddNotice(pugi::xml_node element, const std::string& problem)
{
    if (notices_.size() > limits::maxSvgNotices ||
        !noticed_.emplace(element.name(), problem).second)
    {
        return;
    }
    notices_.push_back({LineAt(element.offset_debug()), element.name(), problem});
    if (notices_.size() > limits::maxSvgNotices)
    {
        notices_.back().problem = "has a problem; there are more that are not told";
    }
}

std::size_t SvgDocument::LineAt(std::ptrdiff_t offset) const
{
    const auto next = std::lower_bound(lineEnds_.begin(), lineEnds_.end(), offset);
    return 1 + static_cast<std::size_t>(next - lineEnds_.begin());
}

std::string SvgDocument::FileLine(std::ptrdiff_t offset) const
{
    return name_ + ": line " + std::to_string(LineAt(offset));
}

void SvgDocument::FailAt(pugi::xml_node element, const std::string& attribute,
                         const SvgSyntaxError& error) const
{
    throw Error(
        PlaceOf(element) + ": " + attribute + ", character " + std::to_string(error.At() + 1),
        error.Found(), error.Expected());
}

}  // namespace orvane::shapes
