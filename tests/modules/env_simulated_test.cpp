// env_test and highmem_test on the simulated chassis: what one run sets the next one finds, in the stores and where
// they lie, and the self-tests of healthy boards pass and leave nothing behind.
#include <gtest/gtest.h>

#include "tests/support/command.h"
#include "tests/support/test_lines.h"
#include "tests/support/thoroughness.h"

using namespace kestro_tests;

namespace {

std::string took(int seconds) {
    return "cmd_exec used second:" + std::to_string(seconds) +
           "\r\ncmd_exec used millisecond:" + std::to_string(1000 * seconds) + "\r\n";
}

// A chassis of its own, on which lines are run one after the other.
class on_board {
  public:
    explicit on_board(const std::string &seat) : seat_(seat) {
    }

    process_result run(const std::string &line, std::vector<std::string> options = {}) const {
        options.insert(options.end(), {"--state", state_, "--clock", "virtual", "--board", seat_});
        return run_sim(options, split_words(line));
    }

    void expect(const std::string &line, const std::string &output, int seconds = 0) const {
        SCOPED_TRACE(line);
        const process_result result = run(line);
        EXPECT_EQ(result.out, output + took(seconds));
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(result.status, 0);
    }

    void expect_failure(const std::string &line) const {
        SCOPED_TRACE(line);
        const process_result result = run(line);
        EXPECT_EQ(result.out, timing_lines + operate_fail(split_words(line).at(1)) + operate_fail("env_test"));
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(result.status, 255);
    }

  private:
    const std::string state_ = new_scratch_dir();
    const std::string seat_;
};

constexpr int ended_by_interrupt = 130;

const std::string flash_variables = "board_reset_mode=1\nhard_reset_init_flag=1\n";
const std::string memory_variables = "kestro_softreset_mode=1\n";

std::string printed_store(const std::string &lines) {
    return "env_print_test:[ret]:0\r\n" + lines + "\r\n";
}

} // namespace

TEST(EnvOnABoard, VariablesInFlash) {
    if (lists_lines()) {
        return;
    }
    const on_board board("mpu_master");
    board.expect("env_test env_set town 'Bern 1'", "");
    board.expect("env_test env_num_set count 8899 16", "drv_env_num_set ret:0\r\n");
    board.expect("env_test env_get town", "[name]:town [value]:Bern 1\n");
    board.expect("env_test env_get count", "[name]:count [value]:22c3\n");
    board.expect("env_test env_num_get count 16", "[name]:count [value]:8899\n");
    board.expect("env_test env_print", printed_store(flash_variables + "town=Bern 1\ncount=22c3\n"));
    board.expect("env_test env_clr town", "");
    board.expect_failure("env_test env_get town");
    board.expect_failure("env_test env_clr town");
}

TEST(EnvOnABoard, VariablesInMemory) {
    if (lists_lines()) {
        return;
    }
    const on_board board("mpu_slave");
    board.expect("env_test memenv_set town Bern", "");
    board.expect("env_test memenv_num_set count 8899 10", "drv_memenv_num_set ret:0\r\n");
    board.expect("env_test memenv_save", "drv_memenv_save ret:0\r\n");
    board.expect("env_test memenv_get town", "[name]:town [value]:Bern\n");
    board.expect("env_test memenv_clr count", "drv_memenv_clr ret:0\r\n");
    board.expect("env_test memenv_num_get count 10", "[name]:count [value]:0\n");
    board.expect("env_test memenv_print", printed_store(memory_variables + "town=Bern\ncount=\n"));
}

TEST(EnvOnABoard, TheSelfTestsPassAndPassAgain) {
    if (lists_lines()) {
        return;
    }
    for (const std::string seat : {"mpu_master", "mpu_slave"}) {
        const on_board board(seat);
        for (int i = 0; i < 2; ++i) {
            const process_result flash = board.run("env_test env_sdv_test");
            EXPECT_EQ(flash.out.find("Test env set-get..............PASS\nTest env_num set-get..............PASS\n"
                                     "wait save status."),
                      0U);
            EXPECT_NE(flash.out.find("ok.\nTest env save..............PASS\nTest env clr..............PASS\ncmd_exec"),
                      std::string::npos)
                << flash.out;
            board.expect("env_test memenv_sdv_test", "Test memenv set-get..............PASS\n"
                                                     "Test memenv_num set-get..............PASS\n"
                                                     "Test memenv save..............PASS\n"
                                                     "Test memenv clr..............PASS\n");
        }
        board.expect("env_test env_print", printed_store(flash_variables));
        board.expect("env_test memenv_print", printed_store(memory_variables + "sdv_test=\nsdv_test_num=\n"));
    }
}

// A driver that does not save: the halves are those of before.
TEST(EnvOnABoard, HalvesThatDiffer) {
    if (lists_lines()) {
        return;
    }
    const on_board board("mpu_master");
    const process_result run =
        board.run("env_test memenv_sdv_test", {"--script", scratch_file("script", "drv_memenv_save() = 0\n")});
    EXPECT_EQ(run.out, "Test memenv set-get..............PASS\nTest memenv_num set-get..............PASS\n"
                       "main area data and backup area data, compare fail.\nTest memenv clr..............PASS\n" +
                           took(0));
    EXPECT_EQ(run.status, 0);
}

// Before each call of either test. A save that is on its way goes on; a board of its own for each, since it refuses
// another one meanwhile.
TEST(EnvOnABoard, AnInterruptLeavesNoTestVariable) {
    if (lists_lines()) {
        return;
    }
    for (int call = 1; call <= 13; call += stride()) {
        SCOPED_TRACE(call);
        const on_board board("mpu_master");
        EXPECT_EQ(board.run("env_test env_sdv_test", {"--signal-call", std::to_string(call)}).status,
                  ended_by_interrupt);
        board.expect("env_test env_print", printed_store(flash_variables));
    }
    for (int call = 1; call <= 11; call += stride()) {
        SCOPED_TRACE(call);
        const on_board board("mpu_master");
        EXPECT_EQ(board.run("env_test memenv_sdv_test", {"--signal-call", std::to_string(call)}).status,
                  ended_by_interrupt);
        board.expect("env_test memenv_print", printed_store(memory_variables + "sdv_test=\nsdv_test_num=\n"));
    }
}

TEST(HighmemOnABoard, TheRegionsKeepClearOfEachOther) {
    if (lists_lines()) {
        return;
    }
    for (const std::string seat : {"mpu_master", "mpu_slave", "lpu"}) {
        const process_result run = on_board(seat).run("highmem_test drv_highmem_test_addr_conflict");
        size_t passes = 0;
        for (size_t at = run.out.find("PASS."); at != std::string::npos; at = run.out.find("PASS.", at + 1)) {
            ++passes;
        }
        EXPECT_EQ(passes, 8U) << run.out;
        EXPECT_EQ(run.out.find("Fail"), std::string::npos) << run.out;
        EXPECT_EQ(run.status, 0);
    }
}

TEST(HighmemOnABoard, PlacesOfTheEnvironment) {
    if (lists_lines()) {
        return;
    }
    const on_board board("mpu_master");
    board.expect("highmem_test drv_highmem_get_phys_addr 16", "type: 16\n\nphys_addr: 0x70010000\n\n");
    board.expect("highmem_test drv_highmem_get_len 0x10", "type: 16\n\nlen: 0x4000\n\n");
    board.expect("highmem_test drv_highmem_init", "no arg \ndrv_highmem_init ret:0\n\n");
    board.expect("highmem_test drv_highmem_exit", "no arg \ndrv_highmem_exit ret:0\n\n");
    const process_result run = board.run("highmem_test drv_highmem_get_base_addr 16");
    EXPECT_EQ(run.out.find("type: 16\n\nbase_addr: 0x"), 0U);
    EXPECT_EQ(run.out.find("base_addr: 0x0\n"), std::string::npos);
}
