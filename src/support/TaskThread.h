// A thread of its own for work the caller need not wait for at once: the caller hands it a task
// and goes on, and waits for it where it needs the result.
#pragma once

#include <condition_variable>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>

namespace kesto {

// Runs one task at a time, in the order given, on a thread started with the first task and
// kept, asleep, for the next. When no thread is to be had, each task runs at once in Start.
class TaskThread {
  public:
    TaskThread() = default;
    TaskThread(const TaskThread&) = delete;
    TaskThread& operator=(const TaskThread&) = delete;
    // Waits for the task in hand (what stopped it is dropped), then ends the thread.
    ~TaskThread();

    // Waits for the task before (see Wait), then starts task and returns.
    void Start(std::function<void()> task);
    // Returns when no task is in hand; rethrows what stopped the last one, once.
    void Wait();
    bool Busy() const;

  private:
    void Serve();
    // Runs task, keeping what stops it for Wait.
    void Run(const std::function<void()>& task);

    mutable std::mutex mutex_;
    std::condition_variable wake_;
    std::condition_variable done_;
    std::function<void()> task_;
    bool busy_ = false;
    bool ending_ = false;
    bool noThread_ = false;
    std::exception_ptr failure_;
    std::thread thread_;
};

}  // namespace kesto
