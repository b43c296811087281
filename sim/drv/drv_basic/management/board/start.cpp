// Programmable logic, start-up software and how far start-up has come.
#include "drv_basic/management/drv_board.h"

#include "sim/drv/drv_basic/management/board/unit.h"

using namespace kestro_sim;

namespace {

constexpr device_kind logic{"sim_board", "logic"};
constexpr device_kind bios{"sim_board", "bios"};
constexpr device_kind bios_areas{"sim_board", "bios_area"};
constexpr uint32_t bootstep_max = 255;

std::vector<uint32_t> logic_chips(board &b, const std::string &instance) {
    std::vector<uint32_t> chips = b.ids(instance, logic);
    refuse_if(chips.empty(), error::not_supported);
    return chips;
}

} // namespace

uint32_t drv_board_get_cpld_ver(uint32_t inst_id, uint32_t cpld_id, uint32_t *ver) {
    return operate([&](board &b) {
        refuse_null(ver);
        *ver = b.get(b.find(inst_id, logic, cpld_id), "version");
    });
}

uint32_t drv_board_get_cpld_num(uint32_t inst_id, uint32_t *num) {
    return operate([&](board &b) {
        refuse_null(num);
        *num = static_cast<uint32_t>(logic_chips(b, b.instance(inst_id)).size());
    });
}

// Control FPGAs are counted among the CPLDs: they stand on the same control bus.
uint32_t drv_board_get_ctrl_fpga_num(uint32_t inst_id, uint32_t *num) {
    return operate([&](board &b) {
        refuse_null(num);
        const std::string instance = b.instance(inst_id);
        uint32_t fpgas = 0;
        for (const uint32_t chip : logic_chips(b, instance)) {
            fpgas += b.get(b.find_at(instance, logic, chip), "is_fpga") != 0 ? 1 : 0;
        }
        *num = fpgas;
    });
}

uint32_t drv_board_get_bios_ver(uint32_t inst_id, char *text, uint32_t size) {
    return operate([&](board &b) { write_text(text, size, b.text(b.find(inst_id, bios, 0), "version")); });
}

uint32_t drv_board_get_area(uint32_t inst_id, uint32_t *area) {
    return operate([&](board &b) {
        refuse_null(area);
        *area = b.get(b.find(inst_id, bios, 0), "area");
    });
}

uint32_t drv_board_check_bios(uint32_t area, uint32_t *result) {
    return operate([&](board &b) {
        refuse_null(result);
        *result = b.get(b.find(DRV_INST_SELF, bios_areas, area), "fault") != 0 ? 1 : 0;
    });
}

// The peer shows its own step; an empty slot shows none.
uint32_t drv_board_get_peer_bootstep(uint32_t inst_id, uint32_t *step) {
    return operate([&](board &b) {
        refuse_null(step);
        const std::string peer = place_of_slot(b, peer_slot(b, inst_id));
        refuse_if(!b.is_present(peer), error::no_such_instance);
        *step = b.get(b.find_at(peer, units, 0), "bootstep");
    });
}

uint32_t drv_board_get_self_bootstep(uint32_t inst_id, uint32_t *step) {
    return read_unit(inst_id, "bootstep", step);
}

uint32_t drv_board_set_self_bootstep(uint32_t inst_id, uint32_t step) {
    return operate([&](board &b) {
        const device self = unit(b, inst_id);
        b.get(self, "bootstep");
        refuse_if(step > bootstep_max, error::bad_value);
        b.put(self, "bootstep", step);
    });
}

uint32_t drv_board_get_factory_reset_flag(uint32_t inst_id, uint32_t *flag) {
    return read_unit(inst_id, "factory_reset", flag);
}
