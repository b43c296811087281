// The driver log: what is recorded, read, cleared and moved into a file, and who hears of it.
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"
#include "tests/support/simulator.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <thread>

namespace kestro_tests {

namespace {

const std::string busy = "0x8111010f\n";

test_board new_master() {
    return new_delivered("mpu_master");
}

std::string record(uint32_t log_id, const std::string &text) {
    return "drv_log_record(log_id=" + std::to_string(log_id) + ", level=2, text=\"" + text + "\")";
}

std::string numbered(int line) {
    return "line " + std::to_string(line);
}

// Lines of ten bytes, as they stand in the log.
std::string ten_byte_lines(int first, int last) {
    std::string lines;
    for (int line = first; line <= last; ++line) {
        lines += "2 " + numbered(line) + "\n";
    }
    return lines;
}

void record_numbered(const test_board &board, uint32_t log_id, int first, int last) {
    std::vector<std::string> calls;
    for (int line = first; line <= last; ++line) {
        calls.push_back(record(log_id, numbered(line)));
    }
    answers(board, calls);
}

// A state, and calls on it by the virtual clock with the board's files around them.
struct virtual_board {
    std::string state = new_scratch_dir() + "/state";

    std::string answers(const std::vector<std::string> &lines) const {
        return answers_of({"--state", state, "--clock", "virtual"}, lines);
    }
    std::string file(const std::string &path) const {
        return read_file(state + "/root/slot9" + path);
    }
};

size_t times_in(const std::string &text, const std::string &part) {
    size_t times = 0;
    for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++times;
    }
    return times;
}

const std::string target = "/opt/hostx/home/drv.log";

std::string transfer(const std::string &words) {
    return "drv_log_transfer(" + words + ")";
}

const std::string usual_transfer = transfer("core=0, time_slice=100, path=\"" + target + "\", max_size=4096");

} // namespace

TEST(DriverLog, IsReadFromItsOldestLine) {
    const test_board board = new_master();
    EXPECT_EQ(answers(board, {record(62, "one\\r\\n"), "drv_log_record(log_id=62, level=3, text=\"a\\nb\")",
                              "drv_log_read(log_id=62)", "drv_log_read(log_id=62)", "drv_log_read(log_id=1)"}),
              ok + ok + "0x0 buffer=\"2 one\\n3 a b\\n\" lines=2\n" + "0x0 buffer=\"2 one\\n3 a b\\n\" lines=2\n" +
                  "0x0 buffer=\"\" lines=0\n");
    // Another board has logs of its own.
    EXPECT_EQ(answers(seen_from(board, "mpu_slave"), {"drv_log_read(log_id=62)"}), "0x0 buffer=\"\" lines=0\n");
}

// "2 one" with its line end takes six bytes, and a terminator stands behind it.
TEST(DriverLog, IsReadInWholeLines) {
    const test_board board = new_master();
    EXPECT_EQ(answers(board, {record(1, "one"), record(1, "three"), "drv_log_read(log_id=1, len=15)",
                              "drv_log_read(log_id=1, len=14)", "drv_log_read(log_id=1, len=7)",
                              "drv_log_read(log_id=1, len=6)", "drv_log_read(log_id=1, len=0)",
                              "drv_log_read(log_id=0, len=1)", "drv_log_read(log_id=0, len=0)"}),
              ok + ok + "0x0 buffer=\"2 one\\n2 three\\n\" lines=2\n" + "0x0 buffer=\"2 one\\n\" lines=1\n" +
                  "0x0 buffer=\"2 one\\n\" lines=1\n" + too_small + too_small + "0x0 buffer=\"\" lines=0\n" +
                  too_small);
}

TEST(DriverLog, ClearingTakesOutWhatWasRead) {
    const test_board board = new_master();
    EXPECT_EQ(answers(board, {record(1, "one"), record(1, "two"), record(1, "three"),
                              "drv_log_read_clr(log_id=1, len=6)", "drv_log_read_clr(log_id=1, len=14)",
                              "drv_log_read(log_id=1)", "drv_log_read_clr(log_id=1)", "drv_log_read(log_id=1)",
                              "drv_log_read_clr(log_id=1)", record(1, "four"), "drv_log_read(log_id=1)"}),
              ok + ok + ok + too_small + "0x0 buffer=\"2 one\\n2 two\\n\" lines=2\n" +
                  "0x0 buffer=\"2 three\\n\" lines=1\n" + "0x0 buffer=\"2 three\\n\" lines=1\n" +
                  "0x0 buffer=\"\" lines=0\n" + "0x0 buffer=\"\" lines=0\n" + ok +
                  "0x0 buffer=\"2 four\\n\" lines=1\n");
}

TEST(DriverLog, IsRegisteredBeforeItIsUsed) {
    const test_board board = new_master();
    EXPECT_EQ(answers(board, {record(5, "x"), "drv_log_read(log_id=5)", "drv_log_read_clr(log_id=5)",
                              "drv_log_deregister(log_id=5)", "drv_log_register(log_id=5, name=\"mymod\", size=8192)",
                              record(5, "y"), "drv_log_read(log_id=5)"}),
              no_such_device + no_such_device + no_such_device + no_such_device + ok + ok +
                  "0x0 buffer=\"2 y\\n\" lines=1\n");
    // Another run finds it; taken back, it forgets its lines.
    EXPECT_EQ(answers(board, {"drv_log_read(log_id=5)", "drv_log_deregister(log_id=5)", "drv_log_read(log_id=5)",
                              "drv_log_register(log_id=5, name=\"other\", size=256)", "drv_log_read(log_id=5)"}),
              "0x0 buffer=\"2 y\\n\" lines=1\n" + ok + no_such_device + ok + "0x0 buffer=\"\" lines=0\n");
}

TEST(DriverLog, RegistrationsThatAreRefused) {
    const test_board board = new_master();
    const auto call = [](const std::string &id, const std::string &name, const std::string &size) {
        return "drv_log_register(log_id=" + id + ", name=" + name + ", size=" + size + ")";
    };
    EXPECT_EQ(answers(board, {call("5", "null", "8192"), call("256", "\"mymod\"", "8192"), call("5", "\"\"", "8192"),
                              call("5", "\"a/b\"", "8192"), call("5", "\"..\"", "8192"), call("5", "\"a b\"", "8192"),
                              call("5", "\"" + std::string(32, 'n') + "\"", "8192"), call("5", "\"mymod\"", "255"),
                              call("5", "\"mymod\"", "1048577"), call("5", "\"fan_mng\"", "8192"),
                              call("17", "\"mymod\"", "8192"), "drv_log_deregister(log_id=17)",
                              "drv_log_deregister(log_id=256)", "drv_log_read(log_id=256)"}),
              null_pointer + bad_value + bad_value + bad_value + bad_value + bad_value + bad_value + bad_value +
                  bad_value + bad_value + bad_value + bad_value + bad_value + bad_value);
    // The same name once more is a new size, for the drivers' own logs too.
    EXPECT_EQ(answers(board, {call("255", "\"" + std::string(31, 'n') + "\"", "1048576"),
                              call("255", "\"" + std::string(31, 'n') + "\"", "256"), call("17", "\"fan_mng\"", "256"),
                              "drv_log_read(log_id=255, buffer=null)", "drv_log_read(log_id=255, lines=null)"}),
              ok + ok + ok + null_pointer + null_pointer);
}

// 256 bytes hold 25 lines of ten. The 26th makes room: 12 whole lines of the newer half stay.
TEST(DriverLog, OldestLinesMakeRoom) {
    const test_board board = new_master();
    const std::string file = board.state + "/log/slot9/5.log";
    answers(board, {"drv_log_register(log_id=5, name=\"mymod\", size=256)"});
    record_numbered(board, 5, 10, 34);
    EXPECT_EQ(read_file(file), ten_byte_lines(10, 34).substr(0, 250));
    record_numbered(board, 5, 35, 35);
    EXPECT_EQ(read_file(file), ten_byte_lines(23, 35));
    record_numbered(board, 5, 36, 47);
    EXPECT_EQ(read_file(file), ten_byte_lines(23, 47));
    record_numbered(board, 5, 48, 49);
    EXPECT_EQ(read_file(file), ten_byte_lines(36, 49));
}

TEST(DriverLog, LongLinesAreCutToTheirLog) {
    const test_board board = new_master();
    const std::string file = board.state + "/log/slot9/5.log";
    answers(board, {"drv_log_register(log_id=5, name=\"mymod\", size=256)", record(5, "first"),
                    record(5, std::string(300, 'x'))});
    EXPECT_EQ(read_file(file), "2 " + std::string(253, 'x') + "\n");
    answers(board, {record(5, "next")});
    EXPECT_EQ(read_file(file), "2 next\n");
    // A smaller ring counts from the next line on.
    answers(board, {"drv_log_register(log_id=5, name=\"mymod\", size=1024)"});
    record_numbered(board, 5, 10, 59);
    answers(board, {"drv_log_register(log_id=5, name=\"mymod\", size=256)", record(5, "last 1")});
    EXPECT_EQ(read_file(file), ten_byte_lines(48, 59) + "2 last 1\n");
}

TEST(DriverLog, ManyProcessesWriteWholeLines) {
    const test_board board = new_master();
    std::vector<std::thread> writers;
    for (int writer = 1; writer <= 4; ++writer) {
        writers.emplace_back([&board, writer] { record_numbered(board, 1, 10 * writer, 10 * writer + 9); });
    }
    for (std::thread &each : writers) {
        each.join();
    }
    const std::string all = read_file(board.state + "/log/slot9/1.log");
    EXPECT_EQ(all.size(), 400U);
    for (int line = 10; line < 50; ++line) {
        EXPECT_EQ(times_in(all, ten_byte_lines(line, line)), 1U) << line;
    }
}

// Two logs take two slices; log 32 is that of another core.
TEST(LogTransfer, MovesALogInEachSlice) {
    const virtual_board board;
    EXPECT_EQ(board.answers({record(0, "base"),
                             record(17, "fan 1"),
                             record(17, "fan 2"),
                             record(32, "clock"),
                             usual_transfer,
                             "drv_log_transfer_status(mode=0)",
                             "drv_log_transfer_status(mode=1)",
                             "wait 0.099",
                             "drv_log_read(log_id=0)",
                             "wait 0.051",
                             "drv_log_read(log_id=0)",
                             "drv_log_read(log_id=17)",
                             "drv_log_transfer_status(mode=1)",
                             "wait 0.1",
                             "drv_log_read(log_id=17)",
                             "drv_log_transfer_status(mode=1)",
                             "drv_log_transfer_status(mode=0)",
                             record(0, "later"),
                             "wait 0.2",
                             "drv_log_read(log_id=0)",
                             "drv_log_read(log_id=32)"}),
              ok + ok + ok + ok + ok + "0x0 status=1\n0x0 status=2\n" + "0x0 buffer=\"2 base\\n\" lines=1\n" +
                  "0x0 buffer=\"\" lines=0\n" + "0x0 buffer=\"2 fan 1\\n2 fan 2\\n\" lines=2\n0x0 status=2\n" +
                  "0x0 buffer=\"\" lines=0\n0x0 status=1\n0x0 status=1\n" + ok + "0x0 buffer=\"\" lines=0\n" +
                  "0x0 buffer=\"2 clock\\n\" lines=1\n");
    EXPECT_EQ(board.file(target), "drv_log_base: 2 base\nfan_mng: 2 fan 1\nfan_mng: 2 fan 2\ndrv_log_base: 2 later\n");
    // It ended with its process; the file grows on with the next one.
    EXPECT_EQ(board.answers({"drv_log_transfer_status(mode=0)", "drv_log_transfer_status(mode=1)",
                             transfer("core=1, time_slice=1, path=\"" + target + "\", max_size=4096"), "wait 0.002"}),
              "0x0 status=0\n0x0 status=1\n" + ok);
    EXPECT_TRUE(board.file(target).ends_with("drv_log_base: 2 later\ndrv_log_rtc: 2 clock\n"));
}

// 43 bytes hold two lines of 21; what does not fit stays in its log.
TEST(LogTransfer, EndsWhenItsFileIsFull) {
    const virtual_board board;
    EXPECT_EQ(board.answers({"drv_log_transfer_status(mode=0)", "drv_log_transfer_status(mode=1)", record(0, "aaaa"),
                             record(0, "bbbb"), record(0, "cccc"),
                             transfer("core=0, time_slice=10, path=\"" + target + "\", max_size=43"), "wait 0.05",
                             "drv_log_transfer_status(mode=0)", "drv_log_transfer_status(mode=1)",
                             "drv_log_read(log_id=0)", usual_transfer, "wait 0.2", "drv_log_transfer_status(mode=1)"}),
              "0x0 status=0\n0x0 status=0\n" + ok + ok + ok + ok + "0x0 status=0\n0x0 status=3\n" +
                  "0x0 buffer=\"2 cccc\\n\" lines=1\n" + ok + "0x0 status=1\n");
    EXPECT_EQ(board.file(target), "drv_log_base: 2 aaaa\ndrv_log_base: 2 bbbb\ndrv_log_base: 2 cccc\n");
}

TEST(LogTransfer, WordsThatAreRefused) {
    const virtual_board board;
    EXPECT_EQ(board.answers({transfer("core=2, time_slice=100, path=\"/x\", max_size=1"),
                             transfer("core=8, time_slice=100, path=\"/x\", max_size=1"),
                             transfer("core=0, time_slice=0, path=\"" + target + "\", max_size=1"),
                             transfer("core=0, time_slice=3600001, path=\"" + target + "\", max_size=1"),
                             transfer("core=0, time_slice=100, path=\"" + target + "\", max_size=0"),
                             transfer("core=0, time_slice=100, path=\"drv.log\", max_size=1"),
                             transfer("core=0, time_slice=100, path=\"\", max_size=1"),
                             transfer("core=0, time_slice=100, path=null, max_size=1"),
                             transfer("core=0, time_slice=100, path=\"/opt/hostx/home\", max_size=1"),
                             transfer("core=0, time_slice=100, path=\"/opt/hostx/none/x\", max_size=1"),
                             transfer("core=0, time_slice=100, path=\"/dev/full\", max_size=1"),
                             "drv_log_transfer_status(mode=2)", "drv_log_transfer_status(mode=0, status=null)",
                             usual_transfer, usual_transfer}),
              no_such_device + no_such_device + bad_value + bad_value + bad_value + bad_value + bad_value +
                  null_pointer + bad_value + bad_value + bad_value + bad_value + null_pointer + ok + busy);
}

// The product stays alive, and other runs see its transfer until it is killed.
TEST(LogTransfer, OfAnotherProcess) {
    const std::string state = new_scratch_dir() + "/state";
    const auto from_beside = [&](const std::vector<std::string> &lines) {
        return answers_of({"--state", state}, lines);
    };
    from_beside({record(17, "fan")});
    std::string seen;
    process_options options;
    options.kill_when = [&] {
        if (from_beside({"drv_log_transfer_status(mode=0)"}) != "0x0 status=1\n") {
            return false;
        }
        seen = from_beside({usual_transfer});
        return true;
    };
    const process_result run =
        run_sim({"--state", state}, {"log_test", "log_transfer", "0", "1", target, "4096"}, options);
    EXPECT_FALSE(run.timed_out);
    EXPECT_EQ(seen, busy);
    EXPECT_EQ(from_beside({"drv_log_transfer_status(mode=0)"}), "0x0 status=0\n");
}

// The folder of the file goes while the transfer runs: the line stays where it was.
TEST(LogTransfer, WhoseFileCannotBeWrittenAnyMore) {
    const std::string state = new_scratch_dir() + "/state";
    const auto from_beside = [&](const std::vector<std::string> &lines) {
        return answers_of({"--state", state}, lines);
    };
    from_beside({"drv_log_read(log_id=17)"});
    const std::string folder = state + "/root/slot9/opt/hostx/gone";
    std::filesystem::create_directories(folder);
    process_options options;
    options.kill_when = [&] {
        if (std::filesystem::exists(folder) && from_beside({"drv_log_transfer_status(mode=0)"}) == "0x0 status=1\n") {
            std::filesystem::remove_all(folder);
            from_beside({record(17, "fan")});
        }
        return from_beside({"drv_log_transfer_status(mode=1)"}) == "0x0 status=4\n";
    };
    const process_result run =
        run_sim({"--state", state}, {"log_test", "log_transfer", "0", "1", "/opt/hostx/gone/drv.log", "4096"}, options);
    EXPECT_FALSE(run.timed_out);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(from_beside({"drv_log_read(log_id=17)", "drv_log_transfer_status(mode=0)"}),
              "0x0 buffer=\"2 fan\\n\" lines=1\n0x0 status=0\n");
}

// Hooks are called by the driver's thread, while the call that records waits for them.
TEST(LogHook, HearsWhatThisProcessRecords) {
    const virtual_board board;
    EXPECT_EQ(board.answers({record(1, "before"), "drv_log_hook_set(hook=callback)", record(1, "100%s"),
                             "drv_log_record(log_id=1, level=9, text=\"bad\")", "drv_log_hook_set(hook=null)",
                             record(1, "behind")}),
              "0x0\n0x0\n"
              "drv_log_record(log_id=1, level=2, flag=0, text=\"100%s\") ...\n"
              "# event: drv_log_hook(result=\"success\", text=\"100%s\")\n0x0\n"
              "drv_log_record(log_id=1, level=9, flag=0, text=\"bad\") ...\n"
              "# event: drv_log_hook(result=\"fail\", text=\"bad\")\n0x81110106\n"
              "0x0\n0x0\n");
    EXPECT_EQ(board.answers({"drv_log_read(log_id=1)", "drv_log_hook_set(hook=null)"}),
              "0x0 buffer=\"2 before\\n2 100%s\\n2 behind\\n\" lines=3\n0x0\n");
}

TEST(LogHook, ANewOneTakesThePlaceOfTheOneBefore) {
    const virtual_board board;
    const std::string said = board.answers({"drv_log_hook_set(hook=callback)", "drv_log_hook_set(hook=callback)",
                                            record(1, "one"), "drv_log_hook_set(hook=null)"});
    EXPECT_EQ(times_in(said, "# event: drv_log_hook("), 1U) << said;
}

TEST(SecurityLog, IsShownInTheBaseLog) {
    const test_board board = new_master();
    EXPECT_EQ(answers(board, {"drv_sec_log_show()", "drv_sec_log_record(text=\"login of root\\r\\n\")",
                              "drv_sec_log_record(text=\"100%s\")", "drv_sec_log_show()", "drv_log_read(log_id=0)"}),
              ok + ok + ok + ok +
                  "0x0 buffer=\"2 security log: 0 lines, 0 hooks\\n2 security log: 2 lines, 0 hooks\\n"
                  "2 security: login of root\\n2 security: 100%s\\n\" lines=4\n");
}

TEST(SecurityLog, HooksHearWhatThisProcessRecords) {
    const virtual_board board;
    const auto hook = [](const std::string &words) { return "drv_sec_log_hook_register(" + words + ")"; };
    const std::string said =
        board.answers({hook("log_id=0x11223344, name=\"slot3\", hook=callback"),
                       hook("log_id=1, name=\"one\", hook=callback"), hook("log_id=1, name=\"uno\", hook=callback"),
                       "drv_sec_log_record(text=\"login\")", "wait 1", "drv_sec_log_show()", "drv_log_read(log_id=0)",
                       hook("log_id=1, name=\"uno\", hook=null"), "drv_sec_log_record(text=\"again\")", "wait 1"});
    EXPECT_EQ(times_in(said, "# event: drv_sec_log_hook("), 3U) << said;
    EXPECT_EQ(times_in(said, "text=\"login\")\n"), 2U) << said;
    EXPECT_EQ(times_in(said, "text=\"again\")\n"), 1U) << said;
    EXPECT_EQ(times_in(said, "0x0 buffer=\"2 security log: 1 lines, 2 hooks\\n2 security hook 0x1 uno\\n"
                             "2 security hook 0x11223344 slot3\\n2 security: login\\n\" lines=4\n"),
              1U)
        << said;
}

TEST(SecurityLog, HooksThatAreRefused) {
    const test_board board = new_master();
    std::vector<std::string> calls{"drv_sec_log_hook_register(log_id=1, name=null, hook=callback)",
                                   "drv_sec_log_hook_register(log_id=1, name=\"\", hook=callback)",
                                   "drv_sec_log_hook_register(log_id=1, name=\"none\", hook=null)"};
    std::string expected = null_pointer + bad_value + no_such_device;
    for (int id = 1; id <= 8; ++id) {
        calls.push_back("drv_sec_log_hook_register(log_id=" + std::to_string(id) + ", name=\"h\", hook=callback)");
        expected += ok;
    }
    calls.emplace_back("drv_sec_log_hook_register(log_id=9, name=\"h\", hook=callback)");
    EXPECT_EQ(answers(board, calls), expected + "0x8111010b\n");
}

} // namespace kestro_tests
