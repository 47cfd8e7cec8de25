#include "platform/workers.h"

#include <gtest/gtest.h>

#include <future>
#include <numeric>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace vantrel {
namespace {

using Queue = JobQueue<int>;

class WorkersTest : public ::testing::TestWithParam<std::size_t> {
  protected:
    Workers workers{GetParam()};
    const std::function<void()> wait = [] {};
};

// With no threads and with more than there are jobs at a time the taker sees the same.
TEST_P(WorkersTest, ResultsComeInTheOrderOfTheirJobsAndErrorsWhereTheyAreTaken) {
    Queue queue(workers, {.jobs = 7});
    std::vector<int> taken;
    int handedIn = 0, thrown = 0;
    while (handedIn < 200 || !queue.IsEmpty()) {
        for (; handedIn < 200 && queue.HasRoom(); ++handedIn)
            queue.Add([number = handedIn](const StopFlag&) {
                if (number % 3 == 0) std::this_thread::sleep_for(std::chrono::microseconds(number % 7 * 50));
                if (number % 50 == 49) throw std::runtime_error(std::to_string(number));
                return number;
            });
        EXPECT_LE(queue.Size(), 7U);
        try {
            taken.push_back(queue.TakeNext(wait));
        } catch (const std::runtime_error& error) {
            taken.push_back(std::stoi(error.what()));
            ++thrown;
        }
    }
    std::vector<int> expected(200);
    std::iota(expected.begin(), expected.end(), 0);
    EXPECT_EQ(expected, taken);
    EXPECT_EQ(4, thrown);
}

TEST_P(WorkersTest, BytesBoundWhatIsAheadButNeverTheOnlyJob) {
    Queue queue(workers, {.jobs = 100, .bytes = 1'000});
    EXPECT_TRUE(queue.HasRoom(5'000));
    queue.Add([](const StopFlag&) { return 1; }, 900);
    EXPECT_TRUE(queue.HasRoom(100));
    EXPECT_FALSE(queue.HasRoom(101));
    EXPECT_EQ(1, queue.TakeNext(wait));
    EXPECT_TRUE(queue.HasRoom(5'000));
}

// Jobs of before and after it, and none after the end.
TEST_P(WorkersTest, GrowsWhileItWorks) {
    Queue queue(workers, {.jobs = 100});
    for (int i = 0; i < 20; ++i) {
        if (i == 10) workers.Grow(6);
        queue.Add([i](const StopFlag&) { return i; });
    }
    for (int i = 0; i < 20; ++i) EXPECT_EQ(i, queue.TakeNext(wait));
    EXPECT_EQ(6U, workers.Count());
    workers.Grow(2);
    EXPECT_EQ(6U, workers.Count());
    EXPECT_EQ(0U, workers.End());
    workers.Grow(8);
    EXPECT_EQ(6U, workers.Count());
}

INSTANTIATE_TEST_SUITE_P(NoneOneAndMany, WorkersTest, ::testing::Values(0, 1, 4));

// A cancel comes out of the wait while the job still runs; the queue that goes asks it to stop.
TEST(Workers, ACancelEndsTheWaitAndReachesTheJob) {
    struct Cancelled {};
    Workers workers(2);
    std::atomic<bool> stopped{false}, begun{false};
    {
        Queue queue(workers, {});
        queue.Add([&](const StopFlag& stop) {
            begun = true;
            while (!stop.IsRequested()) std::this_thread::yield();
            stopped = true;
            return 0;
        });
        EXPECT_THROW(queue.TakeNext([&] {
            if (begun) throw Cancelled();
        }),
                     Cancelled);
        EXPECT_FALSE(stopped);
    }
    EXPECT_EQ(0U, workers.End());
    EXPECT_TRUE(stopped);
}

TEST(Workers, WhatNoThreadHasBegunCanBeDoneHereAndTheRestIsWaitedFor) {
    Workers workers(1);
    std::atomic<bool> begun{false}, go{false};
    PendingJob<std::thread::id> holding(workers, [&](const StopFlag&) {
        begun = true;
        while (!go) std::this_thread::yield();
        return std::this_thread::get_id();
    });
    while (!begun) std::this_thread::yield();
    PendingJob<std::thread::id> waiting(workers, [](const StopFlag&) { return std::this_thread::get_id(); });
    EXPECT_EQ(std::this_thread::get_id(), waiting.TakeHere());
    EXPECT_FALSE(waiting.IsThere());
    go = true;
    EXPECT_NE(std::this_thread::get_id(), holding.TakeHere());
    EXPECT_EQ(0U, workers.End());
    PendingJob<int> failing(workers, [](const StopFlag&) -> int { throw std::runtime_error("no"); });
    EXPECT_THROW(failing.TakeHere(), std::runtime_error);
}

std::atomic<bool> diskGives{false};

std::uint64_t ReadByDisk() {
    static thread_local std::uint64_t bytes = 0;
    return diskGives ? bytes += 4'096 : bytes;
}

// Runs jobs that wait until so many of them run at the same time, or there were 500; the most that did.
int MostAtATime(Workers& workers, int wanted) {
    Queue queue(workers, {.jobs = 40});
    std::atomic<int> running{0}, most{0};
    int left = 500;
    while (left > 0 || !queue.IsEmpty()) {
        for (; left > 0 && queue.HasRoom(); --left)
            queue.Add([&](const StopFlag&) {
                const int now = ++running;
                for (int before = most; before < now && !most.compare_exchange_weak(before, now);) continue;
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
                return --running;
            });
        queue.TakeNext([] {});
        if (most >= wanted) left = 0;
    }
    return most;
}

// Those that the disk called for rest afterwards, are there again when it does once more, and end.
TEST(Workers, MoreWorkWhileADiskIsWaitedFor) {
    Workers workers(2);
    workers.WidenForDisk(6, ReadByDisk);
    EXPECT_EQ(2, MostAtATime(workers, 3));
    for (int round = 0; round < 2; ++round) {
        diskGives = true;
        EXPECT_EQ(6, MostAtATime(workers, 6));
        diskGives = false;
        int most = 6;
        for (int tries = 0; tries < 100 && most > 2; ++tries) most = MostAtATime(workers, 6);
        EXPECT_EQ(2, most);
    }
    EXPECT_EQ(2U, workers.Count());
    EXPECT_EQ(6U, workers.Most());
    workers.Grow(4);
    EXPECT_EQ(4, MostAtATime(workers, 5));
    EXPECT_EQ(0U, workers.End());
}

// However much there is to do, and however long the threads take for it: what is ready is not waited for.
TEST(Workers, AReadyResultIsTakenWhileAllThreadsHang) {
    Workers workers(2);
    Queue queue(workers, {.jobs = 100});
    std::atomic<bool> go{false};
    std::atomic<int> begun{0};
    queue.Add([&](const StopFlag&) {
        while (begun != 1) std::this_thread::yield();
        return 7;
    });
    for (int i = 0; i < 60; ++i)
        queue.Add([&](const StopFlag&) {
            ++begun;
            while (!go) std::this_thread::yield();
            return 0;
        });
    EXPECT_EQ(7, queue.TakeNext([] {}));
    EXPECT_FALSE(queue.IsReady());
    go = true;
    while (!queue.IsEmpty()) EXPECT_EQ(0, queue.TakeNext([] {}));
}

// Of a queue that was dropped no job is begun any more, and what the jobs owned goes with them.
TEST(Workers, DroppedJobsAreNotBegun) {
    Workers workers(1);
    std::atomic<bool> go{false};
    std::atomic<int> ran{0};
    const auto owned = std::make_shared<int>(1);
    {
        Queue queue(workers, {});
        queue.Add([&](const StopFlag&) {
            while (!go) std::this_thread::yield();
            return ++ran;
        });
        for (int i = 0; i < 10; ++i) queue.Add([&ran, owned](const StopFlag&) { return ++ran; });
    }
    go = true;
    EXPECT_EQ(0U, workers.End());
    EXPECT_LE(ran, 1);
    EXPECT_EQ(1, owned.use_count());
}

// One that hangs in the system does not keep the program from ending, nor from working on.
TEST(Workers, AThreadThatHangsIsLeftBehind) {
    struct Seen {
        std::promise<void> begun, release, ended;
    };
    const auto seen = std::make_shared<Seen>();
    {
        Workers workers(1);
        Queue queue(workers, {});
        queue.Add([seen](const StopFlag&) {
            seen->begun.set_value();
            seen->release.get_future().wait();
            seen->ended.set_value();
            return 1;
        });
        seen->begun.get_future().wait();
        EXPECT_EQ(1U, workers.End(std::chrono::milliseconds(20)));
        EXPECT_EQ(1U, Workers::LeftBehind());
        Queue later(workers, {});
        later.Add([](const StopFlag&) { return 3; });
        EXPECT_EQ(3, later.TakeNext([] {}));
        seen->release.set_value();
    }
    seen->ended.get_future().wait();
    while (Workers::LeftBehind() != 0) std::this_thread::yield();
}

}  // namespace
}  // namespace vantrel
