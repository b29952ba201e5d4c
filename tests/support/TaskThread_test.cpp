#include "support/TaskThread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <stdexcept>
#include <thread>
#include <vector>

namespace kesto {
namespace {

TEST(TaskThread, RunsTheTaskOnAnotherThreadAndWaitReturnsWhenItIsDone) {
    TaskThread worker;
    std::thread::id ranOn;
    int result = 0;
    worker.Start([&] {
        ranOn = std::this_thread::get_id();
        result = 42;
    });
    worker.Wait();
    EXPECT_EQ(result, 42);
    EXPECT_NE(ranOn, std::this_thread::get_id());
}

TEST(TaskThread, TheCallerGoesOnWhileTheTaskRuns) {
    TaskThread worker;
    std::atomic<bool> release{false};
    std::atomic<bool> finished{false};
    worker.Start([&] {
        while (!release)
            std::this_thread::yield();
        finished = true;
    });
    EXPECT_FALSE(finished);
    release = true;
    worker.Wait();
    EXPECT_TRUE(finished);
}

TEST(TaskThread, TasksRunOneAfterTheOtherInTheOrderGivenNeverOnTheCaller) {
    TaskThread worker;
    std::vector<int> order;
    std::vector<std::thread::id> threads;
    for (int i = 0; i < 50; ++i) {
        worker.Start([&, i] {
            order.push_back(i);
            threads.push_back(std::this_thread::get_id());
        });
    }
    worker.Wait();
    ASSERT_EQ(order.size(), 50u);
    for (int i = 0; i < 50; ++i) {
        EXPECT_EQ(order[i], i);
        EXPECT_NE(threads[i], std::this_thread::get_id());
    }
}

TEST(TaskThread, WaitRethrowsWhatStoppedTheTaskOnceAndTheNextTaskRuns) {
    TaskThread worker;
    worker.Start([] { throw std::runtime_error("disk full"); });
    try {
        worker.Wait();
        ADD_FAILURE() << "Wait did not rethrow";
    } catch (const std::runtime_error& e) {
        EXPECT_STREQ(e.what(), "disk full");
    }
    EXPECT_NO_THROW(worker.Wait());
    bool ran = false;
    worker.Start([&] { ran = true; });
    worker.Wait();
    EXPECT_TRUE(ran);
}

TEST(TaskThread, StartRethrowsWhatStoppedTheTaskBeforeAndDoesNotStartTheNew) {
    TaskThread worker;
    worker.Start([] { throw std::runtime_error("before"); });
    bool ran = false;
    EXPECT_THROW(worker.Start([&] { ran = true; }), std::runtime_error);
    worker.Wait();
    EXPECT_FALSE(ran);
}

TEST(TaskThread, WaitWithoutATaskReturnsAtOnce) {
    TaskThread worker;
    EXPECT_NO_THROW(worker.Wait());
}

TEST(TaskThread, TheDestructorWaitsForTheTaskInHand) {
    std::atomic<bool> finished{false};
    {
        TaskThread worker;
        worker.Start([&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            finished = true;
        });
    }
    EXPECT_TRUE(finished);
}

TEST(TaskThread, AFailureNeverWaitedForIsDroppedAtTheEnd) {
    EXPECT_NO_THROW({
        TaskThread worker;
        worker.Start([] { throw std::runtime_error("never asked"); });
    });
}

}  // namespace
}  // namespace kesto
