// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <string>

namespace orvane
{

/// Whether standard error is a terminal. Progress is shown only on a terminal.
bool IsErrorTerminal();

/// Replaces the progress line on the terminal. Does nothing when standard error is no terminal. The
/// text is made safe to print, because it may contain the name of a font.
void ShowProgress(const std::string& text);

/// Wipes the progress line.
void ClearProgress();

/// Writes a message to standard error, on one line that begins with the program's name. The message
/// is made safe to print, because it may quote a file.
/// \param hint a text of the tool's own, which follows on a line of its own; may be empty
void Say(const std::string& message, const std::string& hint = {});

/// Converts to a function that shows a text about each loaded font in the progress line. The line
/// is wiped at the end of this object's life. Shows nothing when standard error is no terminal.
class FontProgress
{
public:
    FontProgress() = default;
    ~FontProgress() { ClearProgress(); }
    FontProgress(const FontProgress&) = delete;
    FontProgress& operator=(const FontProgress&) = delete;

    operator std::function<void(const std::string&)>() const;
};

/// A progress bar with the remaining time. It is wiped at the end of this object's life.
class ProgressBar
{
public:
    explicit ProgressBar(std::string label);
    ~ProgressBar() { ClearProgress(); }
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    /// \param share of the whole that is done, 0 to 1.
    void Show(double share);

private:
    using Clock = std::chrono::steady_clock;

    std::string label_;
    Clock::time_point start_;
    Clock::time_point shown_;
};

}  // namespace orvane
