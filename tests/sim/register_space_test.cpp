// Register spaces: bits of their own, and the other face of devices.
#include "sim/core/register_space.h"

#include "sim/devices/management/board_unit.h"
#include "sim/devices/management/firmware.h"
#include "sim/devices/management/lamp.h"
#include "tests/sim/support.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

using namespace kestro_sim;

// The range of the type register is all of 32 bits, so that a space may hold its halves.
constexpr space_field low_half[]{{0xFFFF, &board_unit::family, 0, &board_unit::type}};
constexpr space_field high_half[]{{0xFFFF, &board_unit::family, 0, &board_unit::type, 16}};
constexpr space_field nobody[]{{0x00FF, &lamp::family, 77, &lamp::color}};

uint32_t twice_the_step(board &b, const device &which) {
    return 2 * b.get(device_of<board_unit::family>{which}, board_unit::bootstep);
}

constexpr space_field doubled[]{
    {0xFF, &board_unit::family, 0, &board_unit::bootstep, 0, bus::read_write, {twice_the_step, nullptr}}};

constexpr space_field own_version[]{{0xFFFF, &logic_chip::family, own_id, &logic_chip::version, 0, bus::read_only, {}}};

// A register that the device works out: the step; a write adds to it, a bus read counts on.
uint32_t read_step(board &b, const device &, uint32_t) {
    return b.get(b.find_at<board_unit::family>(b.self()), board_unit::bootstep);
}

void add_to_step(board &b, const device &which, uint32_t address, uint32_t value) {
    b.put(b.find_at<board_unit::family>(b.self()), board_unit::bootstep, read_step(b, which, address) + value);
}

void count_on(board &b, const device &which, uint32_t address) {
    add_to_step(b, which, address, 1);
}

constexpr space_register words[]{
    {0, "low", "x", 0, 0, 0, low_half},
    {1, "high", "x", 0, 0, 0, high_half},
    {2, "latch", "x", 0x00F3, 0x00F0, 0x000F},
    {3, "nobody", "x", 0x5500, 0, 0, nobody},
    {4, "doubled", "x", 0, 0, 0, doubled},
    {5, "version", "x", 0, 0, 0, own_version},
    {.address = 6, .name = "step", .meaning = "x", .read = read_step, .write = add_to_step, .after_read = count_on},
};
constexpr register_space word_space{"words", &logic_chip::family, 16, 8, undeclared::refused, words};

constexpr space_register longs[]{{0x10, "long", "x", 0x12345678, 0xFF000000}};
constexpr register_space long_space{"longs", &logic_chip::family, 32, 0x20, undeclared::all_ones, longs};
constexpr register_space zero_space{"zeros", &logic_chip::family, 32, 0x20, undeclared::zeros, longs};

class RegisterSpace : public testing::Test {
  protected:
    // As an operation of a driver begins: what other processes wrote meanwhile is taken in.
    uint32_t read(const register_space &space, uint32_t address) {
        EXPECT_TRUE(board_.begin_operation());
        return read_space(board_, space, chip_, address);
    }
    void write(const register_space &space, uint32_t address, uint32_t value) {
        EXPECT_TRUE(board_.begin_operation());
        write_space(board_, space, chip_, address, value);
    }
    error refused(const register_space &space, uint32_t address) {
        try {
            read(space, address);
        } catch (const refusal &why) {
            EXPECT_THROW(write(space, address, 0), refusal);
            return why.code;
        }
        ADD_FAILURE() << "address " << address << " is read";
        return error::no_board;
    }

    test_board made_ = new_delivered("mpu_master");
    board board_{made_.description, made_.state, made_.seat};
    device chip_ = board_.find_at<logic_chip::family>(board_.self());
    device_of<board_unit::family> unit_ = board_.find_at<board_unit::family>(board_.self());
};

} // namespace

TEST_F(RegisterSpace, HalvesOfARegisterAreWrittenApart) {
    board_.put(unit_, board_unit::type, 0x02302311);
    EXPECT_EQ(read(word_space, 0), 0x2311U);
    EXPECT_EQ(read(word_space, 1), 0x0230U);
    write(word_space, 0, 0xBEEF);
    EXPECT_EQ(board_.get(unit_, board_unit::type), 0x0230BEEFU);
    write(word_space, 1, 0x5CAFE);
    EXPECT_EQ(board_.get(unit_, board_unit::type), 0xCAFEBEEFU);
}

TEST_F(RegisterSpace, OwnBitsKeepTheirRules) {
    EXPECT_EQ(read(word_space, 2), 0x00F3U);
    write(word_space, 2, 0xAA01);
    EXPECT_EQ(read(word_space, 2), 0xAAF2U);
    write(word_space, 2, 0x000C);
    EXPECT_EQ(read(word_space, 2), 0x00F2U);
    force_space(board_, word_space, chip_, 2, 0x1234);
    EXPECT_EQ(read(word_space, 2), 0x1234U);
}

TEST_F(RegisterSpace, FieldWithoutADeviceIsWiredToNothing) {
    EXPECT_EQ(read(word_space, 3), 0x5500U);
    write(word_space, 3, 0xFFFF);
    EXPECT_EQ(read(word_space, 3), 0xFF00U);
}

TEST_F(RegisterSpace, FieldMayBeWorkedOutByTheDevice) {
    board_.put(unit_, board_unit::bootstep, 21);
    EXPECT_EQ(read(word_space, 4), 42U);
    write(word_space, 4, 30);
    EXPECT_EQ(board_.get(unit_, board_unit::bootstep), 30U);
}

TEST_F(RegisterSpace, FieldMayBelongToTheChipItself) {
    EXPECT_EQ(read(word_space, 5), 0x0107U);
    const device second = board_.find_at<logic_chip::family>(board_.self(), 1);
    EXPECT_EQ(read_space(board_, word_space, second, 5), 0x0203U);
}

TEST_F(RegisterSpace, DeviceMayActWhenItIsReadAndWritten) {
    board_.put(unit_, board_unit::bootstep, 21);
    EXPECT_EQ(peek_space(board_, word_space, chip_, 6), 21U);
    EXPECT_EQ(read(word_space, 6), 21U);
    EXPECT_EQ(read(word_space, 6), 22U);
    write(word_space, 6, 10);
    EXPECT_EQ(peek_space(board_, word_space, chip_, 6), 33U);
    force_space(board_, word_space, chip_, 6, 10);
    EXPECT_EQ(peek_space(board_, word_space, chip_, 6), 43U);
}

TEST_F(RegisterSpace, AddressesWithoutARegister) {
    EXPECT_EQ(refused(word_space, 7), error::out_of_range);
    EXPECT_EQ(refused(word_space, 8), error::out_of_range);
    EXPECT_EQ(read(long_space, 0x11), 0xFFFFFFFFU);
    write(long_space, 0x11, 5);
    EXPECT_EQ(read(long_space, 0x11), 0xFFFFFFFFU);
    EXPECT_EQ(refused(long_space, 0x20), error::out_of_range);
    EXPECT_EQ(read(zero_space, 0x11), 0U);
    write(zero_space, 0x11, 5);
    EXPECT_EQ(read(zero_space, 0x11), 0U);
    EXPECT_EQ(refused(zero_space, 0x20), error::out_of_range);
    write(long_space, 0x10, 0xABCDEF01);
    EXPECT_EQ(read(long_space, 0x10), 0x12CDEF01U);
}

TEST_F(RegisterSpace, ImageOutlastsTheProcess) {
    write(long_space, 0x10, 0x00000042);
    board again(made_.description, made_.state, made_.seat);
    EXPECT_EQ(read_space(again, long_space, chip_, 0x10), 0x12000042U);
}

TEST_F(RegisterSpace, CpldIsTheLampsOtherFace) {
    const register_space *cpld = find_space("cpld", chip_);
    ASSERT_NE(cpld, nullptr);
    EXPECT_EQ(answers(made_, {"drv_led_set_color(led_type=0, color=3, freq=20)"}), ok);
    EXPECT_EQ(read(*cpld, 0x20), 0x83U);
    EXPECT_EQ(read(*cpld, 0x21), 20U);
    write(*cpld, 0x20, 0x02);
    write(*cpld, 0x21, 7);
    EXPECT_EQ(answers(made_, {"drv_led_get_color(led_type=0)", "drv_led_get_mode(led_type=0)"}),
              "0x0 color=2 freq=7\n0x0 mode=1\n");
}

TEST_F(RegisterSpace, FieldKeepsWhatItsDeviceDoesNotTake) {
    const register_space *cpld = find_space("cpld", chip_);
    // Lamp 1 is off and has red but no green; it blinks up to 10 Hz.
    write(*cpld, 0x22, 1);
    write(*cpld, 0x23, 101);
    EXPECT_EQ(answers(made_, {"drv_led_get_color(led_type=1)"}), "0x0 color=0 freq=0\n");
    write(*cpld, 0x22, 2);
    write(*cpld, 0x23, 100);
    EXPECT_EQ(answers(made_, {"drv_led_get_color(led_type=1)"}), "0x0 color=2 freq=100\n");
}

TEST_F(RegisterSpace, WrittenOneClearsTheSupplysLatch) {
    const register_space *cpld = find_space("cpld", chip_);
    board_.put(unit_, board_unit::low_voltage, 1);
    EXPECT_EQ(read(*cpld, 0x40), 1U);
    write(*cpld, 0x40, 0xFE);
    EXPECT_EQ(board_.get(unit_, board_unit::low_voltage), 1U);
    write(*cpld, 0x40, 0x01);
    EXPECT_EQ(board_.get(unit_, board_unit::low_voltage), 0U);
    EXPECT_EQ(read(*cpld, 0x40), 0U);
}

TEST_F(RegisterSpace, ResetFlagsAreTheDriversOwn) {
    const register_space *cpld = find_space("cpld", chip_);
    EXPECT_EQ(read(*cpld, 0x30), 0x83U);
    EXPECT_EQ(answers(made_, {"drv_reset_set_soft_start_ok_flag(flag=0)"}), ok);
    EXPECT_EQ(read(*cpld, 0x30), 0x82U);
    write(*cpld, 0x30, 0x11); // the button is an input
    EXPECT_EQ(read(*cpld, 0x30), 0x81U);
    EXPECT_EQ(answers(made_, {"drv_reset_get_soft_start_ok_flag()", "drv_reset_get_button_status()"}),
              "0x0 flag=1\n0x0 status=0\n");
}

TEST_F(RegisterSpace, OnlyTheControlCpldHasThisLayout) {
    const register_space *const cpld = find_space("cpld", chip_);
    const register_space *const fpga = find_space("cpld", board_.find_at<logic_chip::family>(board_.self(), 1));
    ASSERT_NE(cpld, nullptr);
    ASSERT_NE(fpga, nullptr);
    EXPECT_EQ(cpld->width, 8U);
    EXPECT_EQ(fpga->width, 16U);
    EXPECT_EQ(find_space("spd", chip_), nullptr);
}

} // namespace kestro_tests
