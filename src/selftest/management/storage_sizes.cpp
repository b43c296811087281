// Memories of the board.
#include "selftest/management/storage_sizes.h"

#include "drv_basic/management/drv_board.h"
#include "selftest/entry_walk.h"
#include "selftest/result_code.h"

namespace {

// In MiB. A memory that is not fitted has size 0.
struct storage_sizes {
    uint32_t bootrom;
    uint32_t flash;
    uint32_t nandflash;
    uint32_t nvram;
    uint32_t sdram;
};

int report_size(uint32_t ret, const char *name, uint32_t size, report_sink sink) {
    if (ret == 0 || is_not_supported(ret)) {
        return 0;
    }
    report_append(sink, "Error  : get %s fail 0x%x. %s 0x%x\r\n", name, ret, name, size);
    return -1;
}

int read_sizes(uint32_t inst_id, storage_sizes *sizes, report_sink sink) {
    uint32_t ret = drv_board_get_bootrom_size(inst_id, &sizes->bootrom);
    int result = report_size(ret, "bootrom_size", sizes->bootrom, sink);
    ret = drv_board_get_flash_size(inst_id, &sizes->flash);
    result |= report_size(ret, "flash_size", sizes->flash, sink);
    ret = drv_board_get_nandflash_size(inst_id, &sizes->nandflash);
    result |= report_size(ret, "nandflash_size", sizes->nandflash, sink);
    ret = drv_board_get_nvram_size(inst_id, &sizes->nvram);
    result |= report_size(ret, "nvram_size", sizes->nvram, sink);
    ret = drv_board_get_sdram_size(inst_id, &sizes->sdram);
    return result | report_size(ret, "sdram_size", sizes->sdram, sink);
}

// The block is shown as a text although it begins with the maker's number and the serial number: what is seen of it are
// the bytes before the first zero. board_get_dimm_info of the board test shows it byte by byte.
int check_dimm(uint32_t inst_id, uint32_t chip_id, report_sink sink) {
    constexpr uint32_t info_size = 127;
    char info[info_size + 1] = {};
    const uint32_t ret = drv_board_get_dimm_info(inst_id, chip_id, reinterpret_cast<uint8_t *>(info), info_size);
    if (ret != 0) {
        report_append(sink, "Error  : get dimm info fail 0x%x. %s\r\n", ret, info);
        return -1;
    }
    report_append(sink, "Success: get dimm info: %s\r\n", info);
    return 0;
}

int check_dimms(uint32_t inst_id, report_sink sink) {
    entry_walk walk = open_entry_walk(inst_id, "board_mng", "dimm_info");
    if (!has_entries(walk)) {
        report_append(sink, "Info   : not support dimm info.\r\n");
        return 0;
    }
    int result = 0;
    while (next_entry(&walk)) {
        uint32_t chip_id = 0;
        if (read_element(walk, "chip_id", &chip_id) == 0) {
            result |= check_dimm(inst_id, chip_id, sink);
        }
    }
    return result;
}

} // namespace

int check_storage_sizes(uint32_t inst_id, report_sink sink) {
    storage_sizes sizes = {};
    const int result = read_sizes(inst_id, &sizes, sink);
    // The summary is the inventory of the board and no verdict: it begins with "Success" whatever was read.
    report_append(sink,
                  "Success: bootrom_size 0x%x flash_size 0x%x nandflash_size 0x%x nvram_size 0x%x sdram_size 0x%x\r\n",
                  sizes.bootrom, sizes.flash, sizes.nandflash, sizes.nvram, sizes.sdram);
    return check_dimms(inst_id, sink) | result;
}
