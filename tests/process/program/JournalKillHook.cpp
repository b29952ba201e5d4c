// Linked into kesto-killable only: with KESTO_TEST_STOP_AFTER_APPENDS=N in the environment the
// window kills itself (SIGKILL) as soon as the N-th journal line is on the disk, after the
// command ran in memory and before the window shows it. Unset or not above 0, nothing differs.
#include <csignal>
#include <cstdlib>

#include "history/Journal.h"

namespace {

class KillAfterAppends : public kesto::JournalWatcher {
  public:
    explicit KillAfterAppends(long limit) : limit_(limit) {}

    void Appended() override {
        if (++appends_ >= limit_)
            std::raise(SIGKILL);
    }

  private:
    long limit_;
    long appends_ = 0;
};

// Armed before main runs, from the environment the test gives the process.
const bool kArmed = [] {
    const char* value = std::getenv("KESTO_TEST_STOP_AFTER_APPENDS");
    const long limit = value != nullptr ? std::atol(value) : 0L;
    if (limit > 0)
        kesto::JournalWriter::Watch(new KillAfterAppends(limit));
    return limit > 0;
}();

}  // namespace
