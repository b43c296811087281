#include "tests/sim/support.h"

#include "sim/core/prepare.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace kestro_tests {

std::string delivered_board(const std::string &name) {
    return build_dir() + "/sim/boards/" + name + ".xml";
}

test_board new_board(const std::string &description) {
    const test_board board{description, new_scratch_dir() + "/state"};
    EXPECT_EQ(prepare_says(board.description, board.state), "");
    return board;
}

process_result call_drivers(const test_board &board, const std::vector<std::string> &calls) {
    std::vector<std::string> argv{build_dir() + "/tests/sim_calls"};
    argv.insert(argv.end(), calls.begin(), calls.end());
    process_options options;
    options.environment = {"KESTRO_SIM_BOARD=" + board.description, "KESTRO_SIM_STATE=" + board.state};
    return run_process(argv, options);
}

std::string calls_print(const test_board &board, const std::vector<std::string> &calls) {
    const process_result result = call_drivers(board, calls);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    return result.out;
}

std::string prepare_says(const std::string &description, const std::string &state, bool reset) {
    return kestro_sim::prepare_board(description, state, reset).value_or("");
}

std::string replaced(std::string text, const std::string &part, const std::string &by) {
    const size_t at = text.find(part);
    if (at == std::string::npos) {
        throw std::runtime_error("nothing to replace: " + part);
    }
    return text.replace(at, part.size(), by);
}

} // namespace kestro_tests
