// SPDX-License-Identifier: MIT
#include "platform/posix/text/FaceProperties.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iterator>
#include <set>

namespace posix
{
namespace
{

std::string TagText(hb_tag_t tag)
{
    char text[4];
    hb_tag_to_string(tag, text);
    return {text, sizeof text};
}

/// A number as people write it: "650", "87.5".
std::string NumberText(double number)
{
    char text[32];
    std::snprintf(text, sizeof text, "%g", number);
    return text;
}

}  // namespace

std::string FaceName(hb_face_t* face, hb_ot_name_id_t name)
{
    unsigned count = 0;
    const hb_ot_name_entry_t* const entries = hb_ot_name_list_names(face, &count);
    hb_language_t language = hb_language_from_string("en", -1);
    bool hasEnglish = false;
    const hb_ot_name_entry_t* first = nullptr;
    for (unsigned n = 0; n < count; ++n)
    {
        if (entries[n].name_id == name)
        {
            first = first == nullptr ? &entries[n] : first;
            hasEnglish = hasEnglish || entries[n].language == language;
        }
    }
    if (first == nullptr)
    {
        return {};
    }
    char text[1024];
    unsigned size = sizeof text;
    hb_ot_name_get_utf8(face, name, hasEnglish ? language : first->language, &size, text);
    return {text, std::min<std::size_t>(size, sizeof text - 1)};
}

std::vector<orvane::FaceAxis> FaceAxes(hb_face_t* face)
{
    std::vector<hb_ot_var_axis_info_t> infos(hb_ot_var_get_axis_count(face));
    auto count = static_cast<unsigned>(infos.size());
    hb_ot_var_get_axis_infos(face, 0, &count, infos.data());
    infos.resize(count);
    std::vector<orvane::FaceAxis> axes;
    axes.reserve(count);
    for (const hb_ot_var_axis_info_t& info : infos)
    {
        axes.push_back({TagText(info.tag), FaceName(face, info.name_id), info.min_value,
                        info.default_value, info.max_value});
    }
    return axes;
}

std::vector<orvane::FaceInstance> FaceInstances(hb_face_t* face,
                                                const std::vector<orvane::FaceAxis>& axes)
{
    std::vector<orvane::FaceInstance> instances(hb_ot_var_get_named_instance_count(face));
    std::vector<float> values(axes.size());
    for (unsigned n = 0; n < instances.size(); ++n)
    {
        instances[n].name = FaceName(face, hb_ot_var_named_instance_get_subfamily_name_id(face, n));
        auto count = static_cast<unsigned>(values.size());
        hb_ot_var_named_instance_get_design_coords(face, n, &count, values.data());
        for (std::size_t axis = 0; axis < std::min<std::size_t>(count, axes.size()); ++axis)
        {
            instances[n].axes.push_back({axes[axis].tag, values[axis]});
        }
    }
    return instances;
}

std::vector<std::string> FaceFeatures(hb_face_t* face)
{
    std::set<std::string> features;
    for (const hb_tag_t table : {HB_OT_TAG_GSUB, HB_OT_TAG_GPOS})
    {
        std::vector<hb_tag_t> tags(
            hb_ot_layout_table_get_feature_tags(face, table, 0, nullptr, nullptr));
        auto count = static_cast<unsigned>(tags.size());
        hb_ot_layout_table_get_feature_tags(face, table, 0, &count, tags.data());
        tags.resize(count);
        std::transform(tags.begin(), tags.end(), std::inserter(features, features.end()), TagText);
    }
    return {features.begin(), features.end()};
}

orvane::FaceMetrics MeasuresOf(hb_font_t* font)
{
    const unsigned unitsPerEm = std::max(hb_face_get_upem(hb_font_get_face(font)), 1U);
    const auto ems = [&](hb_position_t units) { return static_cast<double>(units) / unitsPerEm; };
    const auto measure = [&](hb_ot_metrics_tag_t tag) {
        hb_position_t units = 0;
        hb_ot_metrics_get_position_with_fallback(font, tag, &units);
        return ems(units);
    };
    hb_font_extents_t extents = {};
    hb_font_get_h_extents(font, &extents);
    orvane::FaceMetrics metrics;
    metrics.ascent = ems(extents.ascender);
    metrics.descent = -ems(extents.descender);
    metrics.lineGap = ems(extents.line_gap);
    metrics.capHeight = measure(HB_OT_METRICS_TAG_CAP_HEIGHT);
    metrics.xHeight = measure(HB_OT_METRICS_TAG_X_HEIGHT);
    metrics.unitsPerEm = static_cast<int>(unitsPerEm);
    return metrics;
}

std::vector<orvane::AxisValue> AxisSettings(const std::vector<orvane::FaceAxis>& axes,
                                            const std::vector<orvane::FaceInstance>& instances,
                                            int instance,
                                            const std::vector<orvane::AxisValue>& wanted,
                                            std::vector<std::string>* notices)
{
    const auto tell = [&](const std::string& notice) {
        if (notices != nullptr)
        {
            notices->push_back(notice);
        }
    };
    std::vector<orvane::AxisValue> settings;
    settings.reserve(axes.size());
    for (const orvane::FaceAxis& axis : axes)
    {
        settings.push_back({axis.tag, axis.normal});
    }
    if (instance > 0 && instance <= static_cast<int>(instances.size()))
    {
        const std::vector<orvane::AxisValue>& values =
            instances[static_cast<std::size_t>(instance) - 1].axes;
        std::copy_n(values.begin(), std::min(values.size(), settings.size()), settings.begin());
    }
    for (const orvane::AxisValue& value : wanted)
    {
        std::size_t n = 0;
        while (n < axes.size() && axes[n].tag != value.tag)
        {
            ++n;
        }
        if (n == axes.size())
        {
            tell("has no axis " + value.tag);
            continue;
        }
        const bool isNumber = !std::isnan(value.value);
        settings[n].value = isNumber
                                ? std::max(axes[n].minimum, std::min(value.value, axes[n].maximum))
                                : axes[n].normal;
        if (settings[n].value != value.value)
        {
            tell("axis " + value.tag + " is " + NumberText(settings[n].value) + ", because " +
                 NumberText(value.value) + " is not within " + NumberText(axes[n].minimum) +
                 " to " + NumberText(axes[n].maximum));
        }
    }
    return settings;
}

}  // namespace posix
