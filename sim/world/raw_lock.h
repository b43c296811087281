// A lock for the inside of the world library, which stands in front of the C library's own.
#pragma once

#include <atomic>
#include <cerrno>
#include <linux/futex.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace kestro_sim {

inline long futex(std::atomic<unsigned> &word, int operation, unsigned value, const void *time = nullptr) {
    return syscall(SYS_futex, reinterpret_cast<unsigned *>(&word), operation | FUTEX_PRIVATE_FLAG, value, time, nullptr,
                   0);
}

class raw_lock {
  public:
    void lock() {
        unsigned before = 0;
        if (word_.compare_exchange_strong(before, 1)) {
            return;
        }
        const int error = errno;
        while (word_.exchange(2) != 0) {
            futex(word_, FUTEX_WAIT, 2);
        }
        errno = error;
    }
    void unlock() {
        if (word_.exchange(0) == 2) {
            const int error = errno;
            futex(word_, FUTEX_WAKE, 1);
            errno = error;
        }
    }
    // Of a forked child, whose other threads are gone.
    void forget() {
        word_ = 0;
    }

  private:
    std::atomic<unsigned> word_ = 0; // 0 free, 1 held, 2 held and waited for
};

} // namespace kestro_sim
