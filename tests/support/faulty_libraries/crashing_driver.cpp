// A driver library that dies while it is loaded.
#include <csignal>

namespace {

__attribute__((constructor)) void die() {
    raise(SIGSEGV);
}

} // namespace
