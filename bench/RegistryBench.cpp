// SPDX-License-Identifier: MIT
// Times the making of the font registry in a new process against fc-list, fontconfig's own program
// for listing fonts. With FONTCONFIG_FILE, other fonts than the installed ones are measured.

#include "bench/Command.h"
#include "bench/Summary.h"
#include "orvane.h"

#include <cstdio>

namespace
{

void Measure()
{
    // The registry of this process may be filled already, so the tool is started each time.
    const Paired times = TimeInTurns(
        7, [&] { RunCommand(ORVANE_TOOL " fonts > /dev/null"); },
        [&] { RunCommand("fc-list > /dev/null"); });
    CreateFontList(0, nullptr);
    char figure[100];
    std::snprintf(figure, sizeof figure, "%.3f s, %.2f x fc-list (%.3f s), %d faces", times.ours,
                  times.ratio, times.floor, GetFontList()->GetCount());
    AddSummary("font registry, in a fresh process", figure);
}
const SummaryPart part("registry", Measure);

}  // namespace
