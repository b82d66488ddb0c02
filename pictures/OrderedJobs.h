// SPDX-License-Identifier: MIT
#pragma once

#include "pictures/PictureWriter.h"

#include <functional>
#include <future>
#include <queue>

namespace orvane
{

/// Runs jobs on several threads and hands their results on in the order in which the jobs were
/// added. Every function throws what a job or the taker has thrown.
class OrderedJobs
{
public:
    struct Result
    {
        Bytes bytes;
        std::uint32_t checkSum = 0;
        std::size_t inputBytes = 0;
    };
    using Job = std::function<Result()>;
    using Taker = std::function<void(const Result& result)>;

    /// \param threads that run jobs at the same time; 0 for one more than there are cores, so that
    /// no core waits while this object waits for the oldest job \param take called on the thread
    /// that adds jobs
    OrderedJobs(int threads, Taker take);
    ~OrderedJobs();
    OrderedJobs(const OrderedJobs&) = delete;
    OrderedJobs& operator=(const OrderedJobs&) = delete;

    /// Waits for the oldest job when all threads have one, so that the memory for jobs is limited.
    void Add(Job job);
    /// Waits for all jobs.
    void Finish();

private:
    void TakeOldest();

    std::size_t maxUnfinished_;
    Taker take_;
    std::queue<std::future<Result>> unfinished_;
};

}  // namespace orvane
