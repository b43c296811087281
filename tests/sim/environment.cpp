// Boards and driver calls for the tests of slots, voltages, lamps and resets.
#include "tests/sim/environment.h"

#include <gtest/gtest.h>

namespace kestro_tests {

test_board new_delivered(const std::string &name) {
    return new_board(delivered_board(name));
}

test_board new_changed(const std::string &name, const std::string &part, const std::string &by) {
    return new_board(scratch_file(name + ".xml", replaced(read_file(delivered_board(name)), part, by)));
}

std::string drivers_say(const test_board &board, const std::vector<std::string> &calls) {
    std::vector<std::string> argv{build_dir() + "/tests/sim_environment_calls"};
    argv.insert(argv.end(), calls.begin(), calls.end());
    process_options options;
    options.environment = {"KESTRO_SIM_BOARD=" + board.description, "KESTRO_SIM_STATE=" + board.state};
    const process_result result = run_process(argv, options);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    return result.out;
}

} // namespace kestro_tests
