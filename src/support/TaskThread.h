// A thread of its own for work the caller need not wait for at once: the caller hands it a task
// and goes on, and waits for it where it needs the result.
#pragma once

#include <exception>
#include <functional>
#include <thread>

namespace kesto {

// Runs a task on a thread of its own, one task at a time. When no thread is to be had, the task
// runs at once in Start.
class TaskThread {
  public:
    TaskThread() = default;
    TaskThread(const TaskThread&) = delete;
    TaskThread& operator=(const TaskThread&) = delete;
    // Waits for the task in hand; what stopped it is dropped.
    ~TaskThread();

    // Waits for the task before (see Wait), then starts task and returns.
    void Start(std::function<void()> task);
    // Returns when no task is in hand; rethrows what stopped the last one, once.
    void Wait();

  private:
    // Runs task, keeping what stops it for Wait.
    void Run(const std::function<void()>& task);

    std::exception_ptr failure_;  // written by the task's thread, read after it is joined
    std::thread thread_;
};

}  // namespace kesto
