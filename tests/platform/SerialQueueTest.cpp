#include "platform/SerialQueue.h"
#include "platform/ThreadPool.h"

#include <algorithm>
#include <atomic>
#include <future>
#include <gtest/gtest.h>
#include <latch>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace tavrel {

namespace {

/// Waits until everything that was posted to `queue` before has run.
void finish(WorkQueue& queue)
{
    std::promise<void> done;
    queue.post([&] { done.set_value(); });
    done.get_future().wait();
}

/// Keeps `promise` when its last copy goes: a piece of work that holds it says so when it is
/// dropped.
std::shared_ptr<void> valueThatTells(std::promise<void>& promise)
{
    return {nullptr, [&promise](void*) { promise.set_value(); }};
}

TEST(ThreadPool, StartsNoThreadBeforeThereIsWork)
{
    ThreadPool pool(4);
    SerialQueue queue(pool, "idle");
    EXPECT_EQ(pool.threadCount(), 0U);
    finish(queue);
    EXPECT_EQ(pool.threadCount(), 1U);
}

TEST(ThreadPool, RunsAsManyPiecesAtOnceAsItMay)
{
    ThreadPool pool(3);
    std::latch together(3);  // Nobody passes it unless three pieces run at once.
    std::latch done(3);
    for (int i = 0; i < 3; ++i)
        pool.post([&] {
            together.arrive_and_wait();
            done.count_down();
        });
    done.wait();
    EXPECT_EQ(pool.threadCount(), 3U);
}

TEST(ThreadPool, StartsNoMoreThreadsThanItMay)
{
    ThreadPool pool(2);
    std::atomic<int> running = 0;
    std::atomic<int> most = 0;
    std::latch done(200);
    for (int i = 0; i < 200; ++i)
        pool.post([&] {
            const int now = ++running;
            for (int seen = most; seen < now && !most.compare_exchange_weak(seen, now);) {
            }
            --running;
            done.count_down();
        });
    done.wait();
    EXPECT_LE(most, 2);
    EXPECT_LE(pool.threadCount(), 2U);
}

TEST(ThreadPool, HasAtLeastOneThread)
{
    ThreadPool pool(0);
    finish(pool);
    EXPECT_EQ(pool.threadCount(), 1U);
}

TEST(ThreadPool, DropsWhatHasNotBegunAndWaitsForTheRest)
{
    std::latch begun(1);
    std::promise<void> dropped;
    bool hasEnded = false;
    std::atomic<bool> ranLate = false;
    {
        ThreadPool pool(1);
        pool.post([&] {
            begun.count_down();
            dropped.get_future().wait();
            hasEnded = true;
        });
        pool.post([&, held = valueThatTells(dropped)] { ranLate = true; });
        begun.wait();
    }
    EXPECT_TRUE(hasEnded);
    EXPECT_FALSE(ranLate);
}

TEST(SerialQueue, RunsEverythingInTheOrderOfPosting)
{
    ThreadPool pool(4);
    SerialQueue queue(pool, "order");
    std::vector<int> ran;  // Unguarded on purpose: the queue alone keeps the pieces apart.
    std::vector<int> expected;
    for (int i = 0; i < 5000; ++i) {
        queue.post([&ran, i] { ran.push_back(i); });
        expected.push_back(i);
    }
    finish(queue);
    EXPECT_EQ(ran, expected);
    EXPECT_EQ(queue.label(), "order");
}

TEST(SerialQueue, KeepsTheOrderOfEachThreadThatPosts)
{
    constexpr int perThread = 1000;
    ThreadPool pool(4);
    SerialQueue queue(pool, "many");
    std::vector<std::vector<int>> ran(3);
    std::vector<std::thread> threads;
    for (std::size_t thread = 0; thread < ran.size(); ++thread)
        threads.emplace_back([&, thread] {
            for (int i = 0; i < perThread; ++i)
                queue.post([&ran, thread, i] { ran[thread].push_back(i); });
        });
    for (std::thread& thread : threads)
        thread.join();
    finish(queue);
    for (const std::vector<int>& one : ran) {
        ASSERT_EQ(one.size(), static_cast<std::size_t>(perThread));
        EXPECT_TRUE(std::is_sorted(one.begin(), one.end()));
    }
}

TEST(SerialQueue, TwoQueuesRunSideBySide)
{
    ThreadPool pool(2);
    SerialQueue one(pool, "one");
    SerialQueue other(pool, "other");
    std::latch together(2);
    one.post([&] { together.arrive_and_wait(); });
    other.post([&] { together.arrive_and_wait(); });
    finish(one);
    finish(other);
}

TEST(SerialQueue, ABusyQueueLetsOthersHaveTheirTurn)
{
    ThreadPool pool(1);
    SerialQueue busy(pool, "busy");
    SerialQueue other(pool, "other");
    std::promise<void> mayBegin;
    std::vector<std::string> ran;
    busy.post([&, begin = mayBegin.get_future().share()] { begin.wait(); });
    busy.post([&] { ran.push_back("busy"); });
    other.post([&] { ran.push_back("other"); });
    mayBegin.set_value();
    finish(busy);
    finish(other);
    EXPECT_EQ(ran, (std::vector<std::string>{"other", "busy"}));
}

TEST(SerialQueue, WorkMayPostMore)
{
    ThreadPool pool(1);
    SerialQueue queue(pool, "chain");
    std::promise<void> done;
    queue.post([&] { queue.post([&] { queue.post([&] { done.set_value(); }); }); });
    done.get_future().wait();
}

TEST(SerialQueue, WaitsForTheRunningPieceAndDropsTheRest)
{
    ThreadPool pool(2);
    std::latch begun(1);
    std::promise<void> dropped;
    bool hasEnded = false;
    std::atomic<bool> ranLate = false;
    {
        SerialQueue queue(pool, "short");
        queue.post([&] {
            begun.count_down();
            dropped.get_future().wait();
            hasEnded = true;
        });
        queue.post([&, held = valueThatTells(dropped)] { ranLate = true; });
        begun.wait();
    }
    EXPECT_TRUE(hasEnded);
    finish(pool);
    EXPECT_FALSE(ranLate);
}

TEST(SerialQueue, GoesQuietlyWithWorkThatHasNotBegun)
{
    ThreadPool pool(1);
    std::latch begun(1);
    std::promise<void> mayEnd;
    pool.post([&] {
        begun.count_down();
        mayEnd.get_future().wait();
    });
    begun.wait();
    std::atomic<bool> ran = false;
    {
        SerialQueue queue(pool, "never begun");
        queue.post([&] { ran = true; });
    }
    mayEnd.set_value();
    finish(pool);
    EXPECT_FALSE(ran);
}

}  // namespace

}  // namespace tavrel
