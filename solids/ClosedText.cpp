// SPDX-License-Identifier: MIT
#include "solids/ClosedText.h"

#include "solids/OrvProfileString.h"

#include <algorithm>
#include <cmath>

namespace orvane
{

bool IsClosedText(const OrvFontString& text)
{
    const auto* const profiled = dynamic_cast<const OrvProfileString*>(&text);
    return profiled != nullptr && profiled->HasProfile();
}

EdgeProfile ClosedProfileOf(const OrvFontString& text)
{
    const double width = std::min<double>(text.GetBevelDepth(), std::fabs(text.GetScale().z));
    const bool isRound = text.ShouldRoundEdges() != 0;
    if ((isRound || text.ShouldBevelEdges()) && std::fabs(width) > 0)
    {
        return NamedProfile(isRound ? "round" : "chamfer", width);
    }
    return EdgeProfile{{ProfileStep{}}};
}

std::unique_ptr<OrvProfileString> MakeClosedText(const OrvFontString& text)
{
    if (const auto* const other = dynamic_cast<const OrvProfileString*>(&text))
    {
        return other->CopyWithProfile(ClosedProfileOf(text));
    }
    auto closed = std::make_unique<OrvProfileString>();
    static_cast<OrvFontString&>(*closed) = text;
    closed->SetProfile(ClosedProfileOf(text));
    return closed;
}

}  // namespace orvane
