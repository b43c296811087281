// Many processes on one board at once, and processes that are killed in the middle of their writes: what is read is
// always one of the written values entirely, and both copies agree.
#include "tests/sim/support.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <random>
#include <thread>

namespace kestro_tests {

namespace {

const std::string self = " 0xffffffff ";

test_board new_master() {
    return new_delivered("mpu_master");
}

bool is_uniform(const std::string &bytes) {
    return !bytes.empty() && std::all_of(bytes.begin(), bytes.end(), [&](char c) { return c == bytes[0]; });
}

// The stored count is the address byte, so that a count of one write beside an address of another shows.
void expect_whole_mac(const std::string &image) {
    const std::string record = image.substr(2544 + 8 + 10, 10);
    EXPECT_EQ(record[0], 1);
    EXPECT_EQ(record[2], 0);
    EXPECT_TRUE(is_uniform(record.substr(3, 7)));
    EXPECT_EQ(image.substr(2544, 128), image.substr(2672, 128));
}

void expect_whole_identity(const test_board &board) {
    // A driver call comes first: it finishes what a killed process had begun.
    EXPECT_EQ(calls_print(board, {"elabel_init" + self}), "0x0\n");
    const std::string image = read_file(board.state + "/images/eeprom-slot9.bin");
    ASSERT_EQ(image.size(), 8192U);
    EXPECT_TRUE(is_uniform(image.substr(16, 1200)));
    EXPECT_EQ(image.substr(16, 1200), image.substr(1216, 1200));
    EXPECT_TRUE(is_uniform(image.substr(3072, 128)));
    expect_whole_mac(image);
}

void run_all(const test_board &board, const std::vector<std::vector<std::string>> &processes, int expected_status,
             const std::string &expected_output) {
    std::vector<process_result> results(processes.size());
    std::vector<std::thread> runners;
    for (size_t i = 0; i < processes.size(); ++i) {
        runners.emplace_back([&, i] { results[i] = call_drivers(board, processes[i]); });
    }
    for (std::thread &runner : runners) {
        runner.join();
    }
    for (const process_result &result : results) {
        EXPECT_EQ(result.status, expected_status);
        EXPECT_EQ(result.out, expected_output);
        EXPECT_EQ(result.err, "");
    }
}

std::vector<std::string> fill_once(const std::string &byte) {
    return {"elabel_fill" + self + byte + " 1", "barcode_fill" + self + byte + " 1", "mac_fill" + self + byte + " 1"};
}

} // namespace

TEST(Concurrency, ManyWritersLeaveOneValueEntirely) {
    const test_board board = new_master();
    std::vector<std::vector<std::string>> writers;
    for (const std::string byte : {"0x41", "0x51", "0x61", "0x71", "0x31", "0x21"}) {
        writers.push_back({"elabel_fill" + self + byte + " 60", "barcode_fill" + self + byte + " 60",
                           "mac_fill" + self + byte + " 60"});
    }
    run_all(board, writers, 0, "0x0\n0x0\n0x0\n");
    expect_whole_identity(board);
}

TEST(Concurrency, ReadersSeeOneValueEntirely) {
    const test_board board = new_master();
    calls_print(board, fill_once("0x41"));
    std::thread writer([&] { calls_print(board, {"elabel_fill" + self + "0x42 400"}); });
    const std::vector<std::string> reads(100, "elabel_read" + self + "0 1200");
    const std::string seen = calls_print(board, reads);
    writer.join();
    size_t labels = 0;
    for (size_t at = seen.find('"'); at != std::string::npos; at = seen.find('"', at + 1202)) {
        EXPECT_TRUE(is_uniform(seen.substr(at + 1, 1200)));
        ++labels;
    }
    EXPECT_EQ(labels, 100U);
}

TEST(Concurrency, RegistersOfManyWritersAreAllKept) {
    const test_board board = new_master();
    std::vector<std::vector<std::string>> writers;
    for (const std::string pin : {"5", "16"}) {
        for (int i = 0; i < 3; ++i) {
            writers.push_back({"gpio_write " + pin + " 0", "gpio_write " + pin + " 1"});
        }
    }
    run_all(board, writers, 0, "0x0\n0x0\n");
    EXPECT_EQ(calls_print(board, {"gpio_write 17 0", "gpio_read 17"}), "0x0\n0x0 0\n");
}

TEST(Concurrency, ManyLaunchersMakeOneBoard) {
    const std::string state = new_scratch_dir() + "/a/b";
    std::vector<std::string> said(8, "nothing");
    std::vector<std::thread> launchers;
    for (std::string &answer : said) {
        launchers.emplace_back([&] { answer = prepare_says("mpu_master", state); });
    }
    for (std::thread &launcher : launchers) {
        launcher.join();
    }
    EXPECT_EQ(said, std::vector<std::string>(8, ""));
    test_board board = new_delivered("mpu_master");
    board.description = state + "/chassis/" + std::filesystem::path(board.description).filename().string();
    board.state = state;
    EXPECT_EQ(calls_print(board, {"elabel_read" + self + "0 7"}), "0x0 \"[board]\"\n");
}

TEST(Concurrency, KilledWritersLeaveEverythingWhole) {
    const test_board board = new_master();
    calls_print(board, fill_once("0x41"));
    std::mt19937 random(20260115);
    std::uniform_int_distribution<int> instant(0, 4000);
    for (int round = 0; round < 40 && !HasFailure(); ++round) {
        std::vector<std::vector<std::string>> victims;
        for (const std::string call : {"elabel_fill", "barcode_fill", "mac_fill"}) {
            victims.push_back({"kill_after_us " + std::to_string(instant(random)), call + self + "0x51 100000000"});
        }
        run_all(board, victims, 128 + 9, "");
        expect_whole_identity(board);
    }
}

} // namespace kestro_tests
