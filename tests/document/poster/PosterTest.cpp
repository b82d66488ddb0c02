// SPDX-License-Identifier: MIT
#include "document/poster/Poster.h"

#include "orvane/Error.h"
#include "platform/Limits.h"

#include <gtest/gtest.h>

#include <functional>

namespace
{

using orvane::PosterSettings;
using orvane::Size;

/// What is said against a picture with these settings; empty when nothing is.
std::string Refusal(const std::function<void(PosterSettings&)>& change)
{
    PosterSettings settings("x.png", {}, {16, 9});
    change(settings);
    try
    {
        orvane::CheckPoster(settings);
    }
    catch (const orvane::Error& error)
    {
        return error.what();
    }
    return "";
}

TEST(Poster, ASideHasAtMost100000Pixels)
{
    EXPECT_EQ(orvane::limits::maxPictureSide, 100000);
    const auto refusal = [](const Size& size) {
        return Refusal([&](PosterSettings& settings) { settings.size = size; });
    };
    EXPECT_EQ(refusal({100000, 100000}), "");
    EXPECT_EQ(refusal({100001, 1}), "width: 1 to 100000, found 100001");
    EXPECT_EQ(refusal({1, 100001}), "height: 1 to 100000, found 100001");
    EXPECT_EQ(refusal({0, 1}), "width: 1 to 100000, found 0");
}

TEST(Poster, PixelsAreLimitedToTheNumberThatIsAllowed)
{
    const auto refusal = [](std::uint64_t maxPixels) {
        return Refusal([&](PosterSettings& settings) { settings.options.maxPixels = maxPixels; });
    };
    EXPECT_EQ(refusal(144), "");
    EXPECT_EQ(refusal(143), "x.png: 16 x 9 are 144 pixels, and maxPixels allows 143");
}

TEST(Poster, ATimeIsAtLeastAMillisecond)
{
    const auto refusal = [](double seconds) {
        return Refusal([&](PosterSettings& settings) { settings.options.maxSeconds = seconds; });
    };
    EXPECT_EQ(refusal(orvane::limits::minSeconds), "");
    EXPECT_EQ(refusal(0.001), "");
    EXPECT_NE(refusal(0.0009).find("maxSeconds: 0.001 to "), std::string::npos);
    EXPECT_NE(refusal(0.0009).find(", found 0.0009"), std::string::npos);
}

}  // namespace
