// board_test, memory modules (DIMMs): what their SPD tells of their making, and their temperature.
#include <cstdint>
#include <cstdio>

#include "drv_basic/management/drv_board.h"
#include "modules/board_test/handlers.h"
#include "shell/result_print.h"
#include "shell/words.h"

namespace board_commands {

namespace {

// Byte 320 + k of the module's SPD, the first of its manufacturing information, is byte k of the area. The area has one
// byte more than the driver is told of.
constexpr uint32_t dimm_info_size = 127;

constexpr uint32_t part_number_at = 9;
constexpr uint32_t part_number_end = 29;
constexpr uint32_t maker_data_at = 33;
constexpr uint32_t maker_data_end = 62;

// Maker of the module, place, year and week of its making, serial number.
void print_dimm_origin(const uint8_t *info) {
    printf("addr 320,321: 0x%x,0x%x\r\n", info[0], info[1]);
    printf("addr 322: 0x%x\r\n", info[2]);
    printf("addr 323,324: 0x%x,0x%x\r\n", info[3], info[4]);
    printf("addr 325-328: 0x%x,0x%x,0x%x,0x%x\r\n", info[5], info[6], info[7], info[8]);
}

void print_part_number(const uint8_t *info) {
    puts("addr 329-348:\r");
    for (uint32_t i = part_number_at; i < part_number_end; ++i) {
        printf("%c,", info[i]);
    }
    puts("\r");
}

// Revision of the module, maker and stepping of its memory chips.
void print_dimm_revision(const uint8_t *info) {
    printf("addr 349: 0x%x\r\n", info[29]);
    printf("addr 350,351: 0x%x,0x%x\r\n", info[30], info[31]);
    printf("addr 352: 0x%x\r\n", info[32]);
}

void print_maker_data(const uint8_t *info) {
    puts("addr 353-381:\r");
    for (uint32_t i = maker_data_at; i < maker_data_end; ++i) {
        printf("0x%x,", info[i]);
    }
    puts("\r");
}

} // namespace

int board_get_dimm_info(int count, char **args) {
    uint32_t inst_id = 0;
    char **words = after_optional_inst(count, args, 1, &inst_id);
    if (words == nullptr) {
        return usage("board_get_dimm_info", "inst_id dimm_id");
    }
    uint8_t info[dimm_info_size + 1] = {};
    const uint32_t ret = drv_board_get_dimm_info(inst_id, word_to_u32(words[0]), info, dimm_info_size);
    // A module that answers in part is of interest, too: what was read is shown whatever the driver says of it.
    printf("dimm_info, ret:%d\r\n", static_cast<int>(ret));
    print_dimm_origin(info);
    print_part_number(info);
    print_dimm_revision(info);
    print_maker_data(info);
    print_result("%x ", ret);
    return static_cast<int>(ret);
}

int board_get_dimm_temperature(int count, char **args) {
    uint32_t inst_id = 0;
    char **words = after_optional_inst(count, args, 1, &inst_id);
    if (words == nullptr) {
        return usage("board_get_dimm_temperature", "inst_id dimm_id");
    }
    int32_t temperature = 0;
    const uint32_t ret = drv_board_get_dimm_temperature(inst_id, word_to_u32(words[0]), &temperature);
    printf("dimm_temperature, ret:%d\r\n", static_cast<int>(ret));
    // Degrees Celsius as one sign of the GB2312 code page; the bytes go out as they stand, whatever the console's own.
    printf("temperature: %d\xA1\xE6\r\n", temperature);
    puts("\r");
    print_result("%x ", ret);
    return static_cast<int>(ret);
}

} // namespace board_commands
