// Programmable logic, start-up software and how far start-up has come.
#include "drv_basic/management/drv_board.h"

#include "sim/devices/chassis/slots.h"
#include "sim/devices/management/firmware.h"
#include "sim/drv/drv_basic/management/board/unit.h"

using namespace kestro_sim;

namespace {

std::vector<device_of<logic_chip::family>> logic_chips(board &b, uint32_t inst_id) {
    auto chips = b.all_at<logic_chip::family>(b.instance(inst_id));
    refuse_if(chips.empty(), error::not_supported);
    return chips;
}

} // namespace

uint32_t drv_board_get_cpld_ver(uint32_t inst_id, uint32_t cpld_id, uint32_t *ver) {
    return operate([&](board &b) {
        refuse_null(ver);
        const auto chip = b.find<logic_chip::family>(inst_id, cpld_id);
        logic_chip::need_logic(b, chip);
        *ver = logic_chip::read_version(b, chip);
    });
}

uint32_t drv_board_get_cpld_num(uint32_t inst_id, uint32_t *num) {
    return operate([&](board &b) {
        refuse_null(num);
        *num = static_cast<uint32_t>(logic_chips(b, inst_id).size());
    });
}

// Control FPGAs are counted among the CPLDs: they stand on the same control bus.
uint32_t drv_board_get_ctrl_fpga_num(uint32_t inst_id, uint32_t *num) {
    return operate([&](board &b) {
        refuse_null(num);
        uint32_t fpgas = 0;
        for (const auto &chip : logic_chips(b, inst_id)) {
            fpgas += b.get(chip, logic_chip::is_fpga);
        }
        *num = fpgas;
    });
}

uint32_t drv_board_get_bios_ver(uint32_t inst_id, char *text, uint32_t size) {
    return operate([&](board &b) { write_text(text, size, b.text(b.find<bios::family>(inst_id), bios::version)); });
}

uint32_t drv_board_get_area(uint32_t inst_id, uint32_t *area) {
    return operate([&](board &b) {
        refuse_null(area);
        *area = b.get(b.find<bios::family>(inst_id), bios::area);
    });
}

uint32_t drv_board_check_bios(uint32_t area, uint32_t *result) {
    return operate([&](board &b) {
        refuse_null(result);
        *result = b.get(b.find<bios_area::family>(DRV_INST_SELF, area), bios_area::fault) != 0 ? 1 : 0;
    });
}

// The peer shows its own step; an empty slot shows none.
uint32_t drv_board_get_peer_bootstep(uint32_t inst_id, uint32_t *step) {
    return operate([&](board &b) {
        refuse_null(step);
        const std::string peer = place_of_slot(b, peer_slot(b, inst_id));
        refuse_if(!b.is_present(peer), error::no_such_instance);
        *step = board_unit::read_bootstep(b, b.find_at<board_unit::family>(peer));
    });
}

uint32_t drv_board_get_self_bootstep(uint32_t inst_id, uint32_t *step) {
    return operate([&](board &b) {
        refuse_null(step);
        *step = board_unit::read_bootstep(b, unit(b, inst_id));
    });
}

uint32_t drv_board_set_self_bootstep(uint32_t inst_id, uint32_t step) {
    return operate([&](board &b) { b.put(unit(b, inst_id), board_unit::bootstep, step); });
}

uint32_t drv_board_get_factory_reset_flag(uint32_t inst_id, uint32_t *flag) {
    return read_unit(inst_id, board_unit::factory_reset, flag);
}
