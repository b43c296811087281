// flash_test: the flash chips of the board as bytes, by section and by MTD partition, and whether there is NAND beside
// them. No banners here.
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "drv_basic/storage/drv_flash.h"
#include "modules/modules.h"
#include "shell/byte_list.h"
#include "shell/console.h"
#include "shell/dispatch.h"
#include "shell/words.h"

namespace {

constexpr byte_list_words list_words{"buff", "buff", ",value"};

// All bytes on one line, also those that a failed read left at 0.
void print_bytes(const uint8_t *buffer, uint32_t len) {
    printf("buff:");
    for (uint32_t i = 0; i < len; ++i) {
        printf("0x%x ", buffer[i]);
    }
    printf("\r\n");
}

int flash_read(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **inputs = after_optional_inst(count, args, 3, &inst_id);
    if (inputs == nullptr) {
        printf("./kestro_test flash_test %s [inst_id] [section_id] [offset] [len]\r\n", "flash_read");
        return -1;
    }
    const uint32_t section_id = word_to_u32(inputs[0]);
    const uint32_t offset = word_to_u32(inputs[1]);
    const uint32_t len = word_to_u32(inputs[2]);
    auto *buffer = reinterpret_cast<uint8_t *>(new_text_area(len));
    if (buffer == nullptr) {
        return -1;
    }
    const uint32_t ret = drv_flash_read(inst_id, section_id, offset, buffer, len);
    print_bytes(buffer, len);
    free(buffer);
    return static_cast<int>(ret);
}

int flash_write(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **inputs = after_optional_inst(count, args, 4, &inst_id);
    if (inputs == nullptr) {
        printf("./kestro_test flash_test %s [inst_id] [section_id] [offset] [buffer] [len]\r\n", "flash_write");
        return -1;
    }
    const uint32_t section_id = word_to_u32(inputs[0]);
    const uint32_t offset = word_to_u32(inputs[1]);
    const uint32_t len = word_to_u32(inputs[3]);
    auto *buffer = reinterpret_cast<uint8_t *>(new_text_area(len));
    if (buffer == nullptr) {
        return -1;
    }
    parse_byte_list(inputs[2], len, buffer, list_words);
    const uint32_t ret = drv_flash_write(inst_id, section_id, offset, buffer, len);
    free(buffer);
    return static_cast<int>(ret);
}

int mtd_read(int count, char **args) {
    if (count < 3) {
        printf("./kestro_test flash_test %s [mtd_name] [offset] [len]\r\n", "mtd_read");
        return -1;
    }
    const uint32_t offset = word_to_u32(args[1]);
    const uint32_t len = word_to_u32(args[2]);
    auto *buffer = reinterpret_cast<uint8_t *>(new_text_area(len));
    if (buffer == nullptr) {
        return -1;
    }
    const uint32_t ret = drv_flash_mtd_read(args[0], offset, buffer, len);
    print_bytes(buffer, len);
    free(buffer);
    return static_cast<int>(ret);
}

int mtd_write(int count, char **args) {
    if (count < 4) {
        printf("./kestro_test flash_test %s [mtd_name] [offset] [buffer] [len]\r\n", "mtd_write");
        return -1;
    }
    const uint32_t offset = word_to_u32(args[1]);
    const uint32_t len = word_to_u32(args[3]);
    auto *buffer = reinterpret_cast<uint8_t *>(new_text_area(len));
    if (buffer == nullptr) {
        return -1;
    }
    parse_byte_list(args[2], len, buffer, list_words);
    const uint32_t ret = drv_flash_mtd_write(args[0], offset, buffer, len);
    free(buffer);
    return static_cast<int>(ret);
}

int get_nand_is_exist(int, char **) {
    uint32_t is_exist = 0;
    const uint32_t ret = drv_flash_get_nand_is_exist(&is_exist);
    printf("drv_flash_get_nand_is_exist:[ret]:0x%x\r\n is_exist:%d\r\n", ret, static_cast<int>(is_exist));
    return static_cast<int>(ret);
}

int get_nand_part_num(int, char **) {
    uint32_t num = 0;
    const uint32_t ret = drv_flash_get_nand_part_num(&num);
    printf("drv_flash_get_nand_part_num:[ret]:0x%x\r\n num:%d\r\n", ret, static_cast<int>(num));
    return static_cast<int>(ret);
}

constexpr std::array rows = {
    command_row{"flash_read", flash_read, "flash_read"},
    command_row{"flash_write", flash_write, "flash_write"},
    command_row{"mtd_read", mtd_read, "mtd_read"},
    command_row{"mtd_write", mtd_write, "mtd_write"},
    command_row{"get_nand_is_exist", get_nand_is_exist, "get_nand_is_exist"},
    command_row{"get_nand_part_num", get_nand_part_num, "get_nand_part_num"},
};

static_assert(rows_are_sound(rows));

} // namespace

int flash_test(int count, char **args) {
    return run_module(rows, count, args);
}
