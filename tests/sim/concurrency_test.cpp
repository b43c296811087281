// Many processes on one board at once, and processes that are killed in the middle of their writes: what is read is
// always one of the written values entirely, and both copies agree.
#include "sim/core/store.h"
#include "tests/sim/support.h"
#include "tests/support/thoroughness.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <random>
#include <thread>

namespace kestro_tests {

namespace {

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
    EXPECT_EQ(answers(board, {"drv_elabel_init()"}), "0x0\n");
    // The checksums have kept pace with the bytes.
    EXPECT_NO_THROW(kestro_sim::store(board.state).read("eeprom-slot9.bin", 0, 8192));
    const std::string image = read_file(board.state + "/images/eeprom-slot9.bin");
    ASSERT_EQ(image.size(), 8192U);
    EXPECT_TRUE(is_uniform(image.substr(16, 1200)));
    EXPECT_EQ(image.substr(16, 1200), image.substr(1216, 1200));
    EXPECT_TRUE(is_uniform(image.substr(3072, 128)));
    expect_whole_mac(image);
}

using way_to_call = process_result (*)(const test_board &, const std::vector<std::string> &);

void run_all(way_to_call make, const test_board &board, const std::vector<std::vector<std::string>> &processes,
             int expected_status, const std::string &expected_output) {
    std::vector<process_result> results(processes.size());
    std::vector<std::thread> runners;
    for (size_t i = 0; i < processes.size(); ++i) {
        runners.emplace_back([&, i] { results[i] = make(board, processes[i]); });
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
    return {"fill_label", byte, "1", "fill_barcode", byte, "1", "fill_mac", byte, "1"};
}

} // namespace

TEST(Concurrency, ManyWritersLeaveOneValueEntirely) {
    const test_board board = new_master();
    std::vector<std::vector<std::string>> writers;
    for (const std::string byte : {"0x41", "0x51", "0x61", "0x71", "0x31", "0x21"}) {
        writers.push_back({"fill_label", byte, "60", "fill_barcode", byte, "60", "fill_mac", byte, "60"});
    }
    run_all(odd_calls, board, writers, 0, ok + ok + ok);
    expect_whole_identity(board);
}

TEST(Concurrency, ReadersSeeOneValueEntirely) {
    const test_board board = new_master();
    EXPECT_EQ(odd_calls(board, fill_once("0x41")).out, ok + ok + ok);
    std::thread writer([&] { EXPECT_EQ(odd_calls(board, {"fill_label", "0x42", "400"}).out, ok); });
    const std::vector<std::string> reads(100, "drv_elabel_read(len=1200)");
    const std::string seen = answers(board, reads);
    writer.join();
    size_t labels = 0;
    for (size_t at = seen.find('['); at != std::string::npos; at = seen.find('[', at + 1)) {
        const auto byte = static_cast<char>(std::stoi(seen.substr(at + 1, 2), nullptr, 16));
        EXPECT_EQ(seen.substr(at, 3 * 1200 + 1), bytes(std::string(1200, byte)));
        ++labels;
    }
    EXPECT_EQ(labels, 100U);
}

TEST(Concurrency, RegistersOfManyWritersAreAllKept) {
    const test_board board = new_master();
    std::vector<std::vector<std::string>> writers;
    for (const std::string pin : {"5", "16"}) {
        for (int i = 0; i < 3; ++i) {
            writers.push_back({"nb_gpio_write(level=0, pin=" + pin + ")", "nb_gpio_write(level=1, pin=" + pin + ")"});
        }
    }
    run_all(call_drivers, board, writers, 0, ok + ok);
    EXPECT_EQ(answers(board, {"nb_gpio_write(pin=17, level=0)", "nb_gpio_read(pin=17)"}), "0x0\n0x0 level=0\n");
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
    EXPECT_EQ(answers(board, {"drv_elabel_read(elabel_id=0, len=7)"}), "0x0 area=" + bytes("[board]") + "\n");
}

TEST(Concurrency, KilledWritersLeaveEverythingWhole) {
    const test_board board = new_master();
    EXPECT_EQ(odd_calls(board, fill_once("0x41")).out, ok + ok + ok);
    std::mt19937 random(20260115);
    std::uniform_int_distribution<int> instant(0, 4000);
    for (int round = 0; round < 40 && !HasFailure(); round += stride()) {
        std::vector<std::vector<std::string>> victims;
        for (const std::string call : {"fill_label", "fill_barcode", "fill_mac"}) {
            victims.push_back({"kill_after_us", std::to_string(instant(random)), call, "0x51", "100000000"});
        }
        run_all(odd_calls, board, victims, 128 + 9, "");
        expect_whole_identity(board);
    }
}

} // namespace kestro_tests
