// kestro_sim: runs kestro_test on a simulated board.
#include "sim/launcher/launch.h"

int main(int count, char **arguments) {
    return kestro_sim::run_launcher(count, arguments);
}
