// SPDX-License-Identifier: MIT
#pragma once

#include "pictures/PictureWriter.h"

#include <lcms2.h>

#include <algorithm>

/// The bytes of a profile, which is closed.
inline orvane::Bytes BytesOf(cmsHPROFILE profile)
{
    cmsUInt32Number count = 0;
    cmsSaveProfileToMem(profile, nullptr, &count);
    orvane::Bytes bytes(count);
    cmsSaveProfileToMem(profile, bytes.data(), &count);
    cmsCloseProfile(profile);
    return bytes;
}

/// The colours of sRGB without a tone curve: half of a channel is half of the light.
inline orvane::Bytes MakeLinearProfile()
{
    const cmsCIExyY white = {0.3127, 0.3290, 1};
    const cmsCIExyYTRIPLE primaries = {{0.64, 0.33, 1}, {0.30, 0.60, 1}, {0.15, 0.06, 1}};
    cmsToneCurve* const line = cmsBuildGamma(nullptr, 1);
    cmsToneCurve* const lines[] = {line, line, line};
    cmsHPROFILE profile = cmsCreateRGBProfile(&white, &primaries, lines);
    cmsFreeToneCurve(line);
    return BytesOf(profile);
}

/// A profile of four inks for tests. From colour to inks, only black is used: as much as the colour
/// is darker than white. From inks to colour, the other inks count as nothing.
inline orvane::Bytes MakeInkProfile()
{
    constexpr unsigned white = 0xFF00;  // the lightness of white in a profile of version 2
    cmsHPROFILE profile = cmsCreateProfilePlaceholder(nullptr);
    cmsSetProfileVersion(profile, 2.1);
    cmsSetDeviceClass(profile, cmsSigOutputClass);
    cmsSetColorSpace(profile, cmsSigCmykData);
    cmsSetPCS(profile, cmsSigLabData);
    const auto add = [profile](cmsTagSignature tag, cmsUInt32Number in, cmsUInt32Number out,
                               cmsSAMPLER16 sampler) {
        cmsPipeline* const pipeline = cmsPipelineAlloc(nullptr, in, out);
        cmsStage* const table = cmsStageAllocCLut16bit(nullptr, 5, in, out, nullptr);
        cmsStageSampleCLut16bit(table, sampler, nullptr, 0);
        cmsPipelineInsertStage(pipeline, cmsAT_BEGIN, table);
        cmsWriteTag(profile, tag, pipeline);
        cmsPipelineFree(pipeline);
    };
    add(cmsSigBToA0Tag, 3, 4, [](const cmsUInt16Number* lab, cmsUInt16Number* inks, void*) {
        inks[0] = inks[1] = inks[2] = 0;
        inks[3] = static_cast<cmsUInt16Number>(65535 - std::min(lab[0] * 65535U / white, 65535U));
        return 1;
    });
    add(cmsSigAToB0Tag, 4, 3, [](const cmsUInt16Number* inks, cmsUInt16Number* lab, void*) {
        lab[0] = static_cast<cmsUInt16Number>((65535U - inks[3]) * white / 65535U);
        lab[1] = lab[2] = 0x8000;  // neither red nor green, neither yellow nor blue
        return 1;
    });
    return BytesOf(profile);
}
