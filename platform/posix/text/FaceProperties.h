// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// What HarfBuzz tells of a face: names, axes, instances, measures and colours.

#include "platform/ShapingFace.h"

#include <hb-ot.h>
#include <hb.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace posix
{

/// Calls a function of HarfBuzz that gives up a reference when the owner ends.
template <auto destroy>
struct HbDestroy
{
    template <typename Object>
    void operator()(Object* object) const
    {
        destroy(object);
    }
};
using HbBlob = std::unique_ptr<hb_blob_t, HbDestroy<hb_blob_destroy>>;
using HbFace = std::unique_ptr<hb_face_t, HbDestroy<hb_face_destroy>>;
using HbFont = std::unique_ptr<hb_font_t, HbDestroy<hb_font_destroy>>;
using HbSet = std::unique_ptr<hb_set_t, HbDestroy<hb_set_destroy>>;
using HbBuffer = std::unique_ptr<hb_buffer_t, HbDestroy<hb_buffer_destroy>>;

/// A name in English or, without one, in the language that HarfBuzz lists first.
std::string FaceName(hb_face_t* face, hb_ot_name_id_t name);

std::vector<orvane::FaceAxis> FaceAxes(hb_face_t* face);
std::vector<orvane::FaceInstance> FaceInstances(hb_face_t* face,
                                                const std::vector<orvane::FaceAxis>& axes);

/// The tags of the features of a face's GSUB and GPOS tables, sorted, each once.
std::vector<std::string> FaceFeatures(hb_face_t* face);

/// The measures of a font whose scale is its design units.
orvane::FaceMetrics MeasuresOf(hb_font_t* font);

/// As ShapingFace::ColorLayers.
std::vector<orvane::ColorLayer> ColorLayersOf(hb_face_t* face, std::uint32_t glyph);

/// The value of each axis: that of a named instance (counted from 1, or 0 for the default), changed
/// by the values that \p wanted names.
/// \param notices as for ShapingFace::Open
std::vector<orvane::AxisValue> AxisSettings(const std::vector<orvane::FaceAxis>& axes,
                                            const std::vector<orvane::FaceInstance>& instances,
                                            int instance,
                                            const std::vector<orvane::AxisValue>& wanted,
                                            std::vector<std::string>* notices);

}  // namespace posix
