#include "platform/qt/QtMainQueue.h"

#include <QCoreApplication>

#include <chrono>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace tavrel {

namespace {

/// A queue over a running event loop, and what ran on it, in order.
struct QtMainQueueTest : testing::Test {
    MainQueue::Work note(std::string word)
    {
        return [this, word = std::move(word)] { ran.push_back(word); };
    }

    /// Runs the event loop until a piece of work calls `end`.
    void run() { application.exec(); }
    static void end() { QCoreApplication::quit(); }

    int argumentCount = 1;
    char name[5] = "test";
    char* arguments[2] = {name, nullptr};
    QCoreApplication application{argumentCount, arguments};
    std::optional<QtMainQueue> queue{std::in_place};
    std::vector<std::string> ran;
};

using Words = std::vector<std::string>;

TEST_F(QtMainQueueTest, RunsWorkInTheOrderOfPostingAndNeverInsideTheCall)
{
    queue->post([this] {
        queue->post([this] {
            ran.push_back("c");
            end();
        });
        ran.push_back("a");
    });
    queue->post(note("b"));
    EXPECT_EQ(ran, Words{});
    run();
    EXPECT_EQ(ran, (Words{"a", "b", "c"}));
}

TEST_F(QtMainQueueTest, TakesWorkFromOtherThreads)
{
    const std::thread::id main = std::this_thread::get_id();
    std::thread other([&] {
        queue->post([&] {
            EXPECT_EQ(std::this_thread::get_id(), main);
            ran.push_back("posted");
            end();
        });
    });
    run();
    other.join();
    EXPECT_EQ(ran, Words{"posted"});
}

TEST_F(QtMainQueueTest, RunsDelayedWorkInTheOrderOfItsTimesAndNeverEarly)
{
    const auto start = std::chrono::steady_clock::now();
    std::chrono::steady_clock::time_point later;
    queue->postAfter(0.020, [&] {
        later = std::chrono::steady_clock::now();
        ran.push_back("later");
        end();
    });
    queue->postAfter(0.001, note("sooner"));
    queue->postAfter(0, note("at once"));
    EXPECT_EQ(ran, Words{});
    run();
    EXPECT_EQ(ran, (Words{"at once", "sooner", "later"}));
    EXPECT_GE(later - start, std::chrono::milliseconds(20));
}

TEST_F(QtMainQueueTest, CancelledWorkDoesNotRun)
{
    ScheduledWork cancelled = queue->postAfter(0.001, note("cancelled"));
    ScheduledWork running = queue->postAfter(0.002, [&] {
        EXPECT_FALSE(running.isPending());
        end();
    });
    cancelled.cancel();
    EXPECT_FALSE(cancelled.isPending());
    EXPECT_TRUE(running.isPending());
    run();
    EXPECT_EQ(ran, Words{});
    running.cancel();
}

TEST_F(QtMainQueueTest, OddDelaysAreForgiven)
{
    const ScheduledWork never =
        queue->postAfter(std::numeric_limits<double>::infinity(), note("never"));
    queue->postAfter(-1, note("negative"));
    queue->postAfter(std::nan(""), note("no number"));
    queue->postAfter(0.001, [] { end(); });
    run();
    EXPECT_EQ(ran, (Words{"negative", "no number"}));
    EXPECT_TRUE(never.isPending());
}

TEST_F(QtMainQueueTest, GoesWithTheWorkThatHasNotRun)
{
    const auto held = std::make_shared<int>(1);
    queue->post([this, held] { ran.push_back("posted"); });
    const ScheduledWork work = queue->postAfter(0, [this, held] { ran.push_back("delayed"); });
    queue.emplace();
    queue->postAfter(0.001, [] { end(); });
    run();
    EXPECT_EQ(ran, Words{});
    EXPECT_EQ(held.use_count(), 1);
}

}  // namespace

}  // namespace tavrel

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
