// The board management section: its checks, each on its own in a test of its own, one after the other.
#include <gtest/gtest.h>

#include "tests/selftest/part.h"
#include "tests/support/process.h"

using namespace kestro_tests;

namespace {

constexpr const char *checks[] = {
    "hardware_identity", "pcb_version",   "self_online", "peer_online",   "fullin",    "slot_id",     "cards",
    "epld_power",        "tpm",           "boot_step",   "weld",          "corrosion", "low_voltage", "bios",
    "mpu_status",        "control_logic", "capability",  "storage_sizes",
};

struct part_run {
    std::string lines;
    std::string result;
};

part_run run_on(const std::string &board, const std::string &name) {
    const process_result run = run_part({"--board", board}, name);
    EXPECT_EQ(run.err, "") << name;
    EXPECT_EQ(run.status, 0) << name;
    const size_t end = run.out.rfind("result ");
    if (end == std::string::npos) {
        ADD_FAILURE() << name << " has no result";
        return {run.out, ""};
    }
    return {run.out.substr(0, end), run.out.substr(end)};
}

// What the section prints is what its checks print, in their order. Returns the section's result.
std::string expect_all_checks(const std::string &board) {
    std::string lines;
    for (const char *const name : checks) {
        lines += run_on(board, name).lines;
    }
    const part_run section = run_on(board, "board_mng");
    EXPECT_EQ(section.lines, lines) << board;
    return section.result;
}

// The delivered line card with one element changed.
std::string altered_lpu(const std::string &node, int entry, const std::string &name, int value) {
    return scratch_file("board.xml", "<board name=\"altered\" like=\"lpu\" slot=\"7\">\n"
                                     "  <module name=\"sim_board\"><node name=\"" +
                                         node + "\">\n    <entry name=\"" + std::to_string(entry) +
                                         "\"><element name=\"" + name + "\" value=\"" + std::to_string(value) +
                                         "\"/></entry>\n  </node></module>\n</board>\n");
}

} // namespace

// Together these boards let every check print something.
TEST(BoardMngSectionTest, AllChecksOfHealthyBoards) {
    for (const char *const board : {"mpu_master", "mpu_slave", "lpu"}) {
        EXPECT_EQ(expect_all_checks(board), "result 0\n") << board;
    }
}

TEST(BoardMngSectionTest, AFailureStopsNothingAndStands) {
    EXPECT_EQ(expect_all_checks(altered_lpu("unit", 0, "pcb_ver", 0x101)), "result -1\n");
    EXPECT_EQ(expect_all_checks(altered_lpu("corrosion", 1, "status", 1)), "result -1\n");
    EXPECT_EQ(expect_all_checks(altered_lpu("bios_area", 3, "fault", 1)), "result -1\n");
}
