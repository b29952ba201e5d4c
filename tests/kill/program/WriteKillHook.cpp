// Linked into kesto-batch-killable only: with KESTO_TEST_STOP_AFTER_WRITES=N in the environment
// the temporaries are written unbuffered through a counting stream, and the process kills
// itself (SIGKILL) at the N-th write step: a temporary created, a write reaching it, a
// temporary complete, a rename done, a folder synced. Unset or not above 0, nothing differs.
#include <unistd.h>

#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "support/AtomicFile.h"

namespace {

class KillAfterSteps : public kesto::WriteWatcher {
  public:
    explicit KillAfterSteps(long limit) : limit_(limit) {}

    std::FILE* OpenStream(int fd) override {
        const cookie_io_functions_t io{nullptr, Write, nullptr, Close};
        std::FILE* file = ::fopencookie(this, "w", io);
        if (file != nullptr)
            std::setvbuf(file, nullptr, _IONBF, 0);
        fd_ = fd;
        return file;
    }
    void Reached(kesto::WriteStep) override { Count(); }

  private:
    void Count() {
        if (++steps_ >= limit_)
            ::raise(SIGKILL);
    }
    static ssize_t Write(void* cookie, const char* data, size_t size) {
        auto* self = static_cast<KillAfterSteps*>(cookie);
        self->Count();
        size_t done = 0;
        while (done < size) {
            const ssize_t n = ::write(self->fd_, data + done, size - done);
            if (n <= 0)
                return 0;  // a cookie stream reports failure as 0
            done += static_cast<size_t>(n);
        }
        return static_cast<ssize_t>(done);
    }
    static int Close(void* cookie) { return ::close(static_cast<KillAfterSteps*>(cookie)->fd_); }

    long limit_;
    long steps_ = 0;
    int fd_ = -1;
};

// Armed before main runs, from the environment the test gives the process.
const bool kArmed = [] {
    const char* value = std::getenv("KESTO_TEST_STOP_AFTER_WRITES");
    const long limit = value != nullptr ? std::atol(value) : 0L;
    if (limit > 0)
        kesto::AtomicFile::Watch(new KillAfterSteps(limit));
    return limit > 0;
}();

}  // namespace
