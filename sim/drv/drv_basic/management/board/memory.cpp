// Memories of the board: sizes in MiB, and what the memory modules tell about themselves.
#include "drv_basic/management/drv_board.h"

#include "sim/devices/management/memory.h"
#include "sim/drv/drv_basic/management/board/unit.h"

using namespace kestro_sim;

namespace {

uint32_t read_size(uint32_t inst_id, word_of<memory::family> name, uint32_t *size) {
    return operate([&](board &b) {
        refuse_null(size);
        *size = b.get(b.find<memory::family>(inst_id), name);
    });
}

// What a module tells comes over its own bus.
device_of<dimm::family> readable_dimm(board &b, uint32_t inst_id, uint32_t dimm_id) {
    auto which = b.find<dimm::family>(inst_id, dimm_id);
    refuse_if(b.has(which, dimm::bus_fault) && b.get(which, dimm::bus_fault) != 0, error::not_ready);
    return which;
}

} // namespace

uint32_t drv_board_get_bootrom_size(uint32_t inst_id, uint32_t *size) {
    return read_size(inst_id, memory::bootrom_mib, size);
}

uint32_t drv_board_get_flash_size(uint32_t inst_id, uint32_t *size) {
    return read_size(inst_id, memory::flash_mib, size);
}

uint32_t drv_board_get_nandflash_size(uint32_t inst_id, uint32_t *size) {
    return read_size(inst_id, memory::nandflash_mib, size);
}

uint32_t drv_board_get_nvram_size(uint32_t inst_id, uint32_t *size) {
    return read_size(inst_id, memory::nvram_mib, size);
}

uint32_t drv_board_get_sdram_size(uint32_t inst_id, uint32_t *size) {
    return read_size(inst_id, memory::sdram_mib, size);
}

uint32_t drv_board_get_dimm_info(uint32_t inst_id, uint32_t dimm_id, uint8_t *buffer, uint32_t size) {
    return operate([&](board &b) {
        refuse_null(buffer);
        const auto which = readable_dimm(b, inst_id, dimm_id);
        refuse_if(size < dimm::spd_size, error::too_small);
        for (uint32_t i = 0; i < dimm::spd_size; ++i) {
            buffer[i] = static_cast<uint8_t>(read_space(b, dimm::spd, which, dimm::spd_first + i));
        }
    });
}

uint32_t drv_board_get_dimm_temperature(uint32_t inst_id, uint32_t dimm_id, int32_t *temperature) {
    return operate([&](board &b) {
        refuse_null(temperature);
        *temperature = static_cast<int32_t>(b.get(readable_dimm(b, inst_id, dimm_id), dimm::celsius));
    });
}

uint32_t drv_board_check_dimm_bus_status(uint32_t inst_id, uint32_t dimm_no, uint32_t *status, char *dfx,
                                         uint32_t size) {
    return operate([&](board &b) {
        finding found;
        if (b.get(b.find<dimm::family>(inst_id, dimm_no), dimm::bus_fault) != 0) {
            add_fault(found, "memory module " + std::to_string(dimm_no) + " does not answer on its bus");
        }
        tell(found, status, dfx, size);
    });
}

uint32_t drv_board_get_ddr_event(uint32_t inst_id, uint32_t cpu_chip_no, uint32_t *state, char *dfx, uint32_t size) {
    return operate([&](board &b) {
        finding found;
        if (b.get(b.find<processor::family>(inst_id, cpu_chip_no), processor::ddr_event) != 0) {
            add_fault(found, "memory event at processor " + std::to_string(cpu_chip_no));
        }
        tell(found, state, dfx, size);
    });
}
