// Sleeps of the product take a thousandth of their time: half a minute is 30 milliseconds. ThreadSanitizer and the
// virtual clock, which both stand in front of the C library's threads, do not go together.
#include <cerrno>
#include <ctime>
#include <unistd.h>

namespace {

constexpr long brisk = 1000;

int sleep_briskly(long nanoseconds) {
    const timespec span{nanoseconds / 1000000000, nanoseconds % 1000000000};
    const int error = clock_nanosleep(CLOCK_MONOTONIC, 0, &span, nullptr);
    errno = error;
    return error == 0 ? 0 : -1;
}

} // namespace

extern "C" int nanosleep(const timespec *span, timespec *) {
    return sleep_briskly(span->tv_sec * (1000000000 / brisk) + span->tv_nsec / brisk);
}

extern "C" unsigned sleep(unsigned seconds) {
    sleep_briskly(static_cast<long>(seconds) * (1000000000 / brisk));
    return 0;
}
