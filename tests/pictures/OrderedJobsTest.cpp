// SPDX-License-Identifier: MIT
#include "pictures/OrderedJobs.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <vector>

using orvane::OrderedJobs;

namespace
{

OrderedJobs::Result Numbered(std::uint32_t number)
{
    OrderedJobs::Result result;
    result.checkSum = number;
    return result;
}

}  // namespace

TEST(OrderedJobs, ResultsComeInTheOrderOfTheirJobs)
{
    std::vector<std::uint32_t> taken;
    OrderedJobs jobs(
        4, [&taken](const OrderedJobs::Result& result) { taken.push_back(result.checkSum); });
    std::vector<std::uint32_t> added;
    for (std::uint32_t i = 0; i < 100; ++i)
    {
        jobs.Add([i] { return Numbered(i); });
        added.push_back(i);
    }
    jobs.Finish();
    EXPECT_EQ(taken, added);
}

TEST(OrderedJobs, NoMoreJobsAreUnfinishedThanThereAreThreads)
{
    std::atomic<int> unfinished = 0;
    OrderedJobs jobs(3, [&unfinished](const OrderedJobs::Result&) { --unfinished; });
    for (int i = 0; i < 50; ++i)
    {
        ++unfinished;
        jobs.Add([] { return Numbered(0); });
        EXPECT_LE(unfinished, 3);
    }
    jobs.Finish();
    EXPECT_EQ(unfinished, 0);
}

TEST(OrderedJobs, TheExceptionOfAJobIsThrownAgain)
{
    OrderedJobs jobs(2, [](const OrderedJobs::Result&) {});
    jobs.Add([]() -> OrderedJobs::Result { throw std::runtime_error("no"); });
    EXPECT_THROW(jobs.Finish(), std::runtime_error);
}
