// SPDX-License-Identifier: MIT
#include "document/MeshDamage.h"

#include "import3ds/ChunkTable.h"

#include <algorithm>

namespace orvane
{

using Skip = ThreeDStudioObject::SkipReason;
using SkippedPart = ThreeDStudioObject::SkippedPart;

std::string NameOfPart(const SkippedPart& part)
{
    return part.id == 0 ? "rest of " + ChunkIdText(part.parent)
                        : ChunkIdText(part.id) + " " + KindOfChunk(part.id).name;
}

std::string ReasonText(const SkippedPart& part)
{
    const std::string parent = ChunkIdText(part.parent);
    switch (part.why)
    {
        case Skip::PastParent:
            return "it ends past the chunk " + parent + " that it is in";
        case Skip::Incomplete:
            return "it is shorter than what must be in it";
        case Skip::NoHeader:
            return "no chunk of " + parent + " can be read there: the file is cut off or damaged";
        case Skip::Landscape:
            return "an object of the name Landscape ends the import of its editor data";
        case Skip::AfterFailure:
            return "it comes behind what ended the import of " + parent;
        case Skip::NotUsed:
            break;
    }
    if (part.id == 0)
    {
        return "the first value in " + parent + " counts";
    }
    const char* const unused = KindOfChunk(part.id).whySkipped;
    return unused != nullptr ? unused : "it means nothing in " + parent;
}

std::string DamageText(const std::vector<SkippedPart>& skipped)
{
    const auto damaged = std::find_if(skipped.begin(), skipped.end(), [](const SkippedPart& part) {
        return part.why == Skip::PastParent || part.why == Skip::Incomplete ||
               part.why == Skip::NoHeader;
    });
    return damaged == skipped.end() ? ""
                                    : "byte " + std::to_string(damaged->start) + ": " +
                                          NameOfPart(*damaged) + ": " + ReasonText(*damaged);
}

}  // namespace orvane
