// SPDX-License-Identifier: MIT
#include "platform/posix/fonts/FontConfiguration.h"

namespace posix
{

std::shared_ptr<FcConfig> FontConfiguration::Get()
{
    const std::lock_guard lock(mutex_);
    return config_;
}

void FontConfiguration::Hold(FcConfig* config)
{
    std::shared_ptr<FcConfig> held;
    if (config != nullptr)
    {
        held.reset(config, FcConfigDestroy);
    }
    const std::lock_guard lock(mutex_);
    config_.swap(held);
}

FontConfiguration& TheFontConfiguration()
{
    // This object is emptied at the end but never destroyed, because static objects may look for
    // fonts while the process ends.
    static auto* const configuration = new FontConfiguration;
    static const struct AtExit
    {
        ~AtExit() { configuration->Drop(); }
    } atExit;
    return *configuration;
}

std::string PatternText(const FcPattern* pattern, const char* object, int n)
{
    FcChar8* value = nullptr;
    return FcPatternGetString(pattern, object, n, &value) == FcResultMatch
               ? reinterpret_cast<const char*>(value)
               : "";
}

std::string LastPatternName(const FcPattern* pattern, const char* object, const char* language)
{
    std::string last;
    std::string lastEnglish;
    FcChar8* value = nullptr;
    for (int n = 0; FcPatternGetString(pattern, object, n, &value) == FcResultMatch; ++n)
    {
        last = reinterpret_cast<const char*>(value);
        if (PatternText(pattern, language, n).starts_with("en"))
        {
            lastEnglish = last;
        }
    }
    return lastEnglish.empty() ? last : lastEnglish;
}

double PatternNumber(const FcPattern* pattern, const char* object, double otherwise)
{
    double value = otherwise;
    FcPatternGetDouble(pattern, object, 0, &value);
    return value;
}

int PatternInteger(const FcPattern* pattern, const char* object, int otherwise)
{
    int value = otherwise;
    FcPatternGetInteger(pattern, object, 0, &value);
    return value;
}

bool PatternFlag(const FcPattern* pattern, const char* object)
{
    FcBool value = FcFalse;
    FcPatternGetBool(pattern, object, 0, &value);
    return value != FcFalse;
}

}  // namespace posix
