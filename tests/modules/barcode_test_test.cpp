// barcode_test: every sub-command on the real program, with the driver scripted.
#include <cstdlib>

#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;

namespace {

const std::string too_few = "barcode test too few args!\n";

std::string hex_bytes(const std::string &bytes) {
    std::string list;
    for (const char byte : bytes) {
        const char digits[] = "0123456789abcdef";
        const auto bits = static_cast<unsigned char>(byte);
        list += {' ', digits[bits >> 4], digits[bits & 15]};
    }
    return "[" + list + " ]";
}

// The whole bar code area in the script's language: the text and zeros up to 128 bytes.
std::string barcode_area(std::string text) {
    text.resize(128, '\0');
    return hex_bytes(text);
}

// 0, 1, 2, ...: what barcode_write stores.
std::string counting_bytes(int len) {
    std::string bytes;
    for (int i = 0; i < len; ++i) {
        bytes += static_cast<char>(i);
    }
    return hex_bytes(bytes);
}

} // namespace

TEST(BarcodeTest, UsageListsTheSubCommandsInOrder) {
    expect_run("barcode_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " barcode_read                inst_id barcode_id len\n"
               " barcode_write               inst_id barcode_id len\n"
               " barcode_read_write_test     inst_id barcode_id\n"
               " barcode_init                inst_id barcode_id len\n"
               " barcode_deinit              inst_id barcode_id len\n",
               0);
}

TEST(BarcodeTest, ReadShowsTheTextAndEveryByte) {
    expect_success("barcode_test barcode_read 0xff000005 1 18",
                   "drv_barcode_read(inst_id=0xff000005, barcode_id=1, len=18) = 0 "
                   "area=[42 43 2d 30 31 00 ff 80 7f 01 0f 10 00 00 00 00 41 42]",
                   "drv_barcode_read success, inst_id=0xff000005, barcode_id=0x1, len=0x12.\r\n"
                   "\r\nBarCode:[BC-01]\r\n"
                   "\r\n[0]=0x42 [1]=0x43 [2]=0x2d [3]=0x30 [4]=0x31 [5]=0 [6]=0xff [7]=0x80 [8]=0x7f [9]=0x1 "
                   "[10]=0xf [11]=0x10 [12]=0 [13]=0 [14]=0 [15]=0 "
                   "\r\n[16]=0x41 [17]=0x42 "
                   "para[0]=0x0 \r\n----kestro_test std result print end----\n");
}

TEST(BarcodeTest, ReadOfSixteenBytesIsOneLine) {
    expect_success("barcode_test barcode_read 1 0 0x10",
                   "drv_barcode_read(inst_id=1, barcode_id=0, len=16) = 0 area=\"ABCDEFGHIJKLMNOP\"",
                   "drv_barcode_read success, inst_id=0x1, barcode_id=0, len=0x10.\r\n"
                   "\r\nBarCode:[ABCDEFGHIJKLMNOP]\r\n"
                   "\r\n[0]=0x41 [1]=0x42 [2]=0x43 [3]=0x44 [4]=0x45 [5]=0x46 [6]=0x47 [7]=0x48 [8]=0x49 [9]=0x4a "
                   "[10]=0x4b [11]=0x4c [12]=0x4d [13]=0x4e [14]=0x4f [15]=0x50 "
                   "para[0]=0x0 \r\n----kestro_test std result print end----\n");
}

TEST(BarcodeTest, ReadOfNoByteShowsAnEmptyText) {
    expect_success("barcode_test barcode_read one two three", "drv_barcode_read(inst_id=0, barcode_id=0, len=0) = 0",
                   "drv_barcode_read success, inst_id=0, barcode_id=0, len=0.\r\n"
                   "\r\nBarCode:[]\r\n"
                   "para[0]=0x0 \r\n----kestro_test std result print end----\n");
}

TEST(BarcodeTest, ReadIsCutToTheBuffer) {
    const std::string text(1024, 'A');
    std::string list;
    for (int i = 0; i < 1024; ++i) {
        list += (i % 16 == 0 ? "\r\n[" : "[") + std::to_string(i) + "]=0x41 ";
    }
    const std::string script = "drv_barcode_read(inst_id=1, barcode_id=2, len=1024) = 0 area=\"" + text + "\"";
    const std::string body = "drv_barcode_read success, inst_id=0x1, barcode_id=0x2, len=0x400.\r\n"
                             "\r\nBarCode:[" +
                             text + "]\r\n" + list + "para[0]=0x0 \r\n----kestro_test std result print end----\n";
    expect_success("barcode_test barcode_read 1 2 1024", script, body);
    expect_success("barcode_test barcode_read 1 2 1025", script, body);
    expect_success("barcode_test barcode_read 1 2 0xffffffff", script, body);
}

TEST(BarcodeTest, ReadFailurePrintsNothingBehindItsLine) {
    expect_failure("barcode_test barcode_read 3 0 128",
                   "drv_barcode_read(inst_id=3, barcode_id=0, len=128) = 0x811101a4 area=\"half\"",
                   "drv_barcode_read fail, inst_id=0x3, barcode_id=0, len=0x80, ret=0x811101a4.\r\n");
    expect_failure("barcode_test barcode_read 3 0 4096", "drv_barcode_read(inst_id=3, barcode_id=0, len=1024) = 0x12",
                   "drv_barcode_read fail, inst_id=0x3, barcode_id=0, len=0x400, ret=0x12.\r\n");
}

TEST(BarcodeTest, ReadWithOtherWordCounts) {
    const std::string message = "barcode test too few args.paramter: inst_id barcode_id len\n";
    expect_success("barcode_test barcode_read", "", message);
    expect_success("barcode_test barcode_read 1", "", message);
    expect_success("barcode_test barcode_read 1 2", "", message);
    expect_success("barcode_test barcode_read 1 2 1 7 7",
                   "drv_barcode_read(inst_id=1, barcode_id=2, len=1) = 0 area=[5a]",
                   "drv_barcode_read success, inst_id=0x1, barcode_id=0x2, len=0x1.\r\n"
                   "\r\nBarCode:[Z]\r\n"
                   "\r\n[0]=0x5a "
                   "para[0]=0x0 \r\n----kestro_test std result print end----\n");
}

TEST(BarcodeTest, WriteCountsTheBytesUp) {
    expect_success("barcode_test barcode_write 0xff000005 1 5",
                   "drv_barcode_write(inst_id=0xff000005, barcode_id=1, len=5, area=[00 01 02 03 04]) = 0",
                   "drv_barcode_write success, inst_id=0xff000005, barcode_id=0x1, len=0x5.\r\n"
                   "para[0]=0x0 \r\n----kestro_test std result print end----\n");
    expect_success("barcode_test barcode_write 1 0 128",
                   "drv_barcode_write(inst_id=1, barcode_id=0, len=128, area=" + counting_bytes(128) + ") = 0",
                   "drv_barcode_write success, inst_id=0x1, barcode_id=0, len=0x80.\r\n"
                   "para[0]=0x0 \r\n----kestro_test std result print end----\n");
}

TEST(BarcodeTest, WriteOfAllByteValuesReturns) {
    expect_success("barcode_test barcode_write 1 0 255",
                   "drv_barcode_write(inst_id=1, barcode_id=0, len=255, area=" + counting_bytes(255) + ") = 0",
                   "drv_barcode_write success, inst_id=0x1, barcode_id=0, len=0xff.\r\n"
                   "para[0]=0x0 \r\n----kestro_test std result print end----\n");
    expect_success("barcode_test barcode_write 1 0 256",
                   "drv_barcode_write(inst_id=1, barcode_id=0, len=256, area=" + counting_bytes(256) + ") = 0",
                   "drv_barcode_write success, inst_id=0x1, barcode_id=0, len=0x100.\r\n"
                   "para[0]=0x0 \r\n----kestro_test std result print end----\n");
}

// The one place where a run is cut by time: a program that returned would have printed long before.
TEST(BarcodeTest, WriteOfMoreThanAllByteValuesNeverReachesTheDriver) {
    const std::string state = new_scratch_dir();
    const std::string trace = scratch_file("endless-trace", "");
    process_options limited;
    limited.time_limit_ms = getenv("KESTRO_EMULATOR") == nullptr ? 300 : 3000;
    for (const char *len : {"257", "258", "1000", "70000"}) {
        SCOPED_TRACE(len);
        const process_result result = run_sim({"--state", state, "--clock", "virtual", "--trace", trace},
                                              {"barcode_test", "barcode_write", "1", "0", len}, limited);
        EXPECT_TRUE(result.timed_out);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(read_file(trace), "");
    }
}

TEST(BarcodeTest, WriteOfNoByteStillCallsTheDriver) {
    expect_success("barcode_test barcode_write one two three",
                   "drv_barcode_write(inst_id=0, barcode_id=0, len=0, area=[]) = 0",
                   "drv_barcode_write success, inst_id=0, barcode_id=0, len=0.\r\n"
                   "para[0]=0x0 \r\n----kestro_test std result print end----\n");
}

TEST(BarcodeTest, WriteFailure) {
    expect_failure("barcode_test barcode_write 3 0x21 2",
                   "drv_barcode_write(inst_id=3, barcode_id=33, len=2, area=[00 01]) = 0xdead",
                   "drv_barcode_write fail, inst_id=0x3, barcode_id=0x21, len=0x2, ret=0xdead.\r\n"
                   "para[0]=0xdead \r\n----kestro_test std result print end----\n");
}

TEST(BarcodeTest, WriteWithOtherWordCounts) {
    expect_success("barcode_test barcode_write", "", too_few);
    expect_success("barcode_test barcode_write 1", "", too_few);
    expect_success("barcode_test barcode_write 1 2", "", too_few);
    expect_success("barcode_test barcode_write 1 2 3 4",
                   "drv_barcode_write(inst_id=1, barcode_id=2, len=3, area=[00 01 02]) = 0",
                   "drv_barcode_write success, inst_id=0x1, barcode_id=0x2, len=0x3.\r\n"
                   "para[0]=0x0 \r\n----kestro_test std result print end----\n");
}

// The bytes to write are the last thing that the program allocates, so a run that a failing allocation does not change
// lies just behind them.
TEST(BarcodeTest, WriteWithoutMemoryForTheBytesSaysSoAndSucceeds) {
    const std::string state = new_scratch_dir();
    const std::string trace = new_scratch_dir() + "/trace";
    const std::string script = scratch_file("no-memory-script", "drv_barcode_write = 0\n");
    const auto run_without = [&](int allocation) {
        return run_sim({"--state", state, "--clock", "virtual", "--script", script, "--trace", trace, "--fail-alloc",
                        std::to_string(allocation)},
                       {"barcode_test", "barcode_write", "1", "0", "5"});
    };
    int unchanged = 4096;
    const std::string whole = run_without(unchanged).out;
    ASSERT_NE(whole.find("drv_barcode_write success"), std::string::npos) << whole;
    for (int changed = 0; unchanged - changed > 1;) {
        const int middle = (changed + unchanged) / 2;
        (run_without(middle).out == whole ? unchanged : changed) = middle;
    }
    const process_result result = run_without(unchanged - 1);
    EXPECT_EQ(result.out, std::string("barcode_write malloc fail.!\n") + timing_lines);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(read_file(trace), "");
}

TEST(BarcodeTest, ReadWriteTestRunsTheStorageCycle) {
    const std::string script =
        "drv_barcode_read(inst_id=0xff000005, barcode_id=1, len=128) = 0 area=\"SN-0001\" x1\n"
        "drv_barcode_write(inst_id=0xff000005, barcode_id=1, len=128, area=" +
        barcode_area("Hello test now...") +
        ") = 0 x1\n"
        "drv_barcode_read(inst_id=0xff000005, barcode_id=1, len=128) = 0 area=\"Hello test now...\" x1\n"
        "drv_barcode_write(inst_id=0xff000005, barcode_id=1, len=128, area=" +
        barcode_area("SN-0001") + ") = 0 x1";
    const std::string body = "Success: barcode read and write match test pass.\r\n";
    expect_success("barcode_test barcode_read_write_test 0xff000005 1", script, body);
    expect_success("barcode_test barcode_read_write_test 0xff000005 1 2 3", script, body);
}

TEST(BarcodeTest, ReadWriteTestReportsAMismatchAndFails) {
    expect_failure("barcode_test barcode_read_write_test 1 0",
                   "drv_barcode_read(inst_id=1, barcode_id=0, len=128) = 0 area=\"SN-0001\" x1\n"
                   "drv_barcode_write(inst_id=1, barcode_id=0, len=128, area=" +
                       barcode_area("Hello test now...") +
                       ") = 0 x1\n"
                       "drv_barcode_read(inst_id=1, barcode_id=0, len=128) = 0 area=\"OTHER\" x1\n"
                       "drv_barcode_write(inst_id=1, barcode_id=0, len=128, area=" +
                       barcode_area("SN-0001") + ") = 0 x1",
                   "Error: barcode read and write match test fail.\r\n"
                   "original info : \r\nSN-0001\r\n"
                   "write info : \r\nHello test now...\r\n"
                   "read info : \r\nOTHER\r\n");
}

TEST(BarcodeTest, ReadWriteTestFailure) {
    expect_failure("barcode_test barcode_read_write_test one 0x21",
                   "drv_barcode_read(inst_id=0, barcode_id=33, len=128) = 0x12",
                   "drv_barcode_read fail, inst_id=0x0, barcode_id=0x21, ret=0x12.\r\n");
    expect_success("barcode_test barcode_read_write_test 1 0",
                   "drv_barcode_read(inst_id=1, barcode_id=0, len=128) = 0x811101a4",
                   "Info   : barcode is not support.\r\n");
}

TEST(BarcodeTest, ReadWriteTestWithTooFewWordsPrintsTheLabelModulesLine) {
    expect_success("barcode_test barcode_read_write_test", "", "elabel test too few args!\n");
    expect_success("barcode_test barcode_read_write_test 1", "", "elabel test too few args!\n");
}

TEST(BarcodeTest, InitTakesTheInstanceAlone) {
    expect_success("barcode_test barcode_init 0xff000005 1 128", "drv_barcode_init(inst_id=0xff000005) = 0",
                   "drv_barcode_init success, inst_id=0xff000005.\r\n"
                   "para[0]=0x0 \r\n----kestro_test std result print end----\n");
    expect_success("barcode_test barcode_init 7", "drv_barcode_init(inst_id=7) = 0",
                   "drv_barcode_init success, inst_id=0x7.\r\n"
                   "para[0]=0x0 \r\n----kestro_test std result print end----\n");
    expect_success("barcode_test barcode_init board 1 2 3", "drv_barcode_init(inst_id=0) = 0",
                   "drv_barcode_init success, inst_id=0x0.\r\n"
                   "para[0]=0x0 \r\n----kestro_test std result print end----\n");
    expect_failure("barcode_test barcode_init 010", "drv_barcode_init(inst_id=8) = 0x12",
                   "drv_barcode_init fail, inst_id=0x8, ret=0x12.\r\n"
                   "para[0]=0x12 \r\n----kestro_test std result print end----\n");
    expect_success("barcode_test barcode_init", "", too_few);
}

TEST(BarcodeTest, DeinitTakesTheInstanceAlone) {
    expect_success("barcode_test barcode_deinit 0xffffffff 1 128", "drv_barcode_deinit(inst_id=0xffffffff) = 0",
                   "drv_barcode_deinit success, inst_id=0xffffffff.\r\n"
                   "para[0]=0x0 \r\n----kestro_test std result print end----\n");
    expect_success("barcode_test barcode_deinit 7", "drv_barcode_deinit(inst_id=7) = 0",
                   "drv_barcode_deinit success, inst_id=0x7.\r\n"
                   "para[0]=0x0 \r\n----kestro_test std result print end----\n");
    expect_success("barcode_test barcode_deinit board 1 2 3", "drv_barcode_deinit(inst_id=0) = 0",
                   "drv_barcode_deinit success, inst_id=0x0.\r\n"
                   "para[0]=0x0 \r\n----kestro_test std result print end----\n");
    expect_failure("barcode_test barcode_deinit 3", "drv_barcode_deinit(inst_id=3) = 0x811101a4",
                   "drv_barcode_deinit fail, inst_id=0x3, ret=0x811101a4.\r\n"
                   "para[0]=0x811101a4 \r\n----kestro_test std result print end----\n");
    expect_success("barcode_test barcode_deinit", "", too_few);
}
