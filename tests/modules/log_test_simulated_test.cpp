// log_test on the simulated chassis: the driver log, the board's files /dev/kestro_log, which are the same, and hooks.
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>

#include "tests/support/command.h"
#include "tests/support/test_lines.h"

using namespace kestro_tests;

namespace {

// A state of its own, by the virtual clock.
class log_board {
  public:
    process_result run(const std::string &line, const std::vector<std::string> &more = {}) const {
        std::vector<std::string> options = {"--state", state_, "--clock", "virtual"};
        options.insert(options.end(), more.begin(), more.end());
        return run_sim(options, split_words(line));
    }
    // What stands before the dispatcher's lines.
    std::string body(const std::string &line) const {
        const std::string out = run(line).out;
        return out.substr(0, out.find("cmd_exec used second:"));
    }
    // The text side of a dump of the first bytes of a file, as the product reads it.
    std::string dump(const std::string &path) const {
        return body("env_test read_file " + path + " 0 16");
    }
    const std::string &state() const {
        return state_;
    }

  private:
    std::string state_ = new_scratch_dir() + "/state";
};

std::string dump_of(const std::string &path, const std::string &row) {
    return "file_name=" + path + "\noffset=0x0\nlen=16\n\n0x00000000~0000000f: " + row + "\n\n";
}

} // namespace

TEST(LogTestSimulated, LinesAreWrittenReadAndCleared) {
    if (lists_lines()) {
        return;
    }
    const log_board board;
    EXPECT_EQ(board.body("log_test write_log 17 2 'fan 1 stalls'"), "");
    EXPECT_EQ(board.body("log_test write_log 17 1 100%s"), "");
    EXPECT_EQ(board.body("log_test read_log 17 64"), "read_line:2\r\n2 fan 1 stalls\n1 100%s\n\r\n");
    EXPECT_EQ(board.body("log_test read_log 17 17"), "read_line:1\r\n2 fan 1 stalls\n\r\n");
    EXPECT_EQ(board.body("log_test read_log_with_clean 17 17"), "read_line:1\r\n2 fan 1 stalls\n\r\n");
    EXPECT_EQ(board.body("log_test read_log 17 64"), "read_line:1\r\n1 100%s\n\r\n");
    EXPECT_EQ(board.body("log_test read_log_with_clean 17 64"), "read_line:1\r\n1 100%s\n\r\n");
    EXPECT_EQ(board.body("log_test read_log_with_clean 17 64"), "read_line:0\r\n\r\n");
    EXPECT_EQ(board.body("log_test read_log 17 0"), "drv_log_read failure\r\n");
    EXPECT_EQ(board.body("log_test read_log 5 64"), "drv_log_read failure\r\n");
}

// What drivers record is read in the board's files, and what is cleared is gone from there.
TEST(LogTestSimulated, FilesOfTheBoardAreTheDriverLog) {
    if (lists_lines()) {
        return;
    }
    const log_board board;
    const std::string path = "/dev/kestro_log/fan_mng";
    const std::string nothing = "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00   ................";
    EXPECT_EQ(board.dump(path), dump_of(path, nothing));
    board.run("log_test write_log 17 2 fan");
    EXPECT_EQ(board.dump(path), dump_of(path, "32 20 66 61 6e 0a 00 00 00 00 00 00 00 00 00 00   2 fan..........."));
    board.run("log_test read_log_with_clean 17 64");
    EXPECT_EQ(board.dump(path), dump_of(path, nothing));
    // The other board's log is another one, and a name that nobody registered is no file.
    board.run("log_test write_log 17 2 fan");
    const std::string slave = run_sim({"--state", board.state(), "--board", "mpu_slave", "--clock", "virtual"},
                                      split_words("env_test read_file " + path + " 0 16"))
                                  .out;
    EXPECT_EQ(slave.substr(0, slave.find("cmd_exec")), dump_of(path, nothing));
    EXPECT_NE(board.dump("/dev/kestro_log/mymod").find("No such file or directory"), std::string::npos);
}

TEST(LogTestSimulated, RegisteredLogsAreFilesOfTheBoardToo) {
    if (lists_lines()) {
        return;
    }
    const log_board board;
    const std::string path = "/dev/kestro_log/mymod";
    EXPECT_EQ(board.run("log_test log_regist 5 mymod").status, 0);
    board.run("log_test write_log 5 3 x");
    EXPECT_EQ(board.dump(path), dump_of(path, "33 20 78 0a 00 00 00 00 00 00 00 00 00 00 00 00   3 x............."));
    EXPECT_EQ(board.run("log_test log_deregist 5").status, 0);
    EXPECT_NE(board.dump(path).find("No such file or directory"), std::string::npos);
    EXPECT_EQ(board.run("log_test log_deregist 5").status, 255);
}

// A file that somebody put into the board's root stands in front of the log of its name.
TEST(LogTestSimulated, AFileOfTheRootStandsInFront) {
    if (lists_lines()) {
        return;
    }
    const log_board board;
    board.run("log_test write_log 17 2 fan");
    const std::string folder = board.state() + "/root/slot9/dev/kestro_log";
    std::filesystem::create_directories(folder);
    write_file(folder + "/fan_mng", "by hand");
    EXPECT_EQ(board.dump("/dev/kestro_log/fan_mng"),
              dump_of("/dev/kestro_log/fan_mng", "62 79 20 68 61 6e 64 00 00 00 00 00 00 00 00 00   by hand........."));
    EXPECT_EQ(board.body("log_test read_log 17 64"), "read_line:1\r\n2 fan\n\r\n");
}

TEST(LogTestSimulated, TransferOfARunThatIsEnded) {
    if (lists_lines()) {
        return;
    }
    const log_board board;
    board.run("log_test write_log 17 2 fan");
    board.run("log_test write_log 0 2 base");
    EXPECT_EQ(board.body("log_test log_transfer_status 1"), "status:0x0\r\n");
    const std::string file = board.state() + "/root/slot9/opt/hostx/home/drv.log";
    process_options options;
    options.kill_when = [&] { return read_file(file) == "drv_log_base: 2 base\nfan_mng: 2 fan\n"; };
    const process_result run = run_sim({"--state", board.state()},
                                       split_words("log_test log_transfer 0 5 /opt/hostx/home/drv.log 4096"), options);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 128 + SIGKILL);
    EXPECT_FALSE(run.timed_out);
    EXPECT_EQ(board.body("log_test log_transfer_status 0"), "status:0x0\r\n");
    EXPECT_EQ(board.body("log_test log_transfer 9 5 /opt/hostx/home/drv.log 4096"),
              "./kestro_test log_test log_transfer failure\r\n");
    EXPECT_EQ(board.body("log_test log_transfer_status 2"), "drv_log_transfer_status failure \r\n");
}

// The hook is called by a thread of the driver: its line comes before or behind those of the test, in one piece.
TEST(LogTestSimulated, HookTestShowsItsLine) {
    if (lists_lines()) {
        return;
    }
    for (const char *clock : {"real", "virtual"}) {
        const log_board board;
        process_options options;
        options.interrupt_at = {"wait for ctrl+c\n"};
        const process_result run =
            run_sim({"--state", board.state(), "--clock", clock}, {"log_test", "log_test_hook"}, options);
        EXPECT_EQ(run.out.substr(0, run.out.find("cmd_exec used second:")),
                  "enter\nresult=success, log=test_log\nwait for ctrl+c\n"
                  "intr_test_signal_handler exit, sig_no=2\nexit\n")
            << clock;
        EXPECT_EQ(run.err, "") << clock;
        EXPECT_EQ(run.status, 0) << clock;
        EXPECT_EQ(board.body("log_test read_log 10 64"), "read_line:1\r\n2 test_log\n\r\n") << clock;
    }
}

TEST(LogTestSimulated, SecurityLogIsShownInTheBaseLog) {
    if (lists_lines()) {
        return;
    }
    const log_board board;
    EXPECT_EQ(board.run("log_test drv_sec_log_record 'login of root'").status, 0);
    EXPECT_EQ(board.run("log_test drv_sec_log_hook_register").status, 0);
    EXPECT_EQ(board.run("log_test drv_sec_log_show").status, 0);
    EXPECT_EQ(board.body("log_test read_log 0 128"),
              "read_line:2\r\n2 security log: 1 lines, 0 hooks\n2 security: login of root\n\r\n");
}
