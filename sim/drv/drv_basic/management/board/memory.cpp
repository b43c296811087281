// Memories of the board: sizes in MiB, and what the memory modules tell about themselves.
#include "drv_basic/management/drv_board.h"

#include "sim/drv/drv_basic/management/board/unit.h"

#include <array>

using namespace kestro_sim;

namespace {

constexpr device_kind memories{"sim_board", "memory"};
constexpr device_kind dimms{"sim_board", "dimm"};
constexpr device_kind cpus{"sim_board", "cpu"};

// The manufacturing block of a DDR4 SPD, bytes 320 to 381.
constexpr size_t spd_first = 320;
constexpr size_t spd_size = 62;
constexpr size_t part_number_size = 20;

uint32_t read_size(uint32_t inst_id, const char *name, uint32_t *size) {
    return operate([&](board &b) {
        refuse_null(size);
        *size = b.get(b.find(inst_id, memories, 0), name);
    });
}

uint8_t bcd(uint32_t number) {
    return static_cast<uint8_t>((number / 10 % 10) << 4U | number % 10);
}

// Bytes are called by their SPD numbers.
class spd_block {
  public:
    uint8_t &at(size_t number) {
        return bytes_.at(number - spd_first);
    }
    void put_wide(size_t number, uint32_t value, size_t length) {
        for (size_t i = length; i > 0; --i, value >>= 8U) {
            at(number + i - 1) = static_cast<uint8_t>(value);
        }
    }
    const std::array<uint8_t, spd_size> &bytes() const {
        return bytes_;
    }

  private:
    std::array<uint8_t, spd_size> bytes_{};
};

spd_block spd_of(board &b, const device &dimm) {
    spd_block spd;
    spd.put_wide(320, b.get(dimm, "maker"), 2);
    spd.at(322) = static_cast<uint8_t>(b.get(dimm, "site"));
    spd.at(323) = bcd(b.get(dimm, "year"));
    spd.at(324) = bcd(b.get(dimm, "week"));
    spd.put_wide(325, b.get(dimm, "serial"), 4);
    std::string part = b.text(dimm, "part_number");
    part.resize(part_number_size, ' ');
    for (size_t i = 0; i < part_number_size; ++i) {
        spd.at(329 + i) = static_cast<uint8_t>(part[i]);
    }
    spd.at(349) = static_cast<uint8_t>(b.get(dimm, "revision"));
    spd.put_wide(350, b.get(dimm, "chip_maker"), 2);
    spd.at(352) = static_cast<uint8_t>(b.get(dimm, "stepping"));
    return spd;
}

} // namespace

uint32_t drv_board_get_bootrom_size(uint32_t inst_id, uint32_t *size) {
    return read_size(inst_id, "bootrom_mib", size);
}

uint32_t drv_board_get_flash_size(uint32_t inst_id, uint32_t *size) {
    return read_size(inst_id, "flash_mib", size);
}

uint32_t drv_board_get_nandflash_size(uint32_t inst_id, uint32_t *size) {
    return read_size(inst_id, "nandflash_mib", size);
}

uint32_t drv_board_get_nvram_size(uint32_t inst_id, uint32_t *size) {
    return read_size(inst_id, "nvram_mib", size);
}

uint32_t drv_board_get_sdram_size(uint32_t inst_id, uint32_t *size) {
    return read_size(inst_id, "sdram_mib", size);
}

uint32_t drv_board_get_dimm_info(uint32_t inst_id, uint32_t dimm_id, uint8_t *buffer, uint32_t size) {
    return operate([&](board &b) {
        refuse_null(buffer);
        const spd_block spd = spd_of(b, b.find(inst_id, dimms, dimm_id));
        refuse_if(size < spd_size, error::too_small);
        std::memcpy(buffer, spd.bytes().data(), spd_size);
    });
}

uint32_t drv_board_get_dimm_temperature(uint32_t inst_id, uint32_t dimm_id, int32_t *temperature) {
    return operate([&](board &b) {
        refuse_null(temperature);
        *temperature = static_cast<int32_t>(b.get(b.find(inst_id, dimms, dimm_id), "celsius"));
    });
}

uint32_t drv_board_check_dimm_bus_status(uint32_t inst_id, uint32_t dimm_no, uint32_t *status, char *dfx,
                                         uint32_t size) {
    return operate([&](board &b) {
        finding found;
        if (b.get(b.find(inst_id, dimms, dimm_no), "bus_fault") != 0) {
            add_fault(found, "memory module " + std::to_string(dimm_no) + " does not answer on its bus");
        }
        tell(found, status, dfx, size);
    });
}

uint32_t drv_board_get_ddr_event(uint32_t inst_id, uint32_t cpu_chip_no, uint32_t *state, char *dfx, uint32_t size) {
    return operate([&](board &b) {
        finding found;
        if (b.get(b.find(inst_id, cpus, cpu_chip_no), "ddr_event") != 0) {
            add_fault(found, "memory event at processor " + std::to_string(cpu_chip_no));
        }
        tell(found, state, dfx, size);
    });
}
