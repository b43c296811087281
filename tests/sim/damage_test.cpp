// Damaged registers and images: each is named, none is answered from.
#include "sim/core/state_check.h"
#include "sim/core/store.h"
#include "tests/sim/support.h"
#include "tests/support/thoroughness.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace kestro_tests {

namespace fs = std::filesystem;

using kestro_sim::change;
using kestro_sim::store;
using kestro_sim::store_error;

namespace {

const std::string read_label = "drv_elabel_read(len=4)";
const std::string damaged = "0x81110109\n";
const std::string remedy = "; --accept-images takes the images as they now are, --reset makes the chassis new";

test_board master() {
    return new_delivered("mpu_master");
}

std::string image_of(const test_board &board) {
    return board.state + "/images/eeprom-slot9.bin";
}

void flip(const std::string &file, size_t at) {
    std::string content = read_file(file);
    content.at(at) = static_cast<char>(content.at(at) ^ 0x10);
    write_file(file, content);
}

void put_byte(const std::string &file, size_t at, char byte) {
    std::fstream opened(file, std::ios::binary | std::ios::in | std::ios::out);
    opened.seekp(static_cast<std::streamoff>(at)).put(byte);
}

// What reading says, or what it found.
std::string register_says(const std::string &state) {
    try {
        const auto value = store(state).get("slot9/sim_gpio/pin/5/level");
        return value ? std::to_string(*value) : "not written";
    } catch (const store_error &problem) {
        return problem.what();
    }
}

std::string accept_says(const test_board &board) {
    try {
        kestro_sim::accept_images(board.state);
    } catch (const std::exception &problem) {
        return problem.what();
    }
    return "";
}

size_t place_of_register(const test_board &board, const std::string &key) {
    const size_t at = read_file(board.state + "/store").rfind(key);
    EXPECT_NE(at, std::string::npos);
    return at;
}

} // namespace

TEST(Damage, RegisterIsNamed) {
    const test_board board = master();
    EXPECT_EQ(answers(board, {"nb_gpio_write(pin=5, level=1)", "nb_gpio_write(pin=16, level=1)"}), "0x0\n0x0\n");
    // The value stands 16 bytes in front of the name.
    flip(board.state + "/store", place_of_register(board, "slot9/sim_gpio/pin/5/level") - 16);
    const std::string line = board.state + "/store: register slot9/sim_gpio/pin/5/level is damaged; make the chassis "
                                           "new with --reset";
    EXPECT_EQ(prepare_says(board.word, board.state), line);
    const process_result result = call_drivers(
        board, {"nb_gpio_read(pin=5)", "nb_gpio_read(pin=5)", "nb_gpio_read(pin=16)", "nb_gpio_read(pin=17)"});
    EXPECT_EQ(result.out, damaged + damaged + "0x0 level=1\n0x0 level=1\n");
    EXPECT_EQ(result.err, "kestro_sim: " + line + "\n");
}

TEST(Damage, RegisterThatIsWrittenAnewIsSound) {
    const test_board board = master();
    answers(board, {"nb_gpio_write(pin=5, level=1)"});
    flip(board.state + "/store", place_of_register(board, "slot9/sim_gpio/pin/5/level") - 16);
    EXPECT_EQ(answers(board, {"nb_gpio_write(pin=5, level=1)", "nb_gpio_read(pin=5)"}), "0x0\n0x0 level=1\n");
    EXPECT_EQ(prepare_says(board.word, board.state), "");
}

// Nobody knows then which register it was: none that seems never to have been written is answered for.
TEST(Damage, RegisterWithADamagedNameIsNamedByItsPlace) {
    const test_board board = master();
    answers(board, {"nb_gpio_write(pin=5, level=1)", "nb_gpio_write(pin=16, level=1)"});
    const size_t name = place_of_register(board, "slot9/sim_gpio/pin/5/level");
    flip(board.state + "/store", name + 18);
    const std::string line = board.state + "/store: the register at byte " + std::to_string(name - 16) +
                             " is damaged, its name too; make the chassis new with --reset";
    EXPECT_EQ(prepare_says(board.word, board.state), line);
    const process_result result = call_drivers(board, {"nb_gpio_read(pin=5)", "nb_gpio_read(pin=16)"});
    // Whether the board is pulled out cannot be told either: that register may be the damaged one.
    EXPECT_EQ(result.out, damaged + damaged);
    EXPECT_EQ(result.err, "kestro_sim: " + line + "\n");
}

TEST(Damage, EachDamagedPartIsSaidOnce) {
    const test_board board = master();
    answers(board, {"nb_gpio_write(pin=5, level=1)", "nb_gpio_write(pin=16, level=1)"});
    for (const std::string pin : {"5", "16"}) {
        flip(board.state + "/store", place_of_register(board, "slot9/sim_gpio/pin/" + pin + "/level") - 16);
    }
    const process_result result = call_drivers(
        board, {"nb_gpio_read(pin=5)", "nb_gpio_read(pin=16)", "nb_gpio_read(pin=5)", "nb_gpio_read(pin=16)"});
    EXPECT_EQ(result.out, damaged + damaged + damaged + damaged);
    for (const std::string pin : {"5", "16"}) {
        const std::string line = "register slot9/sim_gpio/pin/" + pin + "/level is damaged";
        EXPECT_NE(result.err.find(line), std::string::npos);
        EXPECT_EQ(result.err.find(line), result.err.rfind(line));
    }
}

// Whatever byte of the store is wrong: what is read is right, or it is said that it cannot be told.
TEST(Damage, NoByteOfTheStoreGoesUnnoticed) {
    const test_board board = master();
    answers(board, {"nb_gpio_write(pin=5, level=1)"});
    const std::string good = read_file(board.state + "/store");
    const size_t used_end = place_of_register(board, "slot9/sim_gpio/pin/5/level") + 112;
    // Between the list of images and the registers stand the images' checksums, which are many.
    const size_t list = good.find("eeprom-slot10.bin");
    const size_t list_end = list + good.substr(list).find("nand-slot9.bin") + 128;
    ASSERT_LT(list_end, used_end);
    const auto is_looked_at_closely = [&](size_t at) {
        return at < 256 || (at >= list && at < list_end) || at + 256 > used_end;
    };
    const auto step = static_cast<size_t>(stride());
    size_t noticed = 0;
    for (size_t at = 0; at < used_end; at += is_looked_at_closely(at) ? step : 97 * step) {
        put_byte(board.state + "/store", at, static_cast<char>(good[at] ^ 0x01));
        const std::string said = register_says(board.state);
        put_byte(board.state + "/store", at, good[at]);
        if (said != "1") {
            EXPECT_NE(said.find(board.state + "/store: "), std::string::npos) << at << said;
            ++noticed;
        }
    }
    // The header, the cell and the list of images, to the last byte.
    EXPECT_GT(noticed * step, 128U + 128U + 128U);
    EXPECT_EQ(register_says(board.state), "1");
}

TEST(Damage, StoreThatEndsEarlyIsNamed) {
    const test_board board = master();
    answers(board, {"nb_gpio_write(pin=5, level=1)"});
    fs::resize_file(board.state + "/store", place_of_register(board, "slot9/sim_gpio/pin/5/level"));
    const std::string line = board.state + "/store: ends early; make the chassis new with --reset";
    EXPECT_EQ(prepare_says(board.word, board.state), line);
    const process_result result = call_drivers(board, {"nb_gpio_read(pin=5)"});
    EXPECT_EQ(result.out, damaged);
    EXPECT_EQ(result.err, "kestro_sim: " + line + "\n");
}

TEST(Damage, ImageIsNamedWhereItIsTouched) {
    const test_board board = master();
    flip(image_of(board), 3072 + 5);
    EXPECT_EQ(prepare_says(board.word, board.state), "");
    const process_result result =
        call_drivers(board, {read_label, "drv_barcode_read(len=4)", "drv_barcode_write(len=4, area=\"x\")",
                             "drv_barcode_read(len=4)"});
    EXPECT_EQ(result.out, "0x0 area=" + bytes("[boa") + "\n" + damaged + damaged + damaged);
    EXPECT_EQ(result.err, "kestro_sim: " + image_of(board) + ": is damaged in bytes 3072 to 4095" + remedy + "\n");
}

TEST(Damage, BlockThatIsWrittenWholeIsSound) {
    const test_board board = master();
    flip(image_of(board), 1024);
    store opened(board.state);
    EXPECT_THROW(opened.read("eeprom-slot9.bin", 1100, 1), store_error);
    change part;
    part.write("eeprom-slot9.bin", 1025, std::vector<uint8_t>(1023, 7));
    EXPECT_THROW(static_cast<void>(opened.commit(part)), store_error);
    change whole;
    whole.write("eeprom-slot9.bin", 1024, std::vector<uint8_t>(1024, 7));
    EXPECT_TRUE(opened.commit(whole));
    EXPECT_EQ(opened.read("eeprom-slot9.bin", 1024, 1024), std::vector<uint8_t>(1024, 7));
}

TEST(Damage, ImageOfAnotherSizeIsNamed) {
    const test_board board = master();
    fs::resize_file(image_of(board), 18);
    const std::string line = image_of(board) + ": is no file of 8192 bytes; put one of that size there, or make the "
                                               "chassis new with --reset";
    EXPECT_EQ(prepare_says(board.word, board.state), line);
    EXPECT_EQ(accept_says(board), line);
    const process_result result = call_drivers(board, {read_label, read_label});
    EXPECT_EQ(result.out, damaged + damaged);
    EXPECT_EQ(result.err,
              "kestro_sim: " + image_of(board) + ": ends early or cannot be read; make the chassis new with --reset\n");
}

TEST(AcceptedImages, AreAnsweredFrom) {
    const test_board board = master();
    std::string content = read_file(image_of(board));
    content.replace(16, 4, "mine");
    write_file(image_of(board), content);
    EXPECT_EQ(call_drivers(board, {read_label}).out, damaged);
    EXPECT_EQ(accept_says(board), "");
    EXPECT_EQ(
        answers(board, {"drv_elabel_read(elabel_id=0, len=4)", "drv_elabel_write(elabel_id=0, area=\"next\", len=4)",
                        "drv_elabel_read(elabel_id=0, len=4)"}),
        "0x0 area=" + bytes("mine") + "\n0x0\n0x0 area=" + bytes("next") + "\n");
}

TEST(AcceptedImages, MustBeThere) {
    const test_board board = master();
    fs::remove(board.state + "/images/eeprom-slot5.bin");
    EXPECT_EQ(accept_says(board),
              board.state + "/images/eeprom-slot5.bin: is missing; make the chassis new with --reset");
}

} // namespace kestro_tests
