// i2c_test: every sub-command on the real program, with the driver scripted, and the signals that the pattern test
// holds, on the simulated board.
#include <csignal>
#include <gtest/gtest.h>

#include "tests/modules/untimed.h"
#include "tests/support/failing_allocations.h"

using namespace kestro_tests;

namespace {

const std::string pass_line = "Test pass, i2c rw test\r\n";

// All that is asked for in the tests of the pattern: two bytes of a chip of the own board.
const std::string two_bytes = "(inst_id=0xffffffff, chip_id=3, address=16, length=2";

std::string read_gives(const std::string &bytes) {
    return "drv_i2c_read" + two_bytes + ") = 0 buffer=[" + bytes + "] x1\n";
}

std::string write_of(const std::string &bytes, const std::string &answer = "0") {
    return "drv_i2c_write" + two_bytes + ", buffer=[" + bytes + "]) = " + answer + " x1\n";
}

std::string read_fails(const std::string &code) {
    return "drv_i2c_read" + two_bytes + ") = " + code + " x1\n";
}

// A round in which the chip takes the pattern 0xabcd and gets back the bytes it had, 12 34.
std::string good_round() {
    return write_of("cd ab") + read_gives("cd ab") + write_of("12 34") + read_gives("12 34");
}

// The same line for bytes that count up from 0.
std::string lines_of_bytes(const std::string &row, uint32_t length) {
    std::string lines;
    for (uint32_t i = 0; i < length; ++i) {
        char text[80];
        snprintf(text, sizeof text, "%s address:[0x%x], value:[0x%x].\r\n", row.c_str(), i, i);
        lines += text;
    }
    return lines;
}

std::string bytes_from_0(uint32_t length) {
    std::string bytes;
    for (uint32_t i = 0; i < length; ++i) {
        char text[16];
        snprintf(text, sizeof text, "%02x ", i);
        bytes += text;
    }
    return bytes;
}

} // namespace

TEST(I2cTest, UsageListsTheSubCommandsInOrder) {
    expect_run("i2c_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " i2c_read inst_id chip_id address length<1-256>\n"
               " i2c_write inst_id chip_id address buffer length<1-256>\n"
               " i2c_rw_test inst_id chip_id reg_add testvalue1 testvalue2 len times \n",
               0);
}

TEST(I2cTest, ReadShowsEachByteWithItsAddress) {
    expect_untimed_success("i2c_test i2c_read 0xff000005 0x20 0x10 3",
                           "drv_i2c_read(inst_id=0xff000005, chip_id=32, address=16, length=3) = 0 buffer=[01 ab ff]",
                           "i2c_read address:[0x10], value:[0x1].\r\n"
                           "i2c_read address:[0x11], value:[0xab].\r\n"
                           "i2c_read address:[0x12], value:[0xff].\r\n");
    expect_untimed_success("i2c_test i2c_read 1 2 3 1 9 9",
                           "drv_i2c_read(inst_id=1, chip_id=2, address=3, length=1) = 0 buffer=[07]",
                           "i2c_read address:[0x3], value:[0x7].\r\n");
    expect_untimed_success("i2c_test i2c_read board chip here 2",
                           "drv_i2c_read(inst_id=0, chip_id=0, address=0, length=2) = 0 buffer=[07]",
                           "i2c_read address:[0x0], value:[0x7].\r\n"
                           "i2c_read address:[0x1], value:[0x0].\r\n");
    expect_untimed_success("i2c_test i2c_read 1 2 0xffffffff 2",
                           "drv_i2c_read(inst_id=1, chip_id=2, address=0xffffffff, length=2) = 0 buffer=[07 08]",
                           "i2c_read address:[0xffffffff], value:[0x7].\r\n"
                           "i2c_read address:[0x0], value:[0x8].\r\n");
}

TEST(I2cTest, ReadTakesOneTo256Bytes) {
    expect_untimed_success("i2c_test i2c_read 1 2 3 0",
                           "drv_i2c_read(inst_id=1, chip_id=2, address=3, length=1) = 0 buffer=[ee]",
                           "i2c_read address:[0x3], value:[0xee].\r\n");
    expect_untimed_success("i2c_test i2c_read 1 2 3 many",
                           "drv_i2c_read(inst_id=1, chip_id=2, address=3, length=1) = 0 buffer=[ee]",
                           "i2c_read address:[0x3], value:[0xee].\r\n");
    expect_untimed_success("i2c_test i2c_read 1 2 0 256",
                           "drv_i2c_read(inst_id=1, chip_id=2, address=0, length=256) = 0 buffer=[" +
                               bytes_from_0(256) + "]",
                           lines_of_bytes("i2c_read", 256));
    expect_untimed_failure("i2c_test i2c_read 1 2 3 257", "", "i2c_read length 257 is out of limit[1-256].\r\n");
    expect_untimed_failure("i2c_test i2c_read 1 2 3 0xffffffff", "",
                           "i2c_read length 4294967295 is out of limit[1-256].\r\n");
}

TEST(I2cTest, ReadThatFails) {
    expect_untimed_failure("i2c_test i2c_read 1 2 3 2",
                           "drv_i2c_read(inst_id=1, chip_id=2, address=3, length=2) = 0x811101a4 buffer=[01 02]",
                           "i2c_read fail, errorCode:0x811101a4.\r\n");
    expect_untimed_failure("i2c_test i2c_read", "", "i2c_read parameter number 0 is invalid.\r\n");
    expect_untimed_failure("i2c_test i2c_read 1 2 3", "", "i2c_read parameter number 3 is invalid.\r\n");
    expect_without_text_area("i2c_test i2c_read 1 2 3 4", "drv_i2c_read = 0",
                             operate_fail("i2c_read") + operate_fail("i2c_test"), 255);
}

TEST(I2cTest, WriteTakesAListOfBytes) {
    expect_untimed_success(
        "i2c_test i2c_write 0xff000005 0x20 0x10 0x12,0x34,56,67 4",
        "drv_i2c_write(inst_id=0xff000005, chip_id=32, address=16, buffer=[12 34 56 67], length=4) = 0",
        "\r\nInput str:0x12,0x34,56,67\r\n"
        "str[0], value=[0x12]\r\nstr[1], value=[0x34]\r\nstr[2], value=[0x56]\r\nstr[3], value=[0x67]\r\n"
        "i2c_write address:[0x10], value:[0x12].\r\n"
        "i2c_write address:[0x11], value:[0x34].\r\n"
        "i2c_write address:[0x12], value:[0x56].\r\n"
        "i2c_write address:[0x13], value:[0x67].\r\n");
    expect_untimed_success("i2c_test i2c_write 1 2 3 0x12,0x34,56,67 2 9",
                           "drv_i2c_write(inst_id=1, chip_id=2, address=3, buffer=[12 34], length=2) = 0",
                           "\r\nInput str:0x12,0x34,56,67\r\n"
                           "str[0], value=[0x12]\r\nstr[1], value=[0x34]\r\n"
                           "i2c_write address:[0x3], value:[0x12].\r\n"
                           "i2c_write address:[0x4], value:[0x34].\r\n");
    expect_untimed_success("i2c_test i2c_write board chip here ff 1",
                           "drv_i2c_write(inst_id=0, chip_id=0, address=0, buffer=[ff], length=1) = 0",
                           "\r\nInput str:ff\r\nstr[0], value=[0xff]\r\n"
                           "i2c_write address:[0x0], value:[0xff].\r\n");
}

// The last item stands for the place where the list ends, and is shown once more; the bytes behind it are 0.
TEST(I2cTest, WriteOfAListThatIsTooShort) {
    expect_untimed_success("i2c_test i2c_write 1 2 3 a,1b 4",
                           "drv_i2c_write(inst_id=1, chip_id=2, address=3, buffer=[0a 1b 00 00], length=4) = 0",
                           "\r\nInput str:a,1b\r\n"
                           "str[0], value=[0xa]\r\nstr[1], value=[0x1b]\r\nstr[1], value=[0x1b]\r\n"
                           "i2c_write address:[0x3], value:[0xa].\r\n"
                           "i2c_write address:[0x4], value:[0x1b].\r\n"
                           "i2c_write address:[0x5], value:[0x0].\r\n"
                           "i2c_write address:[0x6], value:[0x0].\r\n");
    expect_untimed_success("i2c_test i2c_write 1 2 3 '' 1",
                           "drv_i2c_write(inst_id=1, chip_id=2, address=3, buffer=[00], length=1) = 0",
                           "\r\nInput str:\r\nstr[0], value=[0x0]\r\n"
                           "i2c_write address:[0x3], value:[0x0].\r\n");
}

TEST(I2cTest, WriteTakesOneTo256Bytes) {
    const std::string one_byte = "\r\nInput str:ee,ff\r\nstr[0], value=[0xee]\r\n"
                                 "i2c_write address:[0x3], value:[0xee].\r\n";
    const std::string written = "drv_i2c_write(inst_id=1, chip_id=2, address=3, buffer=[ee], length=1) = 0";
    expect_untimed_success("i2c_test i2c_write 1 2 3 ee,ff 0", written, one_byte);
    expect_untimed_success("i2c_test i2c_write 1 2 3 ee,ff", written, one_byte);
    expect_untimed_failure("i2c_test i2c_write 1 2 3 ee 257", "", "i2c_write length 257 is out of limit[1-256].\r\n");
    expect_untimed_failure("i2c_test i2c_write 1 2 3 ee -1", "",
                           "i2c_write length 4294967295 is out of limit[1-256].\r\n");
    std::string list;
    std::string items;
    for (int i = 0; i < 256; ++i) {
        char text[64];
        snprintf(text, sizeof text, "%s%x", i == 0 ? "" : ",", i);
        list += text;
        snprintf(text, sizeof text, "str[%d], value=[0x%x]\r\n", i, i);
        items += text;
    }
    expect_untimed_success("i2c_test i2c_write 1 2 0 " + list + " 256",
                           "drv_i2c_write(inst_id=1, chip_id=2, address=0, buffer=[" + bytes_from_0(256) +
                               "], length=256) = 0",
                           "\r\nInput str:" + list + "\r\n" + items + lines_of_bytes("i2c_write", 256));
}

TEST(I2cTest, WriteThatFails) {
    expect_untimed_failure("i2c_test i2c_write 1 2 3 4,5 2",
                           "drv_i2c_write(inst_id=1, chip_id=2, address=3, buffer=[04 05], length=2) = 0x12",
                           "\r\nInput str:4,5\r\nstr[0], value=[0x4]\r\nstr[1], value=[0x5]\r\n"
                           "i2c_write fail, errorCode:0x12.\r\n");
    expect_untimed_failure("i2c_test i2c_write", "", "i2c_write parameter number 0 is invalid.\r\n");
    expect_untimed_failure("i2c_test i2c_write 1 2 3", "", "i2c_write parameter number 3 is invalid.\r\n");
    expect_without_text_area("i2c_test i2c_write 1 2 3 4 1", "drv_i2c_write = 0",
                             operate_fail("i2c_write") + operate_fail("i2c_test"), 255);
}

TEST(I2cTest, RwTestWritesThePatternAndPutsBack) {
    expect_untimed_success("i2c_test i2c_rw_test 3 0x10 0xabcd 2 1", read_gives("12 34") + good_round(), pass_line);
    expect_untimed_success("i2c_test i2c_rw_test 3 0x10 0xabcd 2 2", read_gives("12 34") + good_round() + good_round(),
                           pass_line);
    expect_untimed_success("i2c_test i2c_rw_test 3 0x10 0xabcd 2 0", read_gives("12 34"), pass_line);
    expect_untimed_success("i2c_test i2c_rw_test -1 3 0x10 0xabcd 2 0 9 9", read_gives("12 34"), pass_line);
    expect_untimed_success("i2c_test i2c_rw_test 5 board chip value 4 1",
                           "drv_i2c_read(inst_id=5, chip_id=0, address=0, length=4) = 0 buffer=[78 56 34 12] x1\n"
                           "drv_i2c_write(inst_id=5, chip_id=0, address=0, length=4, buffer=[00 00 00 00]) = 0\n"
                           "drv_i2c_read(inst_id=5, chip_id=0, address=0, length=4) = 0 buffer=[00 00 00 00] x1\n"
                           "drv_i2c_write(inst_id=5, chip_id=0, address=0, length=4, buffer=[78 56 34 12]) = 0\n"
                           "drv_i2c_read(inst_id=5, chip_id=0, address=0, length=4) = 0 buffer=[78 56 34 12] x1",
                           pass_line);
}

TEST(I2cTest, RwTestWithTooFewWords) {
    expect_untimed_failure("i2c_test i2c_rw_test", "", "Test fail, i2c_write parameter number 0 is invalid.\r\n");
    expect_untimed_failure("i2c_test i2c_rw_test 1 2 3 4", "",
                           "Test fail, i2c_write parameter number 4 is invalid.\r\n");
}

TEST(I2cTest, RwTestEndsWhereTheChipCannotBeRead) {
    expect_untimed_failure("i2c_test i2c_rw_test 3 0x10 0xabcd 2 5", read_fails("0x811101a4"),
                           "Test fail, errorCode:0x811101a4.times:0\r\n");
    expect_untimed_failure("i2c_test i2c_rw_test 3 0x10 0xabcd 2 5",
                           read_gives("12 34") + write_of("cd ab") + read_fails("0x12"),
                           "Test fail, errorCode:0x12.times:0\r\n" + pass_line);
    expect_untimed_failure("i2c_test i2c_rw_test 3 0x10 0xabcd 2 5",
                           read_gives("12 34") + good_round() + write_of("cd ab") + read_gives("cd ab") +
                               write_of("12 34") + read_fails("0x12"),
                           "Test fail, errorCode:0x12.times:1\r\n" + pass_line);
}

// The line at the end says "pass" all the same, and the command succeeds.
TEST(I2cTest, RwTestTellsOfAMismatchAndPasses) {
    expect_untimed_success("i2c_test i2c_rw_test 3 0x10 0xabcd 2 5",
                           read_gives("12 34") + write_of("cd ab") + read_gives("cd aa"),
                           "Test fail, write:0xabcd, read:0xaacd times:0x0" + pass_line);
    expect_untimed_success("i2c_test i2c_rw_test 3 0x10 0xabcd 2 50",
                           read_gives("12 34") + good_round() + write_of("cd ab") + read_gives("cd ab") +
                               write_of("12 34") + read_gives("13 34"),
                           "Test fail, write:0x3412, read:0x3413, times:1" + pass_line);
    std::string ten_rounds;
    for (int i = 0; i < 10; ++i) {
        ten_rounds += good_round();
    }
    expect_untimed_success("i2c_test i2c_rw_test 3 0x10 0xabcd 2 50",
                           read_gives("12 34") + ten_rounds + write_of("cd ab") + read_gives("00 00"),
                           "Test fail, write:0xabcd, read:0x0 times:0xa" + pass_line);
}

TEST(I2cTest, RwTestTellsOfAFailedWriteAndGoesOn) {
    expect_untimed_success("i2c_test i2c_rw_test 3 0x10 0xabcd 2 1",
                           read_gives("12 34") + write_of("cd ab", "0x811101a4") + read_gives("cd ab") +
                               write_of("12 34", "0x12") + read_gives("12 34"),
                           "Test fail, errorCode:0x811101a4.\r\nTest fail, errorCode:0x12.\r\n" + pass_line);
    expect_untimed_success("i2c_test i2c_rw_test 3 0x10 0xabcd 2 1",
                           read_gives("12 34") + write_of("cd ab", "0x12") + read_gives("12 34"),
                           "Test fail, errorCode:0x12.\r\n"
                           "Test fail, write:0xabcd, read:0x3412 times:0x0" +
                               pass_line);
}

// Four bytes of the value, lowest first, then zeros; behind 32 bytes it begins anew. Compared are the first four bytes.
TEST(I2cTest, RwTestPatternBeginsAnewEvery32Bytes) {
    const std::string call = "(inst_id=1, chip_id=2, address=3, length=38";
    const std::string zeros = "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00";
    const std::string saved = "a1 a2 a3 a4 " + zeros + " 00 00 00 00 00 b1";
    expect_untimed_success("i2c_test i2c_rw_test 1 2 3 0x04030201 38 1",
                           "drv_i2c_read" + call + ") = 0 buffer=[" + saved + "] x1\n" + "drv_i2c_write" + call +
                               ", buffer=[01 02 03 04 " + zeros + " 01 02 03 04 00 00]) = 0 x1\n" + "drv_i2c_read" +
                               call + ") = 0 buffer=[01 02 03 04 77] x1\n" + "drv_i2c_write" + call + ", buffer=[" +
                               saved + "]) = 0 x1\n" + "drv_i2c_read" + call + ") = 0 buffer=[a1 a2 a3 a4 88] x1",
                           pass_line);
}

// A value that does not fit into the bytes never comes back.
TEST(I2cTest, RwTestOfFewerBytesThanTheValueHas) {
    expect_untimed_success("i2c_test i2c_rw_test 1 2 3 0x1ff 1 1",
                           "drv_i2c_read(inst_id=1, chip_id=2, address=3, length=1) = 0 buffer=[55] x1\n"
                           "drv_i2c_write(inst_id=1, chip_id=2, address=3, length=1, buffer=[ff]) = 0 x1\n"
                           "drv_i2c_read(inst_id=1, chip_id=2, address=3, length=1) = 0 buffer=[ff] x1",
                           "Test fail, write:0x1ff, read:0xff times:0x0" + pass_line);
    expect_untimed_success("i2c_test i2c_rw_test 1 2 3 5 0 1",
                           "drv_i2c_read(inst_id=1, chip_id=2, address=3, length=0) = 0\n"
                           "drv_i2c_write(inst_id=1, chip_id=2, address=3, length=0) = 0",
                           "Test fail, write:0x5, read:0x0 times:0x0" + pass_line);
    expect_untimed_success("i2c_test i2c_rw_test 1 2 3 0 0 2",
                           "drv_i2c_read(inst_id=1, chip_id=2, address=3, length=0) = 0\n"
                           "drv_i2c_write(inst_id=1, chip_id=2, address=3, length=0) = 0",
                           pass_line);
}

// The three areas are the last things that the program allocates. Their lines have no end.
TEST(I2cTest, RwTestWithoutMemory) {
    if (lists_lines()) {
        return;
    }
    const std::string state = new_scratch_dir();
    const std::string script = scratch_file("script", "drv_i2c_read = 0\ndrv_i2c_write = 0\n");
    const auto run_without = [&](int allocation) {
        return run_sim(
            {"--state", state, "--clock", "virtual", "--script", script, "--fail-alloc", std::to_string(allocation)},
            {"i2c_test", "i2c_rw_test", "1", "2", "3", "0", "2", "1"});
    };
    int unchanged = 1024;
    ASSERT_EQ(run_without(unchanged).out, pass_line);
    for (int changed = 0; unchanged - changed > 1;) {
        const int middle = (changed + unchanged) / 2;
        (run_without(middle).out == pass_line ? unchanged : changed) = middle;
    }
    const std::string fails = operate_fail("i2c_rw_test") + operate_fail("i2c_test");
    EXPECT_EQ(run_without(unchanged - 1).out, "Test fail, malloc rx buf fail!" + fails);
    EXPECT_EQ(run_without(unchanged - 2).out, "Test fail, malloc tx buf2 fail!" + fails);
    EXPECT_EQ(run_without(unchanged - 3).out, "Test fail, malloc tx buf1 fail!" + fails);
    EXPECT_EQ(run_without(unchanged - 3).status, 255);
}

// A desk has room for areas that a board has not; there the chip refuses.
TEST(I2cTest, RwTestOfMoreBytesThanThereAre) {
    if (lists_lines()) {
        return;
    }
    const process_result result =
        run_sim({"--state", new_scratch_dir(), "--clock", "virtual"},
                {"i2c_test", "i2c_rw_test", "0xffffffff", "16", "0", "1", "4294967295", "4294967295"});
    const std::string fails = operate_fail("i2c_rw_test") + operate_fail("i2c_test");
    EXPECT_TRUE(result.out == "Test fail, errorCode:0x81110107.times:0\r\n" + fails ||
                result.out == "Test fail, malloc tx buf1 fail!" + fails ||
                result.out == "Test fail, malloc tx buf2 fail!" + fails ||
                result.out == "Test fail, malloc rx buf fail!" + fails)
        << result.out;
    EXPECT_EQ(result.status, 255);
}

namespace {

// What stands in the outputs of the second expander.
std::string chip_contents(const std::string &state) {
    return run_sim({"--state", state, "--clock", "virtual"}, {"i2c_test", "i2c_read", "-1", "1", "2", "2"}).out;
}

process_result interrupted(const std::string &state, const std::string &signals, const std::string &trace) {
    return run_sim({"--state", state, "--clock", "virtual", "--signal-call", signals, "--trace", trace},
                   {"i2c_test", "i2c_rw_test", "1", "2", "0x1234", "2", "4294967295"});
}

} // namespace

// The calls are: a read, then in each round a write and a read of the pattern, a write and a read of what was there.
TEST(I2cTest, RwTestPutsBackBeforeASignalEndsIt) {
    if (lists_lines()) {
        return;
    }
    struct signal_case {
        const char *call;
        int number;
        const char *last_call; // in the trace
    };
    const std::string state = new_scratch_dir();
    const std::string before = chip_contents(state);
    ASSERT_NE(before, "");
    const std::string bytes_before =
        "i2c_read address:[0x2], value:[0xff].\r\ni2c_read address:[0x3], value:[0xff].\r\n";
    ASSERT_EQ(before, bytes_before);
    for (const signal_case &one : {signal_case{"2", SIGINT, "buffer=[ff ff], length=2) = 0x0\n"},
                                   signal_case{"3", SIGINT, "buffer=[ff ff], length=2) = 0x0\n"},
                                   signal_case{"4=TERM", SIGTERM, "buffer=[ff ff], length=2) = 0x0\n"},
                                   signal_case{"103=HUP", SIGHUP, "buffer=[ff ff], length=2) = 0x0\n"}}) {
        const std::string trace = new_scratch_dir() + "/trace";
        const process_result result = interrupted(state, one.call, trace);
        EXPECT_EQ(result.status, 128 + one.number) << one.call;
        EXPECT_EQ(result.out, "") << one.call;
        EXPECT_TRUE(read_file(trace).ends_with(one.last_call)) << one.call << read_file(trace);
        EXPECT_EQ(chip_contents(state), before) << one.call;
    }
}

// Between two rounds there is nothing to put back; who presses twice does not wait.
TEST(I2cTest, RwTestEndsAtOnce) {
    if (lists_lines()) {
        return;
    }
    const std::string state = new_scratch_dir();
    const std::string before = chip_contents(state);
    EXPECT_EQ(interrupted(state, "5", new_scratch_dir() + "/trace").status, 128 + SIGINT);
    EXPECT_EQ(chip_contents(state), before);
    EXPECT_EQ(interrupted(state, "3,3", new_scratch_dir() + "/trace").status, 128 + SIGINT);
    EXPECT_EQ(chip_contents(state),
              "i2c_read address:[0x2], value:[0x34].\r\ni2c_read address:[0x3], value:[0x12].\r\n");
}

// A mismatch leaves the pattern, and the signal that came meanwhile ends the run behind its line.
TEST(I2cTest, RwTestEndsByTheSignalThatCameBeforeAMismatch) {
    if (lists_lines()) {
        return;
    }
    const process_result result =
        run_sim({"--state", new_scratch_dir(), "--clock", "virtual", "--signal-call", "3", "--script",
                 scratch_file("script", read_gives("12 34") + write_of("cd ab") + read_gives("00 00"))},
                {"i2c_test", "i2c_rw_test", "3", "0x10", "0xabcd", "2", "7"});
    EXPECT_EQ(result.out, "Test fail, write:0xabcd, read:0x0 times:0x0");
    EXPECT_EQ(result.status, 128 + SIGINT);
}
