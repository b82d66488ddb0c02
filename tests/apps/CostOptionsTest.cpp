// SPDX-License-Identifier: MIT
#include "apps/cli/commands/CostOptions.h"

#include "platform/Limits.h"

#include <CLI/CLI.hpp>
#include <gtest/gtest.h>

#include <string>

namespace
{

/// What is said against an option of a command; empty when it is taken.
std::string Refusal(const std::string& option, const std::string& value)
{
    CLI::App command;
    orvane::CostLimits limits;
    orvane::AddCostOptions(command, limits);
    try
    {
        command.parse(option + " " + value);
    }
    catch (const CLI::ParseError& error)
    {
        return error.what();
    }
    return "";
}

TEST(CostOptions, SecondsAreBetweenAMillisecondAndABillion)
{
    EXPECT_EQ(orvane::limits::minSeconds, 0.001);
    EXPECT_EQ(orvane::limits::maxSeconds, 1e9);
    for (const char* const seconds : {"0.001", "1e-3", "1000000000"})
    {
        EXPECT_EQ(Refusal("--max-seconds", seconds), "") << seconds;
    }
    for (const char* const seconds : {"0.0009", "1000000001", "0", "nan", "inf", "1s"})
    {
        EXPECT_NE(Refusal("--max-seconds", seconds), "") << seconds;
    }
    EXPECT_NE(Refusal("--max-seconds", "0.0009").find("a number from 0.001 to 1e+09"),
              std::string::npos);
}

TEST(CostOptions, MemoryIsBetween1MiBAndAPetabyte)
{
    EXPECT_EQ(orvane::limits::maxMebibytes, 1000000000);
    for (const char* const mebibytes : {"1", "1000000000"})
    {
        EXPECT_EQ(Refusal("--max-memory", mebibytes), "") << mebibytes;
    }
    for (const char* const mebibytes : {"0", "1000000001", "1.5", "-1"})
    {
        EXPECT_NE(Refusal("--max-memory", mebibytes), "") << mebibytes;
    }
    EXPECT_NE(Refusal("--max-memory", "0").find("a whole number from 1 to 1000000000"),
              std::string::npos);
}

}  // namespace
