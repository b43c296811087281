// kestro_sim of the desk, which starts the programs of the build under test: what it does before it becomes one of them
// takes an emulator half a second.
#include "sim/launcher/launch.h"

#include <cstdlib>

int main(int count, char **arguments) {
    const char *base = getenv("KESTRO_BUILD_UNDER_TEST");
    return kestro_sim::run_launcher(count, arguments, base != nullptr ? base : "");
}
