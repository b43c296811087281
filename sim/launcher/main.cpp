// kestro_sim: runs kestro_test on a simulated board.
#include "sim/core/store_error.h"
#include "sim/launcher/launch.h"
#include "sim/launcher/options.h"

#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>

int main(int count, char **arguments) {
    try {
        if (const auto options = kestro_sim::read_options(count, arguments)) {
            kestro_sim::launch(*options);
        }
    } catch (const std::filesystem::filesystem_error &problem) {
        std::cerr << "kestro_sim: " << kestro_sim::said_plainly(problem) << "\n";
        return 2;
    } catch (const std::exception &problem) {
        std::cerr << "kestro_sim: " << problem.what() << "\n";
        return 2;
    }
    return EXIT_SUCCESS;
}
