// A watchdog for the long process tests. Each stage says what it is as it begins; one that runs
// past its deadline prints where the test is and ends the test program, so that a hang says
// where it happened instead of running silently into ctest's timeout.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string>
#include <thread>

namespace kesto::test {

// Longer than any stage of a sound run takes (the largest job's restart takes about 20 s).
inline constexpr std::chrono::seconds kStageDeadline{150};

class StageWatch {
  public:
    StageWatch() : thread_([this] { Watch(); }) {}
    ~StageWatch() {
        {
            const std::lock_guard<std::mutex> lock(mutex_);
            done_ = true;
        }
        changed_.notify_all();
        thread_.join();
    }
    StageWatch(const StageWatch&) = delete;
    StageWatch& operator=(const StageWatch&) = delete;

    // The stage the test is in from now on; printed too, so that a log shows the way it went.
    void Enter(const std::string& stage) {
        {
            const std::lock_guard<std::mutex> lock(mutex_);
            stage_ = stage;
            since_ = std::chrono::steady_clock::now();
        }
        std::printf("[stage] %s\n", stage.c_str());
        std::fflush(stdout);
        changed_.notify_all();
    }

  private:
    void Watch() {
        std::unique_lock<std::mutex> lock(mutex_);
        while (!done_) {
            const auto deadline = since_ + kStageDeadline;
            if (changed_.wait_until(lock, deadline) == std::cv_status::timeout && !done_ &&
                std::chrono::steady_clock::now() >= since_ + kStageDeadline) {
                std::printf("[stage] STUCK for %lld s in: %s\n",
                            static_cast<long long>(kStageDeadline.count()), stage_.c_str());
                std::fflush(stdout);
                std::_Exit(3);
            }
        }
    }

    std::mutex mutex_;
    std::condition_variable changed_;
    std::string stage_ = "the start";
    std::chrono::steady_clock::time_point since_ = std::chrono::steady_clock::now();
    bool done_ = false;
    std::thread thread_;
};

// The watch of the test program, made at its first stage.
inline StageWatch& Stages() {
    static StageWatch watch;
    return watch;
}

inline void Stage(const std::string& stage) {
    Stages().Enter(stage);
}

}  // namespace kesto::test
