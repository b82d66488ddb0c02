// SPDX-License-Identifier: MIT
#pragma once

#include "import3ds/ThreeDStudioObject.h"
#include "platform/Export.h"

#include <string>
#include <vector>

namespace orvane
{

/// An import that keeps a list of the parts of the file that it skipped.
class ORVANE_API WatchedImport : public ThreeDStudioObject
{
public:
    std::vector<SkippedPart> skipped;

protected:
    void OnSkipped(const SkippedPart& part) override { skipped.push_back(part); }
};

/// The part's id and name, as "0x4110 vertex list".
ORVANE_API std::string NameOfPart(const ThreeDStudioObject::SkippedPart& part);

/// Why an import skips the part.
ORVANE_API std::string ReasonText(const ThreeDStudioObject::SkippedPart& part);

/// Describes the first part that was skipped because the file is cut off or damaged, as "chunk
/// 0x4110 at byte 1034 ends at 2210, past its parent's end 1998". Empty when the file is whole.
ORVANE_API std::string DamageText(const std::vector<ThreeDStudioObject::SkippedPart>& skipped);

}  // namespace orvane
