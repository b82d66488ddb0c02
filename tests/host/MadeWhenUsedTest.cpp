// SPDX-License-Identifier: MIT
#include "host/MadeWhenUsed.h"

#include <gtest/gtest.h>

#include <atomic>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace
{

/// Counts how many there are.
struct Counted
{
    explicit Counted(int newValue = 7) : value(newValue) { ++count; }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;
    ~Counted() { --count; }

    int value;
    static std::atomic<int> count;
};
std::atomic<int> Counted::count = 0;

}  // namespace

TEST(MadeWhenUsed, IsNotThereUntilItIsNeeded)
{
    {
        const MadeWhenUsed<Counted> object;
        EXPECT_EQ(object.IfMade(), nullptr);
        EXPECT_EQ(Counted::count, 0);
        EXPECT_EQ(object.Get().value, 7);
        EXPECT_EQ(object.IfMade(), &object.Get());
        EXPECT_EQ(Counted::count, 1);
    }
    EXPECT_EQ(Counted::count, 0);
}

TEST(MadeWhenUsed, IsMadeOnce)
{
    MadeWhenUsed<Counted> object;
    Counted& made = object.Get([] { return Counted(3); });
    EXPECT_EQ(made.value, 3);
    made.value = 4;
    EXPECT_EQ(&object.Get([] { return Counted(5); }), &made);
    EXPECT_EQ(object.Get().value, 4);
    EXPECT_EQ(Counted::count, 1);
}

TEST(MadeWhenUsed, ThreadsThatNeedItAtOnceGetTheSame)
{
    constexpr int turns = 200;
    constexpr int threadCount = 4;
    for (int turn = 0; turn < turns; ++turn)
    {
        const MadeWhenUsed<Counted> object;
        std::atomic<int> waiting = threadCount;
        std::vector<const Counted*> seen(threadCount);
        std::vector<std::thread> threads;
        threads.reserve(threadCount);
        for (const Counted*& mine : seen)
        {
            threads.emplace_back([&object, &waiting, &mine] {
                --waiting;
                while (waiting != 0)
                {
                    std::this_thread::yield();
                }
                mine = &object.Get();
            });
        }
        for (std::thread& thread : threads)
        {
            thread.join();
        }
        EXPECT_EQ(std::set<const Counted*>(seen.begin(), seen.end()).size(), 1u);
        EXPECT_EQ(Counted::count, 1);
    }
}

TEST(MadeWhenUsed, ReadingMakesNone)
{
    const MadeWhenUsed<std::string> text;
    const MadeWhenUsed<std::string> other;
    EXPECT_EQ(text.Read(), "");
    EXPECT_EQ(text.IfMade(), nullptr);
    other.Get() = "made";
    EXPECT_EQ(other.Read(), "made");
    EXPECT_EQ(text.Read(), "");
}

TEST(MadeWhenUsed, CopiesHaveAnObjectOfTheirOwnWhereTheOriginalHasOne)
{
    MadeWhenUsed<std::string> text;
    const MadeWhenUsed<std::string> none(text);
    EXPECT_EQ(none.IfMade(), nullptr);
    text.Get() = "first";
    const MadeWhenUsed<std::string> copy(text);
    MadeWhenUsed<std::string> assigned;
    assigned = text;
    text.Get() = "second";
    EXPECT_EQ(copy.Read(), "first");
    EXPECT_EQ(assigned.Read(), "first");
    EXPECT_EQ(none.Read(), "");
    MadeWhenUsed<std::string>& itself = text;
    text = itself;
    EXPECT_EQ(text.Read(), "second");
}

TEST(MadeWhenUsed, AnObjectStaysWhereItIsWhenAnotherIsAssigned)
{
    MadeWhenUsed<std::string> text;
    const std::string& object = text.Get();
    MadeWhenUsed<std::string> other;
    other.Get() = "other";
    text = other;
    EXPECT_EQ(object, "other");
    text = MadeWhenUsed<std::string>();
    EXPECT_EQ(object, "");
    EXPECT_EQ(text.IfMade(), &object);
}

TEST(MadeWhenUsed, OneThatIsForgottenCanBeMadeAnew)
{
    MadeWhenUsed<Counted> object;
    object.Forget();
    object.Get().value = 8;
    object.Forget();
    EXPECT_EQ(object.IfMade(), nullptr);
    EXPECT_EQ(Counted::count, 0);
    EXPECT_EQ(object.Get().value, 7);
}
