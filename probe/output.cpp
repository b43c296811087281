// Standard output becomes a stream whose bytes pass by here. The functions that print are many; the stream is one.
#include "probe/output.h"

#include "probe/report.h"
#include "probe/trace.h"
#include "probe/value.h"

#include <cstdio>
#include <string>
#include <string_view>
#include <unistd.h>

namespace kestro_probe {

namespace {

// What is longer is shown in pieces.
constexpr size_t longest_line = 65536;

std::string *begun_line = nullptr; // guarded by the stream's own lock

void show_line() {
    write_line("# output: " + print_text(*begun_line));
    begun_line->clear();
}

void show(std::string_view text) {
    for (const char c : text) {
        if (c != '\n') {
            *begun_line += c;
        }
        if (c == '\n' || begun_line->size() == longest_line) {
            show_line();
        }
    }
}

// A line is in the trace before it is on its way: who reads both while they are written finds its calls.
ssize_t pass_on(void *, const char *text, size_t length) {
    const std::string all(text, length);
    if (!is_child()) {
        show(all);
    }
    return write_whole(STDOUT_FILENO, all) ? static_cast<ssize_t>(length) : 0;
}

} // namespace

bool start_showing_output() {
    FILE *stream = fopencookie(nullptr, "w", {nullptr, pass_on, nullptr, nullptr});
    if (stream == nullptr) {
        return false;
    }
    begun_line = new std::string;
    // A line is shown when it is printed and not when an area is full.
    setvbuf(stream, nullptr, _IOLBF, BUFSIZ);
    stdout = stream;
    return true;
}

} // namespace kestro_probe
