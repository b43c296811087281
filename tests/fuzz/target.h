// A fuzz target: takes any bytes; a mistake that it finds ends the program.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

namespace kestro_fuzz {

inline void require(bool holds, const char *what) {
    if (!holds) {
        fprintf(stderr, "not so: %s\n", what);
        abort();
    }
}

// What the code under test prints is nobody's matter here.
inline void silence_standard_output() {
    static const bool silenced = freopen("/dev/null", "w", stdout) != nullptr;
    require(silenced, "/dev/null can be written");
}

} // namespace kestro_fuzz
