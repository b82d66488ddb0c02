// SPDX-License-Identifier: MIT
#pragma once

#include "import3ds/ThreeDStudioObject.h"

#include <string>
#include <vector>

/// An import that keeps what it is told of the parts that are skipped.
class WatchedImport : public ThreeDStudioObject
{
public:
    std::vector<SkippedPart> skipped;

protected:
    void OnSkipped(const SkippedPart& part) override { skipped.push_back(part); }
};

std::string NameOfPart(const ThreeDStudioObject::SkippedPart& part);
std::string ReasonText(const ThreeDStudioObject::SkippedPart& part);

/// The place of the first part that is skipped because the file is cut off or damaged, and what is
/// wrong there; empty when nothing is.
std::string DamageText(const std::vector<ThreeDStudioObject::SkippedPart>& skipped);
