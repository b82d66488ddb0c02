// SPDX-License-Identifier: MIT
#include "apps/cli/Terminal.h"

#include "apps/cli/PrintableText.h"
#include "platform/Console.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>

namespace orvane
{

namespace
{

/// "1:05", or "2:01:05" from an hour on.
std::string FormatTime(double seconds)
{
    constexpr double longest = 359999;  // seconds, shown as "99:59:59"
    const int whole = static_cast<int>(std::ceil(std::min(seconds, longest)));
    char text[32];
    if (whole < 3600)
    {
        std::snprintf(text, sizeof text, "%d:%02d", whole / 60, whole % 60);
    }
    else
    {
        std::snprintf(text, sizeof text, "%d:%02d:%02d", whole / 3600, whole / 60 % 60, whole % 60);
    }
    return text;
}

}  // namespace

bool IsErrorTerminal()
{
    static const bool terminal = IsErrorOutputTerminal();
    return terminal;
}

void ShowProgress(const std::string& text)
{
    if (IsErrorTerminal())
    {
        std::fprintf(stderr, "\r\033[K%s", FirstBytes(Printable(text), 78).c_str());
        std::fflush(stderr);
    }
}

void ClearProgress()
{
    ShowProgress("");
}

void Say(const std::string& message, const std::string& hint)
{
    ClearProgress();
    std::fprintf(stderr, "orvane: %s\n%s%s", Printable(message).c_str(), hint.c_str(),
                 hint.empty() ? "" : "\n");
}

FontProgress::operator std::function<void(const std::string&)>() const
{
    return IsErrorTerminal() ? ShowProgress : std::function<void(const std::string&)>();
}

ProgressBar::ProgressBar(std::string label) : label_(std::move(label)), start_(Clock::now()) {}

void ProgressBar::Show(double share)
{
    constexpr int width = 30;
    constexpr std::chrono::milliseconds pause(100);  // between two updates
    const Clock::time_point now = Clock::now();
    if (!IsErrorTerminal() || (share < 1 && now - shown_ < pause))
    {
        return;
    }
    shown_ = now;
    const int full = static_cast<int>(share * width);
    std::string text = label_ + " [" + std::string(full, '#') + std::string(width - full, '.') +
                       "] " + std::to_string(static_cast<int>(share * 100)) + " %";
    const double seconds = std::chrono::duration<double>(now - start_).count();
    if (share > 0 && seconds > 1)
    {
        text += ", " + FormatTime(seconds / share - seconds) + " left";
    }
    ShowProgress(text);
}

}  // namespace orvane
