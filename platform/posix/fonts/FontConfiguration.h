// SPDX-License-Identifier: MIT
#pragma once

#include <fontconfig/fontconfig.h>

#include <memory>
#include <mutex>
#include <string>

namespace posix
{

/// The font configuration in use. It is freed when the process ends: its parts refer to each other
/// by offsets, which a leak checker does not recognise as pointers.
class FontConfiguration
{
public:
    /// Reads the configuration again, and the fonts that it names.
    void Load() { Hold(FcInitLoadConfigAndFonts()); }
    void Drop() { Hold(nullptr); }

    /// Returns the configuration that was read last, shared so that it stays valid when another
    /// thread reloads. Null when none was read, and while the process ends.
    std::shared_ptr<FcConfig> Get();

private:
    void Hold(FcConfig* config);

    std::mutex mutex_;
    std::shared_ptr<FcConfig> config_;
};

FontConfiguration& TheFontConfiguration();

/// The n-th text of a property; empty when there is none.
std::string PatternText(const FcPattern* pattern, const char* object, int n = 0);
/// The last English value of a name or, without one, the last value. fontconfig lists typographic
/// families and styles first and the plain names last.
std::string LastPatternName(const FcPattern* pattern, const char* object, const char* language);
double PatternNumber(const FcPattern* pattern, const char* object, double otherwise);
int PatternInteger(const FcPattern* pattern, const char* object, int otherwise);
bool PatternFlag(const FcPattern* pattern, const char* object);

}  // namespace posix
