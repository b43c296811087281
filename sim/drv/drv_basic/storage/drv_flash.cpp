// Flash by section and by partition. A save of the environment that is on its way goes on first.
#include "drv_basic/storage/drv_flash.h"

#include "sim/devices/storage/flash.h"
#include "sim/devices/storage/flash_environment.h"
#include "sim/drv/driver.h"

using namespace kestro_sim;

namespace {

void copy_out(const std::vector<uint8_t> &bytes, uint8_t *buffer) {
    std::copy(bytes.begin(), bytes.end(), buffer);
}

} // namespace

uint32_t drv_flash_read(uint32_t inst_id, uint32_t section_id, uint32_t offset, uint8_t *buffer, uint32_t len) {
    return operate([&](board &b) {
        refuse_null(buffer);
        const std::string place = b.instance(inst_id);
        go_on_saving(b, place);
        copy_out(read_section(b, place, section_id, offset, len), buffer);
    });
}

uint32_t drv_flash_write(uint32_t inst_id, uint32_t section_id, uint32_t offset, const uint8_t *buffer, uint32_t len) {
    return operate([&](board &b) {
        refuse_null(buffer);
        const std::string place = b.instance(inst_id);
        go_on_saving(b, place);
        write_section(b, place, section_id, offset, {buffer, len});
    });
}

uint32_t drv_flash_mtd_read(const char *mtd_name, uint32_t offset, uint8_t *buffer, uint32_t len) {
    return operate([&](board &b) {
        refuse_null(mtd_name, buffer);
        go_on_saving(b, b.self());
        copy_out(read_partition(b, b.self(), mtd_name, offset, len), buffer);
    });
}

uint32_t drv_flash_mtd_write(const char *mtd_name, uint32_t offset, const uint8_t *buffer, uint32_t len) {
    return operate([&](board &b) {
        refuse_null(mtd_name, buffer);
        go_on_saving(b, b.self());
        program_partition(b, b.self(), mtd_name, offset, {buffer, len});
    });
}

uint32_t drv_flash_get_nand_is_exist(uint32_t *is_exist) {
    return operate([&](board &b) {
        refuse_null(is_exist);
        *is_exist = has_nand(b, b.self()) ? 1 : 0;
    });
}

uint32_t drv_flash_get_nand_part_num(uint32_t *num) {
    return operate([&](board &b) {
        refuse_null(num);
        *num = nand_partitions(b, b.self());
    });
}
