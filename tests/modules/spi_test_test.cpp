// spi_test: every sub-command on the real program, with the driver scripted; waits and loops on the simulated board.
#include <gtest/gtest.h>

#include "tests/modules/untimed.h"

using namespace kestro_tests;

namespace {

// The virtual clock of a new board.
const std::string time_line = "2026-01-15 08:00:00\n";

std::string bus(const std::string &inst_id, const std::string &calls) {
    return "drv_spi_init(inst_id=" + inst_id + ") = 0\n" + calls + "\ndrv_spi_exit(inst_id=" + inst_id + ") = 0\n";
}

std::string card_bus(const std::string &inst_id, const std::string &calls) {
    return "drv_cpld_init_usr_data_pool(inst_id=" + inst_id + ") = 0\n" + bus(inst_id, calls) +
           "drv_cpld_exit_usr_data_pool(inst_id=" + inst_id + ") = 0\n";
}

const std::string qoram_line = "drv_spi_read:[ret]:0 rxbuffer[0]:0x2,rxbuffer[1]:0x12,rxbuffer[2]:0x34,"
                               "rxbuffer[3]:0xab,rxbuffer[4]:0x0\r\n";

} // namespace

TEST(SpiTest, UsageListsTheSubCommandsInOrder) {
    expect_run("spi_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " spi_qoram_read\n"
               " spi_qoram_write\n"
               " spi_sa8009_read inst_id chip_id reg usleep\n"
               " spi_sa8009_write\n"
               " spi_qoram_read_test inst_id chip_id reg times\n"
               " spi_pic_cpld_read inst_id chip_id reg\n"
               " spi_pic_cpld_write inst_id chip_id reg value\n"
               " spi_pic_cpld_test inst_id chip_id times\n",
               0);
}

TEST(SpiTest, QoramRead) {
    expect_untimed_success(
        "spi_test spi_qoram_read 0xffffffff 16 0x01020304 100",
        bus("0xffffffff", "drv_spi_write(inst_id=0xffffffff, chip_id=16, frame=[84 00 00 01 02 03 04], length=7) = 0\n"
                          "drv_spi_read(inst_id=0xffffffff, chip_id=16, command=[c4], command_length=1, length=5) = 0 "
                          "buffer=[02 12 34 ab 00]"),
        qoram_line);
    expect_untimed_success("spi_test spi_qoram_read board chip reg delay 9",
                           bus("0", "drv_spi_write(inst_id=0, chip_id=0, frame=[84 00 00 00 00 00 00], length=7) = 0\n"
                                    "drv_spi_read(inst_id=0, chip_id=0, command=[c4], command_length=1, length=5) = 0"),
                           "drv_spi_read:[ret]:0 rxbuffer[0]:0x0,rxbuffer[1]:0x0,rxbuffer[2]:0x0,rxbuffer[3]:0x0,"
                           "rxbuffer[4]:0x0\r\n");
    // The longest delay, 71 minutes.
    expect_untimed_success("spi_test spi_qoram_read 1 2 0xfffefdfc -1",
                           bus("1", "drv_spi_write(inst_id=1, chip_id=2, frame=[84 00 00 ff fe fd fc], length=7) = 0\n"
                                    "drv_spi_read(inst_id=1, chip_id=2, command=[c4], command_length=1, length=5) = 0 "
                                    "buffer=[02 12 34 ab 00]"),
                           qoram_line);
}

// The answer of the bring-up, and of the request, is not looked at.
TEST(SpiTest, QoramReadThatFails) {
    expect_untimed_failure(
        "spi_test spi_qoram_read 1 2 3 0",
        bus("1", "drv_spi_write(inst_id=1, chip_id=2, frame=[84 00 00 00 00 00 03], length=7) = 0\n"
                 "drv_spi_read(inst_id=1, chip_id=2, command=[c4], command_length=1, length=5) = 0x811101a4"),
        "drv_spi_read:[ret]:-2129591900 rxbuffer[0]:0x0,rxbuffer[1]:0x0,rxbuffer[2]:0x0,rxbuffer[3]:0x0,"
        "rxbuffer[4]:0x0\r\n");
    expect_untimed_success("spi_test spi_qoram_read 1 2 3 0",
                           "drv_spi_init(inst_id=1) = 0x11\n"
                           "drv_spi_write(inst_id=1, chip_id=2, frame=[84 00 00 00 00 00 03], length=7) = 0x12\n"
                           "drv_spi_read(inst_id=1, chip_id=2, command=[c4], command_length=1, length=5) = 0 "
                           "buffer=[02 12 34 ab 00]\n"
                           "drv_spi_exit(inst_id=1) = 0x13",
                           qoram_line);
    expect_untimed_failure("spi_test spi_qoram_read", "", "");
    expect_untimed_failure("spi_test spi_qoram_read 1 2 3", "", "");
}

TEST(SpiTest, QoramWrite) {
    expect_untimed_success("spi_test spi_qoram_write 0xffffffff 16 0x01020304 0xfffefdfc 9",
                           bus("0xffffffff", "drv_spi_write(inst_id=0xffffffff, chip_id=16, "
                                             "frame=[04 00 00 01 02 03 04 ff fe fd fc], length=11) = 0"),
                           "drv_spi_write:[ret]:0\r\n");
    expect_untimed_success(
        "spi_test spi_qoram_write board chip reg value",
        bus("0", "drv_spi_write(inst_id=0, chip_id=0, frame=[04 00 00 00 00 00 00 00 00 00 00], length=11) = 0"),
        "drv_spi_write:[ret]:0\r\n");
    expect_untimed_failure(
        "spi_test spi_qoram_write 1 2 3 4",
        bus("1",
            "drv_spi_write(inst_id=1, chip_id=2, frame=[04 00 00 00 00 00 03 00 00 00 04], length=11) = 0x811101a4"),
        "drv_spi_write:[ret]:-2129591900\r\n");
    expect_untimed_failure("spi_test spi_qoram_write", "", "");
    expect_untimed_failure("spi_test spi_qoram_write 1 2 3", "", "");
}

TEST(SpiTest, Sa8009Read) {
    expect_untimed_success("spi_test spi_sa8009_read 0xffffffff 17 0x01020304 100 9",
                           bus("0xffffffff", "drv_spi_read(inst_id=0xffffffff, chip_id=17, "
                                             "command=[81 01 01 02 03 04], command_length=6, length=12) = 0 "
                                             "buffer=[00 01 02 03 04 05 06 07 08 09 0a ff]"),
                           "drv_spi_read:[ret]:0\r\n"
                           "rxbuff[0]:0x0\r\nrxbuff[1]:0x1\r\nrxbuff[2]:0x2\r\nrxbuff[3]:0x3\r\n"
                           "rxbuff[4]:0x4\r\nrxbuff[5]:0x5\r\nrxbuff[6]:0x6\r\nrxbuff[7]:0x7\r\n"
                           "rxbuff[8]:0x8\r\nrxbuff[9]:0x9\r\nrxbuff[10]:0xa\r\nrxbuff[11]:0xff\r\n");
    const std::string zeros = "rxbuff[0]:0x0\r\nrxbuff[1]:0x0\r\nrxbuff[2]:0x0\r\nrxbuff[3]:0x0\r\n"
                              "rxbuff[4]:0x0\r\nrxbuff[5]:0x0\r\nrxbuff[6]:0x0\r\nrxbuff[7]:0x0\r\n"
                              "rxbuff[8]:0x0\r\nrxbuff[9]:0x0\r\nrxbuff[10]:0x0\r\nrxbuff[11]:0x0\r\n";
    expect_untimed_success(
        "spi_test spi_sa8009_read board chip reg",
        bus("0", "drv_spi_read(inst_id=0, chip_id=0, command=[81 01 00 00 00 00], command_length=6, length=12) = 0"),
        "drv_spi_read:[ret]:0\r\n" + zeros);
    expect_untimed_failure(
        "spi_test spi_sa8009_read 1 2 3",
        bus("1", "drv_spi_read(inst_id=1, chip_id=2, command=[81 01 00 00 00 03], command_length=6, length=12) = 0x12"),
        "drv_spi_read:[ret]:18\r\n" + zeros);
    expect_untimed_failure("spi_test spi_sa8009_read", "", "");
    expect_untimed_failure("spi_test spi_sa8009_read 1 2", "", "");
}

TEST(SpiTest, Sa8009Write) {
    expect_untimed_success("spi_test spi_sa8009_write 0xffffffff 17 0x01020304 0xfffefdfc 9",
                           bus("0xffffffff", "drv_spi_write(inst_id=0xffffffff, chip_id=17, "
                                             "frame=[82 01 01 02 03 04 ff fe fd fc], length=10) = 0"),
                           "drv_spi_write:[ret]:0\r\n");
    expect_untimed_success(
        "spi_test spi_sa8009_write board chip reg value",
        bus("0", "drv_spi_write(inst_id=0, chip_id=0, frame=[82 01 00 00 00 00 00 00 00 00], length=10) = 0"),
        "drv_spi_write:[ret]:0\r\n");
    expect_untimed_failure(
        "spi_test spi_sa8009_write 1 2 3 4",
        bus("1", "drv_spi_write(inst_id=1, chip_id=2, frame=[82 01 00 00 00 03 00 00 00 04], length=10) = 0x12"),
        "drv_spi_write:[ret]:18\r\n");
    expect_untimed_failure("spi_test spi_sa8009_write", "", "");
    expect_untimed_failure("spi_test spi_sa8009_write 1 2 3", "", "");
}

TEST(SpiTest, PicCpldRead) {
    expect_untimed_success("spi_test spi_pic_cpld_read 0xffffffff 5 0x1b02 9",
                           card_bus("0xffffffff",
                                    "drv_spi_read(inst_id=0xffffffff, chip_id=5, command=[02 1b], command_length=2, "
                                    "length=2) = 0 buffer=[cd 0a]"),
                           "drv_spi_read:[ret]:0 rxbuffer[0]:0xcd,rxbuffer[1]:0xa\r\n");
    expect_untimed_success("spi_test spi_pic_cpld_read board chip reg",
                           card_bus("0", "drv_spi_read(inst_id=0, chip_id=0, command=[00 00], command_length=2, "
                                         "length=2) = 0"),
                           "drv_spi_read:[ret]:0 rxbuffer[0]:0x0,rxbuffer[1]:0x0\r\n");
    expect_untimed_failure("spi_test spi_pic_cpld_read 1 2 0x12349b02",
                           card_bus("1", "drv_spi_read(inst_id=1, chip_id=2, command=[02 9b], command_length=2, "
                                         "length=2) = 0x811101a4"),
                           "drv_spi_read:[ret]:-2129591900 rxbuffer[0]:0x0,rxbuffer[1]:0x0\r\n");
    expect_untimed_failure("spi_test spi_pic_cpld_read", "", "");
    expect_untimed_failure("spi_test spi_pic_cpld_read 1 2", "", "");
}

// The number of the register has 15 bits, the value 16.
TEST(SpiTest, PicCpldWrite) {
    expect_untimed_success(
        "spi_test spi_pic_cpld_write 0xffffffff 5 0x1b02 0xabcd 9",
        card_bus("0xffffffff", "drv_spi_write(inst_id=0xffffffff, chip_id=5, frame=[02 9b cd ab], length=4) = 0"),
        "drv_spi_write:[ret]:0\r\n");
    expect_untimed_success("spi_test spi_pic_cpld_write board chip reg value",
                           card_bus("0", "drv_spi_write(inst_id=0, chip_id=0, frame=[00 80 00 00], length=4) = 0"),
                           "drv_spi_write:[ret]:0\r\n");
    expect_untimed_failure("spi_test spi_pic_cpld_write 1 2 0x1234ff02 0x56781234",
                           card_bus("1", "drv_spi_write(inst_id=1, chip_id=2, frame=[02 ff 34 12], length=4) = 0x12"),
                           "drv_spi_write:[ret]:18\r\n");
    expect_untimed_failure("spi_test spi_pic_cpld_write", "", "");
    expect_untimed_failure("spi_test spi_pic_cpld_write 1 2 3", "", "");
}

TEST(SpiTest, TheBusIsOpenedFirstAndClosedLast) {
    if (lists_lines()) {
        return;
    }
    EXPECT_EQ(calls_in_order("spi_test spi_qoram_read -1 16 0 0", ""),
              "drv_spi_init drv_spi_write drv_spi_read drv_spi_exit ");
    EXPECT_EQ(calls_in_order("spi_test spi_qoram_write -1 16 5 0", ""), "drv_spi_init drv_spi_write drv_spi_exit ");
    EXPECT_EQ(calls_in_order("spi_test spi_sa8009_read -1 17 0", ""), "drv_spi_init drv_spi_read drv_spi_exit ");
    EXPECT_EQ(calls_in_order("spi_test spi_sa8009_write -1 17 0 0", ""), "drv_spi_init drv_spi_write drv_spi_exit ");
    EXPECT_EQ(calls_in_order("spi_test spi_qoram_read_test -1 16 0 1", ""),
              "drv_spi_init drv_spi_write drv_spi_read drv_spi_write drv_spi_read drv_spi_exit ");
    EXPECT_EQ(calls_in_order("spi_test spi_qoram_read_test -1 16 0 9", "drv_spi_read = 5"),
              "drv_spi_init drv_spi_write drv_spi_read drv_spi_exit ");
    const std::string open = "drv_cpld_init_usr_data_pool drv_spi_init ";
    const std::string close = "drv_spi_exit drv_cpld_exit_usr_data_pool ";
    EXPECT_EQ(calls_in_order("spi_test spi_pic_cpld_read -1 5 0", ""), open + "drv_spi_read " + close);
    EXPECT_EQ(calls_in_order("spi_test spi_pic_cpld_write -1 5 0 0", ""), open + "drv_spi_write " + close);
    EXPECT_EQ(calls_in_order("spi_test spi_pic_cpld_test -1 5 2", ""),
              open + "drv_spi_write drv_spi_read drv_spi_write drv_spi_read " + close);
    EXPECT_EQ(calls_in_order("spi_test spi_pic_cpld_test -1 5 2", "drv_spi_read = 5"),
              open + "drv_spi_write drv_spi_read " + close);
}

namespace {

std::string request_for(const std::string &address) {
    return "drv_spi_write(inst_id=1, chip_id=2, frame=[84 00 00 " + address + "], length=7) = 0 x1\n";
}

std::string answer_of(const std::string &bytes, const std::string &code = "0") {
    return "drv_spi_read(inst_id=1, chip_id=2, command=[c4], command_length=1, length=5) = " + code + " buffer=[" +
           bytes + "] x1\n";
}

} // namespace

// The register asked for, then the one at 5; from the second round on both are that.
TEST(SpiTest, QoramReadTestStaysAtTheSecondRegister) {
    begin_new_board();
    expect_untimed_success("spi_test spi_qoram_read_test 1 2 0x01020304 1",
                           bus("1", request_for("01 02 03 04") + answer_of("02 01 02 03 04") +
                                        request_for("01 02 03 05") + answer_of("02 05 06 07 08")),
                           time_line + time_line);
    expect_untimed_success("spi_test spi_qoram_read_test 1 2 0x01020304 3 9",
                           bus("1", request_for("01 02 03 04") + answer_of("02 01 02 03 04") +
                                        request_for("01 02 03 05") + request_for("01 02 03 05") +
                                        request_for("01 02 03 05") + request_for("01 02 03 05") +
                                        request_for("01 02 03 05") + answer_of("02") + answer_of("02") +
                                        answer_of("02") + answer_of("02") + answer_of("02")),
                           time_line + time_line);
    expect_untimed_success("spi_test spi_qoram_read_test 1 2 3 0", bus("1", ""), time_line + time_line);
    expect_untimed_success("spi_test spi_qoram_read_test board chip reg times",
                           "drv_spi_init(inst_id=0) = 0\ndrv_spi_exit(inst_id=0) = 0", time_line + time_line);
}

TEST(SpiTest, QoramReadTestTellsTheRoundThatFailed) {
    begin_new_board();
    expect_untimed_failure("spi_test spi_qoram_read_test 1 2 0x01020304 5",
                           bus("1", request_for("01 02 03 04") + answer_of("03 01 02 03 04")),
                           time_line + "time 0 failed!");
    expect_untimed_failure("spi_test spi_qoram_read_test 1 2 0x01020304 5",
                           bus("1", request_for("01 02 03 04") + answer_of("02 01 02 03 04") +
                                        request_for("01 02 03 05") + answer_of("01 0a 0b 0c ff")),
                           time_line + "time 0 failed!rx[0]=0x1 rx[1]=0xa rx[2]=0xb rx[3]=0xc rx[4]=0xff");
    const std::string first_round = request_for("01 02 03 04") + answer_of("02 01 02 03 04") +
                                    request_for("01 02 03 05") + answer_of("02 05 06 07 08");
    expect_untimed_failure("spi_test spi_qoram_read_test 1 2 0x01020304 5",
                           bus("1", first_round + request_for("01 02 03 05") + answer_of("00")),
                           time_line + "time 1 failed!");
    expect_untimed_failure("spi_test spi_qoram_read_test 1 2 0x01020304 5",
                           bus("1", first_round + request_for("01 02 03 05") + answer_of("02 01 01 01 01") +
                                        request_for("01 02 03 05") + answer_of("12")),
                           time_line + "time 1 failed!rx[0]=0x12 rx[1]=0x1 rx[2]=0x1 rx[3]=0x1 rx[4]=0x1");
}

// A read that gives nothing: the first of a round is judged by a cleared byte, the second by what the first one left.
// The code of the last read is that of the command, though no round failed.
TEST(SpiTest, QoramReadTestWithAReadThatFails) {
    begin_new_board();
    const std::string fails =
        "drv_spi_read(inst_id=1, chip_id=2, command=[c4], command_length=1, length=5) = 0x811101a4 x1\n";
    expect_untimed_failure("spi_test spi_qoram_read_test 1 2 0x01020304 1",
                           bus("1", request_for("01 02 03 04") + fails), time_line + "time 0 failed!");
    expect_untimed_failure("spi_test spi_qoram_read_test 1 2 0x01020304 1",
                           bus("1", request_for("01 02 03 04") + answer_of("02") + request_for("01 02 03 05") + fails),
                           time_line + time_line);
    expect_untimed_failure("spi_test spi_qoram_read_test 1 2 0x01020304 2",
                           bus("1", request_for("01 02 03 04") + answer_of("02") + request_for("01 02 03 05") + fails +
                                        request_for("01 02 03 05") + fails),
                           time_line + "time 1 failed!");
}

TEST(SpiTest, QoramReadTestShowsTheTimeBeforeItCountsItsWords) {
    begin_new_board();
    expect_untimed_failure("spi_test spi_qoram_read_test", "", time_line);
    expect_untimed_failure("spi_test spi_qoram_read_test 1 2 3", "", time_line);
}

TEST(SpiTest, TimesAreLocal) {
    if (lists_lines()) {
        return;
    }
    process_options east;
    east.environment = {"TZ=EAST-5:30"};
    const process_result result = run_sim({"--state", new_scratch_dir(), "--clock", "virtual"},
                                          {"spi_test", "spi_qoram_read_test", "-1", "16", "0x10", "2"}, east);
    EXPECT_EQ(result.out, "2026-01-15 13:30:00\n2026-01-15 13:30:00\n");
    EXPECT_EQ(result.status, 0);
}

namespace {

std::string count_through(const std::string &counter, const std::string &found) {
    return "drv_spi_write(inst_id=1, chip_id=2, frame=[00 9b " + counter + "], length=4) = 0 x1\n" +
           "drv_spi_read(inst_id=1, chip_id=2, command=[00 1b], command_length=2, length=2) = 0 buffer=[" + found +
           "] x1\n";
}

} // namespace

TEST(SpiTest, PicCpldTestCountsThroughTheScratchRegister) {
    begin_new_board();
    expect_untimed_success("spi_test spi_pic_cpld_test 1 2 3 9",
                           card_bus("1", count_through("23 11", "23 11") + count_through("24 11", "24 11") +
                                             count_through("25 11", "25 11")),
                           time_line + "drv_spi_test:[ret]:0\r\n" + time_line);
    expect_untimed_success("spi_test spi_pic_cpld_test 1 2 0", card_bus("1", ""),
                           time_line + "drv_spi_test:[ret]:0\r\n" + time_line);
    expect_untimed_success("spi_test spi_pic_cpld_test board chip times", card_bus("0", ""),
                           time_line + "drv_spi_test:[ret]:0\r\n" + time_line);
    expect_untimed_failure("spi_test spi_pic_cpld_test", "", "");
    expect_untimed_failure("spi_test spi_pic_cpld_test 1 2", "", "");
}

// A mismatch alone is told and is no failure; a code is, whatever was read.
TEST(SpiTest, PicCpldTestThatFails) {
    expect_untimed_success("spi_test spi_pic_cpld_test 1 2 9", card_bus("1", count_through("23 11", "11 23")),
                           time_line + "drv_spi_test_failed,.(times:0)\r\ndrv_spi_test:[ret]:0\r\n" + time_line);
    expect_untimed_success("spi_test spi_pic_cpld_test 1 2 9",
                           card_bus("1", count_through("23 11", "23 11") + count_through("24 11", "23 11")),
                           time_line + "drv_spi_test_failed,.(times:1)\r\ndrv_spi_test:[ret]:0\r\n" + time_line);
    expect_untimed_failure(
        "spi_test spi_pic_cpld_test 1 2 2",
        card_bus("1", "drv_spi_write(inst_id=1, chip_id=2, frame=[00 9b 23 11], length=4) = 0x10\n"
                      "drv_spi_write(inst_id=1, chip_id=2, frame=[00 9b 24 11], length=4) = 0x02\n"
                      "drv_spi_read(inst_id=1, chip_id=2, command=[00 1b], command_length=2, length=2) = 0x20 "
                      "buffer=[23 11] x1\n"
                      "drv_spi_read(inst_id=1, chip_id=2, command=[00 1b], command_length=2, length=2) = 0x01 "
                      "buffer=[24 11] x1"),
        time_line + "drv_spi_test:[ret]:51\r\n" + time_line);
    expect_untimed_failure(
        "spi_test spi_pic_cpld_test 1 2 9",
        card_bus("1", "drv_spi_write(inst_id=1, chip_id=2, frame=[00 9b 23 11], length=4) = 0x811101a4\n"
                      "drv_spi_read(inst_id=1, chip_id=2, command=[00 1b], command_length=2, length=2) = 0x811101a4"),
        time_line + "drv_spi_test_failed,.(times:0)\r\ndrv_spi_test:[ret]:-2129591900\r\n" + time_line);
}

namespace {

std::string scratch_after(const std::string &state, const std::string &times) {
    const process_result run =
        run_sim({"--state", state, "--clock", "virtual"}, {"spi_test", "spi_pic_cpld_test", "-1", "5", times});
    EXPECT_EQ(run.out, time_line + "drv_spi_test:[ret]:0\r\n" + time_line);
    EXPECT_EQ(run.status, 0);
    return run_sim({"--state", state, "--clock", "virtual"}, {"spi_test", "spi_pic_cpld_read", "-1", "5", "0x1b00"})
        .out;
}

} // namespace

TEST(SpiTest, PicCpldTestOnTheBoard) {
    if (lists_lines()) {
        return;
    }
    const std::string state = new_scratch_dir();
    EXPECT_EQ(scratch_after(state, "1"), "drv_spi_read:[ret]:0 rxbuffer[0]:0x23,rxbuffer[1]:0x11\r\n");
    EXPECT_EQ(scratch_after(state, "238"), "drv_spi_read:[ret]:0 rxbuffer[0]:0x10,rxbuffer[1]:0x12\r\n");
}

// The controller takes its time to answer: what the delay is for, and what the test of reads does not wait for.
TEST(SpiTest, QoramReadWaitsForTheDelay) {
    if (lists_lines()) {
        return;
    }
    const std::string state = new_scratch_dir();
    const std::string shown = "2,rxbuffer[1]:0x4b,rxbuffer[2]:0x54,rxbuffer[3]:0x51,rxbuffer[4]:0x41\r\n";
    const auto read_after = [&](const char *delay) {
        return run_sim({"--state", state, "--clock", "virtual"}, {"spi_test", "spi_qoram_read", "-1", "16", "0", delay})
            .out;
    };
    EXPECT_EQ(read_after("0"), "drv_spi_read:[ret]:0 rxbuffer[0]:0x" + shown);
    run_sim({"--state", state, "--set", "slot9/qoram/chip/0/latency=1000"}, {});
    EXPECT_EQ(read_after("999"), "drv_spi_read:[ret]:0 rxbuffer[0]:0x1,rxbuffer[1]:0x0,rxbuffer[2]:0x0,rxbuffer[3]:0x0,"
                                 "rxbuffer[4]:0x0\r\n");
    EXPECT_EQ(read_after("1000"), "drv_spi_read:[ret]:0 rxbuffer[0]:0x" + shown);
    const process_result loop =
        run_sim({"--state", state, "--clock", "virtual"}, {"spi_test", "spi_qoram_read_test", "-1", "16", "0", "2"});
    EXPECT_EQ(loop.out, time_line + "time 0 failed!" + operate_fail("spi_qoram_read_test") + operate_fail("spi_test"));
    EXPECT_EQ(loop.status, 255);
}
