// kestro_sim: runs kestro_test on a simulated board.
#include "sim/launcher/launch.h"
#include "sim/launcher/options.h"

#include <cstdlib>
#include <exception>
#include <iostream>

int main(int count, char **arguments) {
    try {
        if (const auto options = kestro_sim::read_options(count, arguments)) {
            kestro_sim::launch(*options);
        }
    } catch (const std::exception &problem) {
        std::cerr << "kestro_sim: " << problem.what() << "\n";
        return 2;
    }
    return EXIT_SUCCESS;
}
