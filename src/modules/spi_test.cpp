// spi_test: chips on the SPI buses, which understand frames: the memory controller of the queues (qoram), the switch
// fabric's agent (sa8009), and the CPLD of a plug-in card (pic_cpld).
//
// Numbers in frames have their highest byte first, but for the CPLD, whose lowest comes first. What the bring-up of bus
// and data pool answers is not looked at: a transfer tells. No banners and no result print.
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <ctime>

#include "drv_basic/chips/drv_cpld.h"
#include "drv_basic/chips/drv_spi.h"
#include "modules/modules.h"
#include "shell/console.h"
#include "shell/dispatch.h"
#include "shell/words.h"

namespace {

void put_u32(uint8_t *at, uint32_t value) {
    at[0] = static_cast<uint8_t>(value >> 24);
    at[1] = static_cast<uint8_t>(value >> 16);
    at[2] = static_cast<uint8_t>(value >> 8);
    at[3] = static_cast<uint8_t>(value);
}

void sleep_microseconds(uint32_t microseconds) {
    timespec left{};
    left.tv_sec = static_cast<time_t>(microseconds / 1000000);
    left.tv_nsec = static_cast<long>(microseconds % 1000000) * 1000;
    while (nanosleep(&left, &left) != 0 && errno == EINTR) {
    }
}

void print_local_time() {
    const time_t now = time(nullptr);
    tm local{};
    if (localtime_r(&now, &local) == nullptr) {
        return;
    }
    printf("%4d-%02d-%02d %02d:%02d:%02d\n", local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour,
           local.tm_min, local.tm_sec);
}

// The controller is asked in one transfer and answers in a later one: a status, then the register.
constexpr uint8_t qoram_answer_command = 0xC4;
constexpr uint8_t qoram_answered = 2;
constexpr uint32_t qoram_request_size = 7;
constexpr uint32_t qoram_answer_size = 5;

struct qoram {
    uint32_t inst_id;
    uint32_t chip_id;
    uint8_t request[qoram_request_size];
    uint8_t answer[qoram_answer_size];
};

qoram asked_for(char **args) {
    qoram chip = {word_to_u32(args[0]), word_to_u32(args[1]), {0x84}, {}};
    put_u32(chip.request + 3, word_to_u32(args[2]));
    return chip;
}

void ask(const qoram *chip) {
    drv_spi_write(chip->inst_id, chip->chip_id, chip->request, qoram_request_size);
}

uint32_t take_answer(qoram *chip) {
    return drv_spi_read(chip->inst_id, chip->chip_id, &qoram_answer_command, 1, chip->answer, qoram_answer_size);
}

int spi_qoram_read(int count, char **args) {
    if (count < 4) {
        return -1;
    }
    qoram chip = asked_for(args);
    drv_spi_init(chip.inst_id);
    ask(&chip);
    sleep_microseconds(word_to_u32(args[3]));
    const uint32_t ret = take_answer(&chip);
    printf("drv_spi_read:[ret]:%d rxbuffer[0]:0x%x,rxbuffer[1]:0x%x,rxbuffer[2]:0x%x,rxbuffer[3]:0x%x,"
           "rxbuffer[4]:0x%x\r\n",
           static_cast<int>(ret), chip.answer[0], chip.answer[1], chip.answer[2], chip.answer[3], chip.answer[4]);
    drv_spi_exit(chip.inst_id);
    return static_cast<int>(ret);
}

int spi_qoram_write(int count, char **args) {
    if (count < 4) {
        return -1;
    }
    const uint32_t inst_id = word_to_u32(args[0]);
    uint8_t frame[11] = {0x04};
    put_u32(frame + 3, word_to_u32(args[2]));
    put_u32(frame + 7, word_to_u32(args[3]));
    drv_spi_init(inst_id);
    const uint32_t ret = drv_spi_write(inst_id, word_to_u32(args[1]), frame, sizeof frame);
    printf("drv_spi_write:[ret]:%d\r\n", static_cast<int>(ret));
    drv_spi_exit(inst_id);
    return static_cast<int>(ret);
}

// The agent answers within the transfer, so the help's pause has no use.
int spi_sa8009_read(int count, char **args) {
    if (count < 3) {
        return -1;
    }
    const uint32_t inst_id = word_to_u32(args[0]);
    uint8_t command[6] = {0x81, 0x01};
    uint8_t answer[12] = {};
    put_u32(command + 2, word_to_u32(args[2]));
    drv_spi_init(inst_id);
    const uint32_t ret = drv_spi_read(inst_id, word_to_u32(args[1]), command, sizeof command, answer, sizeof answer);
    printf("drv_spi_read:[ret]:%d\r\n", static_cast<int>(ret));
    int index = 0;
    for (const uint8_t byte : answer) {
        printf("rxbuff[%d]:0x%x\r\n", index++, byte);
    }
    drv_spi_exit(inst_id);
    return static_cast<int>(ret);
}

int spi_sa8009_write(int count, char **args) {
    if (count < 4) {
        return -1;
    }
    const uint32_t inst_id = word_to_u32(args[0]);
    uint8_t frame[10] = {0x82, 0x01};
    put_u32(frame + 2, word_to_u32(args[2]));
    put_u32(frame + 6, word_to_u32(args[3]));
    drv_spi_init(inst_id);
    const uint32_t ret = drv_spi_write(inst_id, word_to_u32(args[1]), frame, sizeof frame);
    drv_spi_exit(inst_id);
    printf("drv_spi_write:[ret]:%d\r\n", static_cast<int>(ret));
    return static_cast<int>(ret);
}

void print_failed_round(uint32_t round) {
    printf("time %d failed!", static_cast<int>(round));
    flush_partial_line();
}

// Each round asks for the register and then for the one at 5 of the same 256. That address stays in the request, so
// from the second round on both are at 5. 1 as soon as an answer is not there, else the code of the last read.
uint32_t ask_repeatedly(qoram *chip, uint32_t times) {
    uint32_t ret = 0;
    for (uint32_t round = 0; round < times; ++round) {
        chip->answer[0] = 0;
        ask(chip);
        take_answer(chip);
        if (chip->answer[0] != qoram_answered) {
            print_failed_round(round);
            return 1;
        }
        chip->request[qoram_request_size - 1] = 5;
        ask(chip);
        ret = take_answer(chip);
        if (chip->answer[0] != qoram_answered) {
            print_failed_round(round);
            printf("rx[0]=0x%x rx[1]=0x%x rx[2]=0x%x rx[3]=0x%x rx[4]=0x%x", chip->answer[0], chip->answer[1],
                   chip->answer[2], chip->answer[3], chip->answer[4]);
            flush_partial_line();
            return 1;
        }
    }
    print_local_time();
    return ret;
}

int spi_qoram_read_test(int count, char **args) {
    print_local_time();
    if (count < 4) {
        return -1;
    }
    qoram chip = asked_for(args);
    drv_spi_init(chip.inst_id);
    const uint32_t ret = ask_repeatedly(&chip, word_to_u32(args[3]));
    drv_spi_exit(chip.inst_id);
    return static_cast<int>(ret);
}

// The data pool outlasts the bus.
void open_card_bus(uint32_t inst_id) {
    drv_cpld_init_usr_data_pool(inst_id);
    drv_spi_init(inst_id);
}

void close_card_bus(uint32_t inst_id) {
    drv_spi_exit(inst_id);
    drv_cpld_exit_usr_data_pool(inst_id);
}

// The highest bit of the register's number tells a write.
constexpr uint32_t pic_cpld_write_bit = 0x8000;

uint32_t write_pic_cpld(uint32_t inst_id, uint32_t chip_id, uint32_t reg, uint32_t value) {
    const uint32_t address = reg | pic_cpld_write_bit;
    const uint8_t frame[4] = {static_cast<uint8_t>(address), static_cast<uint8_t>(address >> 8),
                              static_cast<uint8_t>(value), static_cast<uint8_t>(value >> 8)};
    return drv_spi_write(inst_id, chip_id, frame, sizeof frame);
}

uint32_t read_pic_cpld(uint32_t inst_id, uint32_t chip_id, uint32_t reg, uint8_t answer[2]) {
    const uint8_t command[2] = {static_cast<uint8_t>(reg), static_cast<uint8_t>(reg >> 8)};
    return drv_spi_read(inst_id, chip_id, command, sizeof command, answer, 2);
}

int spi_pic_cpld_read(int count, char **args) {
    if (count < 3) {
        return -1;
    }
    const uint32_t inst_id = word_to_u32(args[0]);
    uint8_t answer[2] = {};
    open_card_bus(inst_id);
    const uint32_t ret = read_pic_cpld(inst_id, word_to_u32(args[1]), word_to_u32(args[2]), answer);
    printf("drv_spi_read:[ret]:%d rxbuffer[0]:0x%x,rxbuffer[1]:0x%x\r\n", static_cast<int>(ret), answer[0], answer[1]);
    close_card_bus(inst_id);
    return static_cast<int>(ret);
}

int spi_pic_cpld_write(int count, char **args) {
    if (count < 4) {
        return -1;
    }
    const uint32_t inst_id = word_to_u32(args[0]);
    open_card_bus(inst_id);
    const uint32_t ret = write_pic_cpld(inst_id, word_to_u32(args[1]), word_to_u32(args[2]), word_to_u32(args[3]));
    close_card_bus(inst_id);
    printf("drv_spi_write:[ret]:%d\r\n", static_cast<int>(ret));
    return static_cast<int>(ret);
}

constexpr uint32_t scratch_register = 0x1B00;
constexpr uint32_t first_count = 0x1122;

// All bits set are never written: a bus that nobody drives reads as that.
constexpr uint32_t count_limit = 0xFFFF;

// A mismatch ends the rounds and is told, but is no failure; the codes of all transfers are one result.
uint32_t count_through_scratch(uint32_t inst_id, uint32_t chip_id, uint32_t times) {
    uint32_t result = 0;
    uint32_t counter = first_count;
    uint8_t answer[2] = {};
    for (uint32_t round = 0; round < times; ++round) {
        counter = (counter + 1) % count_limit;
        result |= write_pic_cpld(inst_id, chip_id, scratch_register, counter);
        result |= read_pic_cpld(inst_id, chip_id, scratch_register, answer);
        const uint32_t found = answer[0] | uint32_t{answer[1]} << 8;
        if (found != counter) {
            printf("drv_spi_test_failed,.(times:%d)\r\n", static_cast<int>(round));
            break;
        }
    }
    return result;
}

int spi_pic_cpld_test(int count, char **args) {
    if (count < 3) {
        return -1;
    }
    const uint32_t inst_id = word_to_u32(args[0]);
    print_local_time();
    open_card_bus(inst_id);
    const uint32_t result = count_through_scratch(inst_id, word_to_u32(args[1]), word_to_u32(args[2]));
    close_card_bus(inst_id);
    printf("drv_spi_test:[ret]:%d\r\n", static_cast<int>(result));
    print_local_time();
    return static_cast<int>(result);
}

constexpr std::array rows = {
    command_row{"spi_qoram_read", spi_qoram_read, "spi_qoram_read"},
    command_row{"spi_qoram_write", spi_qoram_write, "spi_qoram_write"},
    command_row{"spi_sa8009_read", spi_sa8009_read, "spi_sa8009_read inst_id chip_id reg usleep"},
    command_row{"spi_sa8009_write", spi_sa8009_write, "spi_sa8009_write"},
    command_row{"spi_qoram_read_test", spi_qoram_read_test, "spi_qoram_read_test inst_id chip_id reg times"},
    command_row{"spi_pic_cpld_read", spi_pic_cpld_read, "spi_pic_cpld_read inst_id chip_id reg"},
    command_row{"spi_pic_cpld_write", spi_pic_cpld_write, "spi_pic_cpld_write inst_id chip_id reg value"},
    command_row{"spi_pic_cpld_test", spi_pic_cpld_test, "spi_pic_cpld_test inst_id chip_id times"},
};

static_assert(rows_are_sound(rows));

} // namespace

int spi_test(int count, char **args) {
    return run_module(rows, count, args, timing_off);
}
