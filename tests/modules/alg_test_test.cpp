// alg_test: both checksums on the real program, with the driver scripted, and as the simulated driver works them out.
#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>

#include "tests/support/command.h"
#include "tests/support/failing_allocations.h"
#include "tests/support/test_lines.h"

using namespace kestro_tests;

namespace {

// A file of the board, five bytes long.
const std::string file_of_checksums = "/home/release/fan_pcb_version.txt";

} // namespace

TEST(AlgTest, UsageListsTheSubCommandsInOrder) {
    expect_run("alg_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " alg_crc16_test [file_name]\n alg_crc32_test [file_name]\n",
               0);
}

TEST(AlgTest, Crc16) {
    expect_success("alg_test alg_crc16_test " + file_of_checksums,
                   "drv_crc16_checksum(data=[56 45 52 2e 43], len=5) = 0 crc16=0xbeef",
                   "alg_crc16_test result is 0xbeef\r\n");
    expect_success("alg_test alg_crc16_test " + file_of_checksums + " more",
                   "drv_crc16_checksum(data=[56 45 52 2e 43], len=5) = 0", "alg_crc16_test result is 0x0\r\n");
    expect_failure("alg_test alg_crc16_test " + file_of_checksums, "drv_crc16_checksum(len=5) = 0x81110101 crc16=7",
                   "drv_crc16_checksum failure\r\n");
}

TEST(AlgTest, Crc32) {
    expect_success("alg_test alg_crc32_test " + file_of_checksums,
                   "drv_crc32_checksum(data=[56 45 52 2e 43], len=5) = 0 crc32=0xdeadbeef",
                   "alg_crc32_test result is 0xdeadbeef\r\n");
    expect_success("alg_test alg_crc32_test " + file_of_checksums + " more",
                   "drv_crc32_checksum(data=[56 45 52 2e 43], len=5) = 0", "alg_crc32_test result is 0x0\r\n");
    expect_failure("alg_test alg_crc32_test " + file_of_checksums, "drv_crc32_checksum(len=5) = 0x12 crc32=7",
                   "drv_crc32_checksum failure\r\n");
}

TEST(AlgTest, WithoutAFileName) {
    expect_failure("alg_test alg_crc16_test", "", "kestro_test algorithm_test alg_crc16_test [filename]\r\n");
    expect_failure("alg_test alg_crc32_test", "", "kestro_test algorithm_test alg_crc32_test [filename]\r\n");
}

TEST(AlgTest, FilesThatCannotBeRead) {
    const std::string folder = new_scratch_dir();
    const std::string pipe = folder + "/pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const std::string large = scratch_file("large", "");
    std::error_code problem;
    std::filesystem::resize_file(large, 0x100000000, problem);
    ASSERT_FALSE(problem) << problem.message() << "; the folder for temporary files must take files of 4 GiB";
    for (const std::string name : {"alg_crc16_test", "alg_crc32_test"}) {
        expect_failure("alg_test " + name + " " + folder + "/none", "",
                       "open file[" + folder + "/none] failure:No such file or directory\r\n");
        expect_failure("alg_test " + name + " " + folder, "", "malloc len:-1 failure:Is a directory\r\n");
        expect_failure("alg_test " + name + " " + pipe, "", "malloc len:-1 failure:Illegal seek\r\n");
        expect_failure("alg_test " + name + " " + large, "",
                       "malloc len:2147483647 failure:Cannot allocate memory\r\n");
    }
}

TEST(AlgTest, WithoutMemoryTheDriverIsNotReached) {
    expect_without_text_area("alg_test alg_crc32_test " + file_of_checksums, "drv_crc32_checksum = 0",
                             "malloc len:5 failure:Cannot allocate memory\r\n" + std::string(timing_lines) +
                                 operate_fail("alg_crc32_test") + operate_fail("alg_test"),
                             255);
}

// The values by which these two are known everywhere, and those of nothing.
TEST(AlgTest, TheSimulatedDriverHasTheKnownCheckValues) {
    if (lists_lines()) {
        return;
    }
    const std::string state = new_scratch_dir();
    const auto expect = [&](const std::string &line, const std::string &output) {
        const process_result run = run_sim({"--state", state, "--clock", "virtual"}, split_words(line));
        EXPECT_EQ(run.out, output + timing_lines);
        EXPECT_EQ(run.status, 0);
    };
    const std::string digits = scratch_file("digits", "123456789");
    const std::string empty = scratch_file("empty", "");
    expect("alg_test alg_crc16_test " + digits, "alg_crc16_test result is 0x29b1\r\n");
    expect("alg_test alg_crc32_test " + digits, "alg_crc32_test result is 0xcbf43926\r\n");
    expect("alg_test alg_crc16_test " + empty, "alg_crc16_test result is 0xffff\r\n");
    expect("alg_test alg_crc32_test " + empty, "alg_crc32_test result is 0x0\r\n");
}
