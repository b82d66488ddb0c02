// SPDX-License-Identifier: MIT
#pragma once

#include "orvane/Error.h"
#include "shapes/SvgFile.h"
#include "shapes/SvgStyle.h"
#include "shapes/SvgStyleSheet.h"

#include <pugixml.hpp>

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace orvane::shapes
{

/// The elements of an SVG file, with its styles and what is to be told of it.
class SvgDocument
{
public:
    /// \param bytes borrowed
    /// \param name of the file, for errors
    SvgDocument(std::string_view bytes, const std::string& name);

    pugi::xml_node Root() const { return root_; }
    /// The element with an id; empty when there is none.
    pugi::xml_node FindElement(const std::string& id) const;
    /// The element that href or xlink:href refers to; empty without such an attribute. A reference
    /// to another file, or to nothing, gives a notice and the empty element.
    pugi::xml_node Referenced(pugi::xml_node element);
    /// An element's name without its prefix; empty for an element that is not SVG's.
    std::string_view NameOf(pugi::xml_node node) const;

    /// The style of an element from its attributes and the style sheets.
    SvgStyle StyleOf(pugi::xml_node element, const SvgStyle& parent, const SvgViewport& viewport);

    /// Calls \p parse, and makes an Error of what it finds wrong in an attribute.
    template <typename Parse>
    auto ParseAttribute(pugi::xml_node element, const char* attribute, Parse parse) const
    {
        try
        {
            return parse(std::string_view(element.attribute(attribute).value()));
        }
        catch (const SvgSyntaxError& error)
        {
            FailAt(element, attribute, error);
        }
    }
    /// The length in an attribute, or \p missing when there is none.
    double LengthOf(pugi::xml_node element, const char* attribute, double whole,
                    double missing) const;
    /// The same for a length that must not be negative.
    double SizeOf(pugi::xml_node element, const char* attribute, double whole,
                  double missing) const;
    Affine TransformOf(pugi::xml_node element, const char* attribute) const;
    /// The four numbers of viewBox, the last two above 0; empty when there is none.
    std::vector<double> ViewBoxOf(pugi::xml_node element) const;

    /// Counts the reading of some bytes. A use element can have the same bytes read many times.
    void CountBytes(std::size_t count);

    /// "FILE: line 7: <path>", for errors.
    std::string PlaceOf(pugi::xml_node element) const;
    /// Adds a notice, unless there is one of the same element and problem.
    void AddNotice(pugi::xml_node element, const std::string& problem);
    std::vector<SvgNotice> TakeNotices() { return std::move(notices_); }

private:
    void Parse();
    void CollectLineEnds();
    void RefuseEntities() const;
    void CollectIdsAndSheets();
    std::size_t LineAt(std::ptrdiff_t offset) const;
    std::string FileLine(std::ptrdiff_t offset) const;
    [[noreturn]] void FailAt(pugi::xml_node element, const std::string& attribute,
                             const SvgSyntaxError& error) const;
    void ApplyDeclaration(pugi::xml_node element, SvgStyle& style, const SvgStyle& parent,
                          std::string_view property, std::string_view value,
                          const SvgViewport& viewport);

    std::string_view bytes_;
    std::string name_;
    std::vector<std::uint32_t> lineEnds_;  ///< the places of line feeds, in bytes
    pugi::xml_document xml_;
    pugi::xml_node root_;
    std::string prefix_;  ///< of SVG's elements, with its colon; usually empty
    std::unordered_map<std::string, pugi::xml_node> byId_;
    SvgStyleSheet sheet_;
    WorkLimit work_;
    std::vector<SvgNotice> notices_;
    std::set<std::pair<std::string, std::string>> noticed_;  ///< elements and problems
};

}  // namespace orvane::shapes
