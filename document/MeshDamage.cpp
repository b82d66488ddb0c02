// SPDX-License-Identifier: MIT
#include "document/MeshDamage.h"

#include "import3ds/ChunkTable.h"

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
            return "the chunk ends past the end of its parent, " + parent;
        case Skip::Incomplete:
            return "the chunk is too short for the values that it must contain";
        case Skip::NoHeader:
            return "the next bytes in " + parent +
                   " are not the header of a chunk: the file is cut off or damaged";
        case Skip::Landscape:
            return "an object named Landscape ends the import of its editor data";
        case Skip::AfterFailure:
            return "an earlier chunk ended the import of " + parent;
        case Skip::NotUsed:
            break;
    }
    if (part.id == 0)
    {
        return "an import uses only the first value in " + parent;
    }
    const char* const unused = KindOfChunk(part.id).whySkipped;
    return unused != nullptr ? unused : "the chunk has no meaning inside " + parent;
}

std::string DamageText(const std::vector<SkippedPart>& skipped)
{
    for (const SkippedPart& part : skipped)
    {
        const std::string chunk =
            "chunk " + ChunkIdText(part.id) + " at byte " + std::to_string(part.start);
        switch (part.why)
        {
            case Skip::PastParent:
                return chunk + " ends at " + std::to_string(part.start + part.length) +
                       ", past its parent's end " + std::to_string(part.parentEnd);
            case Skip::Incomplete:
                return chunk + " is too short for the values that it must contain";
            case Skip::NoHeader:
                return "no chunk can be read at byte " + std::to_string(part.start) +
                       ", inside the chunk " + ChunkIdText(part.parent);
            default:
                break;
        }
    }
    return "";
}

}  // namespace orvane
