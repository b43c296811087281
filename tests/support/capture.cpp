#include "tests/support/capture.h"

#include <cstdio>
#include <unistd.h>

#include "tests/support/process.h"

namespace kestro_tests {

std::string printed_by(const std::function<void()> &function) {
    const std::string path = scratch_file("printed", "");
    fflush(stdout);
    const int console = dup(STDOUT_FILENO);
    FILE *file = fopen(path.c_str(), "w");
    dup2(fileno(file), STDOUT_FILENO);
    fclose(file);
    function();
    fflush(stdout);
    dup2(console, STDOUT_FILENO);
    close(console);
    return read_file(path);
}

} // namespace kestro_tests
