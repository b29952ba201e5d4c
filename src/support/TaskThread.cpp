#include "support/TaskThread.h"

#include <system_error>
#include <utility>

namespace kesto {

TaskThread::~TaskThread() {
    if (thread_.joinable())
        thread_.join();
}

void TaskThread::Start(std::function<void()> task) {
    Wait();
    const auto work = [this, task = std::move(task)] { Run(task); };
    try {
        thread_ = std::thread(work);
    } catch (const std::system_error&) {
        // No thread to be had: the task runs now.
        work();
    }
}

void TaskThread::Wait() {
    if (thread_.joinable())
        thread_.join();
    if (failure_)
        std::rethrow_exception(std::exchange(failure_, nullptr));
}

void TaskThread::Run(const std::function<void()>& task) {
    try {
        task();
    } catch (...) {
        failure_ = std::current_exception();
    }
}

}  // namespace kesto
