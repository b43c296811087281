// Disks without room and states that may only be read: one line, an error code, and nothing lost.
#include "sim/core/board.h"
#include "sim/core/store.h"
#include "sim/devices/bsp/processor_pins.h"
#include "tests/sim/small_disk.h"
#include "tests/sim/support.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace kestro_tests {

namespace fs = std::filesystem;
namespace gpio_pin = kestro_sim::gpio_pin;

using kestro_sim::change;
using kestro_sim::store;

namespace {

constexpr size_t page = 4096;
constexpr size_t roomy = 16U << 20U;

const std::string disk_full = "0x8111010d\n";
const std::string read_only = "0x8111010e\n";

std::string master() {
    return "mpu_master";
}

std::string label_of(const std::string &state) {
    const auto bytes = store(state).read("eeprom-slot9.bin", 16, 4);
    return {bytes.begin(), bytes.end()};
}

// Until nothing more fits. The room of a file that is written over later is taken, too.
void fill(const std::string &directory) {
    std::ofstream file(directory + "/filler", std::ios::binary);
    const std::string some(page, 'f');
    while (file.write(some.data(), static_cast<std::streamsize>(some.size())).flush()) {
    }
}

std::string outcome_of(const test_board &board, const std::vector<std::string> &calls) {
    const process_result result = call_drivers(board, calls);
    return result.out + result.err + (result.status <= 1 ? "" : "status " + std::to_string(result.status));
}

bool ends_with_whole_line(const std::string &file) {
    const std::string text = read_file(file);
    return !text.empty() && text.back() == '\n';
}

class FullDisk : public testing::Test {
  protected:
    void SetUp() override {
        if (!can_mount()) {
            GTEST_SKIP() << "nothing can be mounted here; the limit on the size of files is tried instead";
        }
    }
    const std::string disk_ = new_scratch_dir();
    const test_board board_ = board_to_make(master(), disk_ + "/state");
};

} // namespace

TEST_F(FullDisk, MakingAStateSaysSoAndIsDoneWhenThereIsRoom) {
    int refused = 0;
    for (size_t size = 2 * page; size < roomy; size += 40 * page) {
        const std::string said = on_small_disk(small_disk::mounted, disk_, size, [&] {
            std::string all = prepare_says(board_.word, board_.state) + "|";
            resize_disk(disk_, roomy);
            all += prepare_says(board_.word, board_.state) + "|";
            return all + label_of(board_.state);
        });
        if (said == "||[boa") {
            break;
        }
        ++refused;
        EXPECT_EQ(said.rfind(board_.state, 0), 0U) << said;
        EXPECT_NE(said.find(" (No space left on device); make room there, or choose another directory with --state||"),
                  std::string::npos)
            << said;
        EXPECT_EQ(said.substr(said.size() - 6), "||[boa");
    }
    EXPECT_GT(refused, 3);
}

TEST_F(FullDisk, ResetKeepsTheStateThatIsThere) {
    const std::string said = on_small_disk(small_disk::mounted, disk_, roomy, [&] {
        std::string all = prepare_says(board_.word, board_.state);
        all += outcome_of(board_, {"drv_elabel_write(len=1200, area=\"kept\")"});
        fill(disk_);
        all += prepare_says(board_.word, board_.state, true) + "\n";
        all += fs::exists(board_.state + "/new") ? "half a state is left\n" : "";
        fs::remove(disk_ + "/filler");
        all += prepare_says(board_.word, board_.state);
        return all + label_of(board_.state);
    });
    EXPECT_EQ(said.rfind("0x0\n" + board_.state + "/new", 0), 0U) << said;
    EXPECT_NE(said.find(" (No space left on device); make room there, or choose another directory with --state\nkept"),
              std::string::npos)
        << said;
}

// What a new board was given room for stays writable: labels, and the first registers.
TEST_F(FullDisk, DriversWriteIntoTheRoomThatTheyHave) {
    const std::string said = on_small_disk(small_disk::mounted, disk_, roomy, [&] {
        std::string all = prepare_says(board_.word, board_.state);
        fill(disk_);
        return all + outcome_of(board_, {"drv_elabel_write(len=1200, area=\"kept\")", "nb_gpio_write(pin=5, level=1)",
                                         "nb_gpio_read(pin=5)", "drv_elabel_read(len=4)"});
    });
    EXPECT_EQ(said, "0x0\n0x0\n0x0 level=1\n0x0 area=[6b 65 70 74]\n");
}

TEST_F(FullDisk, RegisterWithoutRoomIsAnErrorCode) {
    const std::string said = on_small_disk(small_disk::mounted, disk_, roomy, [&] {
        std::string all = prepare_says(board_.word, board_.state);
        {
            store opened(board_.state);
            for (uint32_t i = 0; i < 512; ++i) {
                change writes;
                writes.put("self/x/y/" + std::to_string(i) + "/z", i);
                all += opened.commit(writes) ? "" : "no room";
            }
        }
        fill(disk_);
        all += outcome_of(board_, {"nb_gpio_write(pin=5, level=1)", "nb_gpio_read(pin=5)"});
        fs::remove(disk_ + "/filler");
        return all +
               outcome_of(board_, {"nb_gpio_read(pin=5)", "nb_gpio_write(pin=5, level=1)", "nb_gpio_read(pin=5)"});
    });
    EXPECT_EQ(said, disk_full + "0x0 level=0\nkestro_sim: " + board_.state +
                        "/store: cannot be written (No space left on device); make room there, or choose another "
                        "directory with --state\n0x0 level=0\n0x0\n0x0 level=1\n");
}

TEST_F(FullDisk, LogKeepsWholeLines) {
    const std::string said = on_small_disk(small_disk::mounted, disk_, roomy, [&] {
        std::string all = prepare_says(board_.word, board_.state);
        all += outcome_of(board_, {"drv_log_record(log_id=1, level=1, text=\"first\\r\\n\")"});
        fill(disk_);
        const std::vector<std::string> lines(100, "drv_log_record(log_id=1, level=1, text=\"" + std::string(100, 'x') +
                                                      "\\r\\n\")");
        const std::string out = call_drivers(board_, lines).out;
        all += out.substr(out.size() - disk_full.size());
        all += ends_with_whole_line(board_.state + "/log/slot9/1.log") ? "whole\n" : "half\n";
        fs::remove(disk_ + "/filler");
        return all + outcome_of(board_, {"drv_log_record(log_id=1, level=1, text=\"last\\r\\n\")"}) +
               (ends_with_whole_line(board_.state + "/log/slot9/1.log") ? "whole\n" : "half\n");
    });
    EXPECT_EQ(said, "0x0\n" + disk_full + "whole\n0x0\nwhole\n");
}

TEST(LimitedFiles, MakingAStateSaysSoAndIsDoneWithoutTheLimit) {
    for (const size_t size : {0, 4, 100, 5000, 9000, 100000, 140000}) {
        const test_board board = board_to_make(master(), new_scratch_dir() + "/state");
        const std::string said =
            on_small_disk(small_disk::limited_files, "", size, [&] { return prepare_says(board.word, board.state); });
        EXPECT_NE(said.find("cannot be written (File too large); raise the limit on the size of files (ulimit -f)"),
                  std::string::npos)
            << size << ": " << said;
        EXPECT_EQ(prepare_says(board.word, board.state), "");
        EXPECT_EQ(label_of(board.state), "[boa");
    }
}

// The limit lies behind the journal: the images have been written by the time that it is met.
TEST(LimitedFiles, DriversWriteNothingOrAll) {
    const test_board board = new_board(master());
    for (const size_t size : {100, 300, 2000, 82000}) {
        const std::string said = on_small_disk(small_disk::limited_files, "", size, [&] {
            return outcome_of(board, {"drv_elabel_write(len=1200, area=\"kept\")", "drv_elabel_read(len=4)"});
        });
        EXPECT_EQ(said, disk_full + "0x0 area=[5b 62 6f 61]\nkestro_sim: " + board.state +
                            "/store: cannot be written (File too large); raise the limit on the size of files (ulimit "
                            "-f)\n")
            << size;
        EXPECT_EQ(outcome_of(board, {"drv_elabel_read(len=4)"}), "0x0 area=[5b 62 6f 61]\n");
    }
}

TEST(LimitedFiles, LogKeepsWholeLines) {
    const test_board board = new_board(master());
    answers(board, {"drv_log_record(log_id=1, level=1, text=\"first\\r\\n\")"});
    const std::string said = on_small_disk(small_disk::limited_files, "", 10, [&] {
        return outcome_of(board, {"drv_log_record(log_id=1, level=1, text=\"second\\r\\n\")"});
    });
    EXPECT_EQ(said.rfind(disk_full, 0), 0U) << said;
    EXPECT_EQ(read_file(board.state + "/log/slot9/1.log"), "1 first\n");
}

namespace {

// Reading, and trying to write: to the store, to an image, and to reset.
std::string use_as_reader(const test_board &board) {
    std::string said = prepare_says(board.word, board.state) + "|";
    kestro_sim::board used(board.description, board.state, board.seat);
    said += std::to_string(used.get(used.find<gpio_pin::family>(DRV_INST_SELF, 17), gpio_pin::level));
    said += " " + label_of(board.state) + "|";
    try {
        used.put(used.find<gpio_pin::family>(DRV_INST_SELF, 17), gpio_pin::level, 0);
    } catch (const kestro_sim::store_error &problem) {
        said += problem.code == kestro_sim::error::read_only ? "read_only " : "another code ";
        said += problem.what();
    }
    return said + "|" + prepare_says(board.word, board.state, true);
}

} // namespace

TEST(ReadOnlyState, OfAnotherUserIsReadAndNotWritten) {
    const test_board board = new_board(master());
    make_unwritable(board.state);
    const std::string said = as_other_user(board.state, [&] { return use_as_reader(board); });
    const std::string right = "(Permission denied); give this user the right to it, or choose another directory with "
                              "--state";
    EXPECT_EQ(said, "|1 [boa|read_only " + board.state + "/store: cannot be written " + right + "|" + board.state +
                        "/new: cannot be made " + right);
    EXPECT_EQ(label_of(board.state), "[boa");
}

TEST(ReadOnlyState, WhatCannotBeReadIsNamed) {
    for (const std::string part : {"/kestro_sim.lock", "/store", "/images/eeprom-slot9.bin", ""}) {
        SCOPED_TRACE(part);
        const test_board board = new_board(master());
        fs::permissions(board.state + part, fs::perms(0));
        const std::string said = as_other_user(board.state, [&] {
            std::string first = prepare_says(board.word, board.state);
            return first.empty() ? label_of(board.state) : first;
        });
        fs::permissions(board.state + part, fs::perms(0755));
        const std::string what = part.ends_with("lock") ? "opened" : "read";
        EXPECT_EQ(said, board.state + part + ": cannot be " + what +
                            " (Permission denied); give this user the right to it, or choose another directory with "
                            "--state");
    }
}

TEST_F(FullDisk, StateOnAReadOnlyDiskIsReadAndNotWritten) {
    const std::string said = on_small_disk(small_disk::mounted, disk_, roomy, [&] {
        std::string all = prepare_says(board_.word, board_.state);
        forbid_writing(disk_);
        return all + use_as_reader(board_) + "\n" +
               outcome_of(board_, {"nb_gpio_read(pin=17)", "nb_gpio_write(pin=17, level=0)",
                                   "drv_elabel_write(len=4, area=\"x\")",
                                   "drv_log_record(log_id=1, level=1, text=\"x\\r\\n\")", "drv_elabel_read(len=4)"});
    });
    const std::string right = "(Read-only file system); choose a directory that can be written with --state";
    EXPECT_EQ(said, "|1 [boa|read_only " + board_.state + "/store: cannot be written " + right + "|" + board_.state +
                        "/new: cannot be made " + right + "\n0x0 level=1\n" + read_only + read_only + read_only +
                        "0x0 area=[5b 62 6f 61]\nkestro_sim: " + board_.state + "/store: cannot be written " + right +
                        "\nkestro_sim: " + board_.state + "/log/slot9/1.log: cannot be written " + right + "\n");
}

} // namespace kestro_tests
