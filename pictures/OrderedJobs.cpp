// SPDX-License-Identifier: MIT
#include "pictures/OrderedJobs.h"

#include <thread>
#include <utility>

namespace orvane
{

OrderedJobs::OrderedJobs(int threads, Taker take)
    : maxUnfinished_(threads != 0 ? static_cast<std::size_t>(threads)
                                  : std::thread::hardware_concurrency() + std::size_t{1}),
      take_(std::move(take))
{}

OrderedJobs::~OrderedJobs()
{
    for (; !unfinished_.empty(); unfinished_.pop())
    {
        unfinished_.front().wait();
    }
}

void OrderedJobs::Add(Job job)
{
    if (unfinished_.size() == maxUnfinished_)
    {
        TakeOldest();
    }
    // When the system refuses another thread, this thread runs the job when its result is needed.
    unfinished_.push(std::async(std::launch::async | std::launch::deferred, std::move(job)));
}

void OrderedJobs::Finish()
{
    while (!unfinished_.empty())
    {
        TakeOldest();
    }
}

void OrderedJobs::TakeOldest()
{
    std::future<Result> oldest = std::move(unfinished_.front());
    unfinished_.pop();
    take_(oldest.get());
}

}  // namespace orvane
