#include "tests/support/thoroughness.h"

#include <cstdint>
#include <cstdlib>

namespace kestro_tests {

namespace {

bool is_set(const char *variable) {
    return getenv(variable) != nullptr;
}

enum class build { of_the_desk, sanitized, emulated };

// In the full tier every build is as thorough as the desk's.
build this_build() {
    if (everything_is_tried() || !is_set("KESTRO_BUILD_UNDER_TEST")) {
        return build::of_the_desk;
    }
    return is_set("KESTRO_EMULATOR") ? build::emulated : build::sanitized;
}

uint32_t number_of(const std::string &name) {
    uint32_t hash = 2166136261U;
    for (const char c : name) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
    }
    return hash >> 8;
}

} // namespace

bool everything_is_tried() {
    static const char *const asked = getenv("KESTRO_TESTS_FULL");
    return asked != nullptr && std::string(asked) == "1";
}

int stride() {
    switch (this_build()) {
    case build::of_the_desk:
        return 1;
    case build::sanitized:
        return 3;
    default:
        return 7;
    }
}

int long_stride() {
    return stride() == 1 ? 1 : 3 * stride();
}

bool is_tried_here(const std::string &name) {
    switch (this_build()) {
    case build::of_the_desk:
        return true;
    case build::sanitized:
        return number_of(name) % 3 == 1;
    default:
        return number_of(name) % 8 == 0;
    }
}

} // namespace kestro_tests
