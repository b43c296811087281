// The technician's options. Standard output is written out before the run begins: the run is another program.
#include "sim/launcher/hand.h"

#include <iostream>

namespace kestro_sim {

void act_by_hand(const launch_options &options, const std::filesystem::path &merged,
                 const std::filesystem::path &state) {
    if (options.by_hand.empty()) {
        return;
    }
    std::string printed;
    const std::optional<std::string> problem = lay_hand_on(merged, state, options.by_hand, printed);
    if (problem) {
        throw launch_error(*problem);
    }
    if (!(std::cout << printed << std::flush)) {
        throw launch_error("standard output", "cannot be written", "it takes what --list and --get show");
    }
}

} // namespace kestro_sim
