#include "platform/ManualMainQueue.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <thread>
#include <vector>

namespace tavrel {

namespace {

/// A queue and what ran on it, in order.
struct ManualMainQueueTest : testing::Test {
    MainQueue::Work note(std::string word)
    {
        return [this, word = std::move(word)] { ran.push_back(word); };
    }

    SimulatedClock clock;
    ManualMainQueue queue{clock};
    std::vector<std::string> ran;
};

using Words = std::vector<std::string>;

TEST_F(ManualMainQueueTest, RunsNothingByItself)
{
    queue.post(note("a"));
    queue.postAfter(0, note("b"));
    EXPECT_EQ(ran, Words{});
}

TEST_F(ManualMainQueueTest, RunsWorkInTheOrderOfPosting)
{
    queue.post([this] {
        ran.push_back("a");
        queue.post(note("c"));
    });
    queue.post(note("b"));
    queue.run();
    EXPECT_EQ(ran, (Words{"a", "b", "c"}));
}

TEST_F(ManualMainQueueTest, RunsDelayedWorkInTheOrderOfItsTimes)
{
    queue.postAfter(1.0, note("1.0"));
    queue.postAfter(0.35, note("0.35"));
    queue.postAfter(0.5, note("0.5 first"));
    queue.postAfter(0.5, note("0.5 second"));
    queue.advance(0.25);
    EXPECT_EQ(ran, Words{});
    queue.advance(0.25);
    EXPECT_EQ(ran, (Words{"0.35", "0.5 first", "0.5 second"}));
    queue.advance(0.499);
    EXPECT_EQ(ran.size(), 3U);
    queue.advance(0.001);
    EXPECT_EQ(ran.back(), "1.0");
}

TEST_F(ManualMainQueueTest, DelayedWorkSeesItsOwnTime)
{
    std::vector<TimePoint> times;
    queue.postAfter(0.5, [&] {
        times.push_back(clock.now());
        queue.postAfter(0.25, [&] { times.push_back(clock.now()); });
        queue.post([&] { times.push_back(clock.now()); });
    });
    queue.advance(2.0);
    using std::chrono::milliseconds;
    EXPECT_EQ(times,
              (std::vector<TimePoint>{TimePoint(milliseconds(500)), TimePoint(milliseconds(500)),
                                      TimePoint(milliseconds(750))}));
    EXPECT_EQ(clock.now(), TimePoint(milliseconds(2000)));
}

TEST_F(ManualMainQueueTest, CancelledWorkDoesNotRun)
{
    ScheduledWork first = queue.postAfter(0.1, note("first"));
    ScheduledWork second = queue.postAfter(0.2, note("second"));
    const ScheduledWork copy = second;
    EXPECT_TRUE(first.isPending());
    first.cancel();
    EXPECT_FALSE(first.isPending());
    EXPECT_TRUE(copy.isPending());
    queue.advance(1);
    EXPECT_EQ(ran, Words{"second"});
    EXPECT_FALSE(copy.isPending());
    second.cancel();
}

TEST_F(ManualMainQueueTest, WorkMayCancelItselfAndWhatIsDueWithIt)
{
    ScheduledWork own;
    ScheduledWork other;
    own = queue.postAfter(0.1, [&] {
        EXPECT_FALSE(own.isPending());
        own.cancel();
        other.cancel();
        ran.push_back("own");
    });
    other = queue.postAfter(0.1, note("other"));
    queue.advance(1);
    EXPECT_EQ(ran, Words{"own"});
}

TEST_F(ManualMainQueueTest, OddDelaysAreForgiven)
{
    queue.postAfter(-1, note("negative"));
    queue.postAfter(std::nan(""), note("no number"));
    queue.postAfter(std::numeric_limits<double>::infinity(), note("never"));
    queue.postAfter(1e300, note("nor this"));
    queue.run();
    EXPECT_EQ(ran, (Words{"negative", "no number"}));
    queue.advance(86'400);
    EXPECT_EQ(ran.size(), 2U);
}

TEST_F(ManualMainQueueTest, TakesWorkFromOtherThreads)
{
    constexpr int threadCount = 4;
    constexpr int postsPerThread = 500;
    int runs = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < threadCount; ++i)
        threads.emplace_back([&] {
            for (int j = 0; j < postsPerThread; ++j)
                queue.post([&runs] { ++runs; });
        });
    EXPECT_TRUE(queue.runUntil([&] { return runs == threadCount * postsPerThread; }));
    for (std::thread& thread : threads)
        thread.join();
}

TEST_F(ManualMainQueueTest, WaitingForWhatNeverComesEnds)
{
    EXPECT_FALSE(queue.runUntil([] { return false; }, std::chrono::milliseconds(1)));
}

}  // namespace

}  // namespace tavrel
