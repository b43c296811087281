// eeprom_test: the identity EEPROM of boards and cards, byte by byte within its sections, and the two chips of
// non-volatile RAM. What labels and addresses mean is left to their own modules. No banners here.
#include "modules/eeprom_test.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "drv_basic/storage/drv_eeprom.h"
#include "drv_basic/storage/drv_nvram.h"
#include "modules/modules.h"
#include "selftest/cards/card_test.h"
#include "shell/byte_list.h"
#include "shell/console.h"
#include "shell/dispatch.h"
#include "shell/words.h"

namespace {

constexpr byte_list_words list_words = {"buff", "buff", ",value"};

uint8_t *new_byte_area(uint32_t len) {
    return reinterpret_cast<uint8_t *>(new_text_area(len));
}

// Erased bytes are left out, and all others go out as they are: a label reads as text, and the rest is for the hex
// line.
void print_characters(const uint8_t *bytes, uint32_t len) {
    constexpr uint8_t erased = 0xFF;
    for (uint32_t i = 0; i < len; ++i) {
        if (bytes[i] < erased) {
            putchar(bytes[i]);
        }
    }
    puts("\r");
}

void print_hex(const uint8_t *bytes, uint32_t len) {
    for (uint32_t i = 0; i < len; ++i) {
        printf(i == 0 ? "%02x" : " %02x", bytes[i]);
    }
    printf("\r\n");
}

// Usage lines have a full-width colon in GBK: that is what the terminals of the factory show.
int eeprom_read(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **inputs = after_optional_inst(count, args, 3, &inst_id);
    if (inputs == nullptr) {
        puts("parameter\xA3\xBAinst_id section_id offset len\r");
        return -1;
    }
    const uint32_t section_id = word_to_u32(inputs[0]);
    const uint32_t offset = word_to_u32(inputs[1]);
    const uint32_t len = word_to_u32(inputs[2]);
    uint8_t *buffer = new_byte_area(len);
    if (buffer == nullptr) {
        return -1;
    }
    puts("card eeprom section id: 0-ELABLE 1-ELABLE_BAK 6-HEADER 7-ICT 8-MAC 9-MAC_BAK 10-CARD_TYPE 11-LOG "
         "12-PUBLIC_KEY 15-BLACK_BOX \r");
    const uint32_t ret = drv_eeprom_read_data(inst_id, section_id, offset, buffer, len);
    if (ret != 0) {
        printf("drv_eeprom_read fail. [ret]:%#x\r\n", ret);
        free(buffer);
        return -1;
    }
    print_characters(buffer, len);
    printf("drv_eeprom_read:[ret]:%#x\r\n", ret);
    print_hex(buffer, len);
    free(buffer);
    return 0;
}

// Its line bears the name of the read: scripts of the factory look for it.
int eeprom_write(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **inputs = after_optional_inst(count, args, 4, &inst_id);
    if (inputs == nullptr) {
        puts("parameter\xA3\xBAinst_id section_id offset value len, for example: 0xff000005 10 0 0x12,0x34,56,67 4 \r");
        return -1;
    }
    const uint32_t section_id = word_to_u32(inputs[0]);
    const uint32_t offset = word_to_u32(inputs[1]);
    const uint32_t len = word_to_u32(inputs[3]);
    uint8_t *buffer = new_byte_area(len);
    if (buffer == nullptr) {
        return -1;
    }
    parse_byte_list(inputs[2], len, buffer, list_words);
    const uint32_t ret = drv_eeprom_write_data(inst_id, section_id, offset, buffer, len);
    printf("drv_eeprom_read:[ret]:%#x\r\n", ret);
    free(buffer);
    return static_cast<int>(ret);
}

int marlow_card_one_key_test(int count, char **args) {
    if (count < 1) {
        puts("kestro_test card_eeprom_test inst_id\r");
        return -1;
    }
    return card_onekey_test(word_to_u32(args[0]), console_sink);
}

// The bytes are shown whatever the driver says: those of a read that broke off tell how far it came.
int nvram_read(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **inputs = after_optional_inst(count, args, 3, &inst_id);
    if (inputs == nullptr) {
        return -1;
    }
    const uint32_t chip_id = word_to_u32(inputs[0]);
    const uint32_t offset = word_to_u32(inputs[1]);
    const uint32_t len = word_to_u32(inputs[2]);
    uint8_t *buffer = new_byte_area(len);
    if (buffer == nullptr) {
        return -1;
    }
    const uint32_t ret = drv_nvram_read(inst_id, chip_id, offset, buffer, len);
    printf("drv_nvram_read:[ret]:%#x\r\n", ret);
    print_hex(buffer, len);
    free(buffer);
    return static_cast<int>(ret);
}

int nvram_write(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **inputs = after_optional_inst(count, args, 4, &inst_id);
    if (inputs == nullptr) {
        return -1;
    }
    const uint32_t chip_id = word_to_u32(inputs[0]);
    const uint32_t offset = word_to_u32(inputs[1]);
    const uint32_t len = word_to_u32(inputs[3]);
    uint8_t *buffer = new_byte_area(len);
    if (buffer == nullptr) {
        return -1;
    }
    parse_byte_list(inputs[2], len, buffer, list_words);
    const uint32_t ret = drv_nvram_write(inst_id, chip_id, offset, buffer, len);
    printf("drv_nvram_write:[ret]:%#x\r\n", ret);
    free(buffer);
    return static_cast<int>(ret);
}

int nvram_get_sync_status(int /*count*/, char ** /*args*/) {
    uint32_t status = 0;
    const uint32_t ret = drv_nvram_get_sync_status(DRV_INST_SELF, 0, &status);
    printf("drv_nvram_get_sync_status:[ret]:%x[status]:%x\r\n", ret, status);
    return static_cast<int>(ret);
}

constexpr std::array rows = {
    command_row{"eeprom_read", eeprom_read, "eeprom_read                inst_id section_id offset len"},
    command_row{"eeprom_write", eeprom_write, "eeprom_write               inst_id section_id offset buffer len"},
    command_row{"marlow_card_one_key_test", marlow_card_one_key_test, "marlow_card_one_key_test   inst_id"},
    command_row{"nvram_read", nvram_read, "nvram_read                 inst_id chip_id offset len"},
    command_row{"nvram_write", nvram_write, "nvram_write                inst_id chip_id offset buffer len"},
    command_row{"nvram_get_sync_status", nvram_get_sync_status, "nvram_get_sync_status      null"},
};

static_assert(rows_are_sound(rows));

} // namespace

int eeprom_commands::eeprom_init(int count, char **args) {
    if (count < 1) {
        puts("kestro_test eeprom_test eeprom_init inst_id\r");
        return -1;
    }
    const uint32_t ret = drv_eeprom_init(word_to_u32(args[0]));
    printf("drv_eeprom_init:[ret]:%#x\r\n", ret);
    return static_cast<int>(ret);
}

int eeprom_commands::eeprom_exit(int count, char **args) {
    if (count < 1) {
        puts("kestro_test eeprom_test eeprom_exit inst_id\r");
        return -1;
    }
    const uint32_t ret = drv_eeprom_exit(word_to_u32(args[0]));
    printf("drv_eeprom_exit:[ret]:%#x\r\n", ret);
    return static_cast<int>(ret);
}

int eeprom_test(int count, char **args) {
    return run_module(rows, count, args);
}
