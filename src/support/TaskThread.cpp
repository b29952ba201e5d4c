#include "support/TaskThread.h"

#include <system_error>
#include <utility>

namespace kesto {

// A plain condition variable and flag rather than a stop token: MinGW's stop-token wait was
// seen to miss its wake-up under Wine.
TaskThread::~TaskThread() {
    if (!thread_.joinable())
        return;
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
    }
    wake_.notify_one();
    thread_.join();
}

void TaskThread::Start(std::function<void()> task) {
    Wait();
    if (!thread_.joinable() && !noThread_) {
        try {
            thread_ = std::thread([this] { Serve(); });
        } catch (const std::system_error&) {
            noThread_ = true;
        }
    }
    if (noThread_) {
        Run(task);
        return;
    }
    {
        const std::lock_guard lock(mutex_);
        task_ = std::move(task);
        busy_ = true;
    }
    wake_.notify_one();
}

void TaskThread::Wait() {
    std::unique_lock lock(mutex_);
    done_.wait(lock, [this] { return !busy_; });
    if (failure_)
        std::rethrow_exception(std::exchange(failure_, nullptr));
}

bool TaskThread::Busy() const {
    const std::lock_guard lock(mutex_);
    return busy_;
}

void TaskThread::Run(const std::function<void()>& task) {
    std::exception_ptr failure;
    try {
        task();
    } catch (...) {
        failure = std::current_exception();
    }
    const std::lock_guard lock(mutex_);
    failure_ = failure;
}

void TaskThread::Serve() {
    std::unique_lock lock(mutex_);
    for (;;) {
        // A task handed over before the end still runs: the destructor waits for it.
        wake_.wait(lock, [this] { return static_cast<bool>(task_) || ending_; });
        if (!task_)
            return;
        const std::function<void()> task = std::exchange(task_, nullptr);
        lock.unlock();
        Run(task);
        lock.lock();
        busy_ = false;
        done_.notify_all();
    }
}

}  // namespace kesto
