// SPDX-License-Identifier: MIT
// Each operation is tried with its first call of a kind refused, with its second call refused, and
// so on until it makes fewer calls. Each attempt either fails or has the result of an undisturbed
// one; it leaves nothing behind, and the next attempt succeeds.
//
// fault_tests --gtest_filter=Faults.Draw        all kinds of one operation
// ORVANE_FAULT_KIND=memory fault_tests          one kind
// ORVANE_FAULT_FIRST=17 fault_tests             from the 17th call on
// ORVANE_FAULT_TRACE=1 fault_tests              shows the functions around each refused call

#include "extrude/Library.h"
#include "extrude/OrvFontList.h"
#include "platform/Fonts.h"
#include "platform/Messages.h"
#include "tests/reliability/Operations.h"
#include "tests/reliability/Refusals.h"
#include "tests/support/Allocations.h"
#include "tests/support/PrivateFonts.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <typeinfo>

namespace
{

constexpr long mostCalls = 100000;  // more would be a loop without an end
// An attempt that does not end, because a lock is held, for example, is ended after this time, so
// that the message names the refused call. Attempts take less than a second.
constexpr unsigned mostSeconds = 100;
constexpr int mostMessages = 20;  // for one kind of calls
constexpr int roundsToFillCaches = 20;

/// What is going on, for the case that it ends the process.
char current[200];

void Say(int signal)
{
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, current, strlen(current));
    std::signal(signal, SIG_DFL);
    raise(signal);
}

/// The messages that the library has shown. A message tells the user of a failure, as an exception
/// tells the caller.
std::atomic<int> messagesShown = 0;

int CountMessage(HWND, LPCSTR, LPCSTR, UINT)
{
    ++messagesShown;
    return IDOK;
}

long CountOf(const char* folder)
{
    return std::distance(std::filesystem::directory_iterator(folder),
                         std::filesystem::directory_iterator());
}

/// What a process must not have more of after an attempt than before.
struct Holdings
{
    long descriptors = CountOf("/proc/self/fd");
    long threads = CountOf("/proc/self/task");
    long blocks = LiveBlocks();

    bool operator==(const Holdings&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const Holdings& holdings)
{
    return stream << holdings.descriptors << " descriptors, " << holdings.threads << " threads, "
                  << holdings.blocks << " blocks of memory";
}

/// Where two results differ.
std::string Difference(const std::string& expected, const std::string& found)
{
    const auto [a, b] = std::mismatch(expected.begin(), expected.end(), found.begin(), found.end());
    return std::to_string(expected.size()) + " and " + std::to_string(found.size()) +
           " bytes, which differ from byte " + std::to_string(a - expected.begin()) + " on";
}

/// Whether the reason of a refusal lasts: memory, disks and tables of files stay full. A place of a
/// disk that cannot be read or written is no reason for other places.
bool MayLast(CallKind kind)
{
    return kind != CallKind::Read && kind != CallKind::Flush && kind != CallKind::Rename;
}

long refusedInAll = 0;

class Trial
{
public:
    Trial(const std::string& name, Operation& operation, CallKind kind, Extent extent)
        : name_(name), operation_(operation), kind_(kind), extent_(extent)
    {}

    void Run()
    {
        Describe(0);
        operation_.Prepare();
        operation_.Attempt();
        expected_ = operation_.State();
        operation_.Prepare();
        before_ = operation_.State();
        operation_.Attempt();
        EXPECT_EQ(operation_.State(), expected_);
        const char* const first = std::getenv("ORVANE_FAULT_FIRST");
        long number = first != nullptr ? std::atol(first) : 1;
        while (number <= mostCalls && messages_ < mostMessages && Refuse(number))
        {
            ++number;
        }
        EXPECT_LE(number, mostCalls) << current;
        alarm(0);
        refusedInAll += refused_;
        std::cout << name_ << ": " << NameOf(kind_)
                  << (extent_ == Extent::One ? "" : " from there on") << ": " << number - 1
                  << " calls; " << failed_ << " attempts failed, " << number - 1 - failed_
                  << " had the result in another way\n";
    }

private:
    void Describe(long number)
    {
        std::snprintf(current, sizeof current, "%s: call %ld for %s%s is refused\n", name_.c_str(),
                      number, NameOf(kind_), extent_ == Extent::One ? "" : " and all after it");
    }

    /// Keeps the text until the attempt is over, because a message takes memory.
    void Complain(const std::string& text)
    {
        const std::size_t used = strlen(complaint_);
        std::snprintf(complaint_ + used, sizeof complaint_ - used, "%s\n", text.c_str());
    }

    /// \return whether the operation made that many calls
    bool Refuse(long number)
    {
        Describe(number);
        complaint_[0] = '\0';
        const Holdings before;
        const bool isMade = RefuseWatched(number);
        failed_ += isMade && hasFailed_ ? 1 : 0;
        if (!(Holdings() == before) && isMade)
        {
            LookForLeak(number);
        }
        if (complaint_[0] != '\0')
        {
            ++messages_;
            ADD_FAILURE() << current << complaint_;
        }
        return isMade;
    }

    /// A cache that the attempt has filled does not grow for ever.
    void LookForLeak(long number)
    {
        const long refused = refused_;
        constexpr int rounds = 5;
        char complaint[sizeof complaint_];
        std::memcpy(complaint, complaint_, sizeof complaint);
        for (int i = 0; i < roundsToFillCaches; ++i)
        {
            RefuseWatched(number);
        }
        const Holdings before;
        for (int i = 0; i < rounds; ++i)
        {
            RefuseWatched(number);
        }
        const Holdings after;
        std::memcpy(complaint_, complaint, sizeof complaint);
        refused_ = refused;  // these calls were counted before
        if (after.descriptors >= before.descriptors + rounds ||
            after.threads >= before.threads + rounds ||
            (after.blocks >= before.blocks + rounds && !operation_.MayLoseMemory()))
        {
            Complain(testing::PrintToString(before) + " before, " + testing::PrintToString(after) +
                     " after " + std::to_string(rounds) + " attempts");
        }
    }

    bool RefuseWatched(long number)
    {
        alarm(mostSeconds);
        operation_.Prepare();
        messagesShown = 0;
        char failureText[300] = {};  // no memory can be had while calls are refused
        long refused = 0;
        {
            const Refusals refusals(kind_, number, extent_);
            try
            {
                operation_.Attempt();
            }
            catch (const std::exception& error)
            {
                std::snprintf(failureText, sizeof failureText, "%s: %s", typeid(error).name(),
                              error.what());
            }
            refused = Refusals::Refused();
        }
        std::string failure = failureText;
        const bool isReturned = failure.empty();
        failure += messagesShown == 0 ? "" : " a message";
        refused_ += refused;
        const std::string state = operation_.State();
        if (refused == 0)
        {
            if (!failure.empty() || state != expected_)
            {
                Complain("nothing was refused, but " + failure + Difference(expected_, state));
            }
            return false;
        }
        hasFailed_ = !failure.empty();
        if (failure.empty() && state != expected_)
        {
            Complain("success with another result: " + Difference(expected_, state));
        }
        if (!isReturned && state != before_ && state != expected_)
        {
            Complain("failure (" + failure + ") with a change: " + Difference(before_, state));
        }
        AttemptAgain(failure);
        return true;
    }

    void AttemptAgain(const std::string& failure)
    {
        try
        {
            if (failure.empty())
            {
                operation_.Prepare();
            }
            operation_.Attempt();
            const std::string next = operation_.State();
            if (next != expected_)
            {
                Complain("(" + failure +
                         ") the next attempt has another result: " + Difference(expected_, next));
            }
        }
        catch (const std::exception& error)
        {
            Complain("(" + failure + ") the next attempt fails: " + error.what());
            operation_.Prepare();
            operation_.Attempt();
        }
    }

    std::string name_;
    Operation& operation_;
    CallKind kind_;
    Extent extent_;
    std::string before_;
    std::string expected_;
    long refused_ = 0;
    long failed_ = 0;
    bool hasFailed_ = false;  // the last attempt
    int messages_ = 0;
    char complaint_[2000] = {};
};

class Faults : public testing::Test
{
public:
    explicit Faults(NamedOperation operation) : operation_(std::move(operation)) {}

    void TestBody() override
    {
        const char* const only = std::getenv("ORVANE_FAULT_KIND");
        const PrivateFonts fonts({ORVANE_TEST_DATA "/EdgeTest.ttf"});
        const std::unique_ptr<Operation> operation = operation_.make();
        // Caches are full after some rounds: FreeType's faces, for example, of which 16 stay open.
        for (int i = 0; i < roundsToFillCaches; ++i)
        {
            operation->Prepare();
            operation->Attempt();
        }
        for (const CallKind kind : callKinds)
        {
            if (only == nullptr || std::string(NameOf(kind)) == only)
            {
                Trial(operation_.name, *operation, kind, Extent::One).Run();
                if (MayLast(kind))
                {
                    Trial(operation_.name, *operation, kind, Extent::AllFromThere).Run();
                }
            }
        }
    }

private:
    NamedOperation operation_;
};

// A bad block of the disk under one font must not hide the others.
TEST(FontsOnABadDisk, AreLeftOutOfTheRegistryUntilTheyCanBeRead)
{
    const PrivateFonts fonts({ORVANE_TEST_DATA "/EdgeTest.ttf"});
    DetachLibrary();
    AttachLibrary();
    ReloadFonts();
    {
        const Refusals reads(CallKind::Read, 1, Extent::AllFromThere);
        EXPECT_EQ(CreateFontList(0, nullptr), 1);
        EXPECT_GT(Refusals::Refused(), 0);
    }
    EXPECT_EQ(GetFontList()->GetCount(), 0);
    EXPECT_EQ(CreateFontList(0, nullptr), 1);
    EXPECT_EQ(GetFontList()->GetCount(), 1);
}

class Total : public testing::Environment
{
    void TearDown() override { std::cout << refusedInAll << " calls were refused\n"; }
};

}  // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    testing::AddGlobalTestEnvironment(new Total);
    for (const NamedOperation& operation : Operations())
    {
        testing::RegisterTest("Faults", operation.name, nullptr, nullptr, __FILE__, __LINE__,
                              [operation]() -> testing::Test* { return new Faults(operation); });
    }
    SetMessageBoxHandler(CountMessage);
    for (const int signal : {SIGABRT, SIGALRM, SIGSEGV})
    {
        std::signal(signal, Say);
    }
    return RUN_ALL_TESTS();
}
