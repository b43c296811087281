// Programmable logic, start-up software and how far start-up has come.
#include "drv_board.h"

#include "sim/drv/board/unit.h"

using namespace kestro_sim;

namespace {

constexpr device_kind logic{"sim_board", "logic"};
constexpr device_kind bios{"sim_board", "bios"};
constexpr device_kind bios_areas{"sim_board", "bios_area"};
constexpr uint32_t bootstep_max = 255;

std::vector<uint32_t> logic_chips(board &desk, const std::string &instance) {
    std::vector<uint32_t> chips = desk.ids(instance, logic);
    refuse_if(chips.empty(), error::not_supported);
    return chips;
}

} // namespace

uint32_t drv_board_get_cpld_ver(uint32_t inst_id, uint32_t cpld_id, uint32_t *ver) {
    return operate([&](board &desk) {
        refuse_null(ver);
        *ver = desk.get(desk.find(inst_id, logic, cpld_id), "version");
    });
}

uint32_t drv_board_get_cpld_num(uint32_t inst_id, uint32_t *num) {
    return operate([&](board &desk) {
        refuse_null(num);
        *num = static_cast<uint32_t>(logic_chips(desk, desk.instance(inst_id)).size());
    });
}

// Control FPGAs are counted among the CPLDs: they stand on the same control bus.
uint32_t drv_board_get_ctrl_fpga_num(uint32_t inst_id, uint32_t *num) {
    return operate([&](board &desk) {
        refuse_null(num);
        const std::string instance = desk.instance(inst_id);
        uint32_t fpgas = 0;
        for (const uint32_t chip : logic_chips(desk, instance)) {
            fpgas += desk.get(desk.find_at(instance, logic, chip), "is_fpga") != 0 ? 1 : 0;
        }
        *num = fpgas;
    });
}

uint32_t drv_board_get_bios_ver(uint32_t inst_id, char *text, uint32_t size) {
    return operate([&](board &desk) { write_text(text, size, desk.text(desk.find(inst_id, bios, 0), "version")); });
}

uint32_t drv_board_get_area(uint32_t inst_id, uint32_t *area) {
    return operate([&](board &desk) {
        refuse_null(area);
        *area = desk.get(desk.find(inst_id, bios, 0), "area");
    });
}

uint32_t drv_board_check_bios(uint32_t area, uint32_t *result) {
    return operate([&](board &desk) {
        refuse_null(result);
        *result = desk.get(desk.find(DRV_INST_SELF, bios_areas, area), "fault") != 0 ? 1 : 0;
    });
}

// The peer shows its own step; an empty slot shows none.
uint32_t drv_board_get_peer_bootstep(uint32_t inst_id, uint32_t *step) {
    return operate([&](board &desk) {
        refuse_null(step);
        const std::string peer = place_of_slot(desk, peer_slot(desk, inst_id));
        refuse_if(!desk.is_present(peer), error::no_such_instance);
        *step = desk.get(desk.find_at(peer, units, 0), "bootstep");
    });
}

uint32_t drv_board_get_self_bootstep(uint32_t inst_id, uint32_t *step) {
    return read_unit(inst_id, "bootstep", step);
}

uint32_t drv_board_set_self_bootstep(uint32_t inst_id, uint32_t step) {
    return operate([&](board &desk) {
        const device self = unit(desk, inst_id);
        desk.get(self, "bootstep");
        refuse_if(step > bootstep_max, error::bad_value);
        desk.put(self, "bootstep", step);
    });
}

uint32_t drv_board_get_factory_reset_flag(uint32_t inst_id, uint32_t *flag) {
    return read_unit(inst_id, "factory_reset", flag);
}
