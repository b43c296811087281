// Programmable logic: its registers by the bus, its checks, where it finds the network processor, and its images.
#include "drv_basic/chips/drv_cpld.h"

#include "sim/devices/chips/fpga.h"
#include "sim/drv/drv_basic/chips/loading.h"
#include "sim/drv/drv_basic/management/board/unit.h"

using namespace kestro_sim;

namespace {

// Nothing is there to be brought up: the chips load themselves, and each transfer brings its own memory.
uint32_t accept_instance(uint32_t inst_id) {
    return operate(
        [&](board &b) { refuse_if(b.all_at<logic_chip::family>(b.instance(inst_id)).empty(), error::not_supported); });
}

logic_chip::one chip(board &b, uint32_t inst_id, uint32_t chip_id) {
    logic_chip::one found = b.find<logic_chip::family>(inst_id, chip_id);
    logic_chip::need_logic(b, found);
    return found;
}

// The test port is wired to the board's own processor.
logic_chip::one own_chip(board &b, uint32_t inst_id, uint32_t chip_id) {
    refuse_if(b.instance(inst_id) != b.self(), error::not_supported);
    return chip(b, inst_id, chip_id);
}

} // namespace

uint32_t drv_cpld_init(uint32_t inst_id) {
    return accept_instance(inst_id);
}

uint32_t drv_cpld_deinit(uint32_t inst_id) {
    return accept_instance(inst_id);
}

uint32_t drv_cpld_reg_read(uint32_t inst_id, uint32_t chip_id, uint32_t offset, uint32_t *data) {
    return operate([&](board &b) {
        refuse_null(data);
        const auto which = chip(b, inst_id, chip_id);
        *data = read_space(b, logic_chip::space_of(which), which, offset);
    });
}

uint32_t drv_cpld_reg_write(uint32_t inst_id, uint32_t chip_id, uint32_t offset, uint32_t data) {
    return operate([&](board &b) {
        const auto which = chip(b, inst_id, chip_id);
        const register_space &space = logic_chip::space_of(which);
        refuse_if(data >> space.width != 0, error::bad_value);
        write_space(b, space, which, offset, data);
    });
}

uint32_t drv_cpld_reg_dump(uint32_t inst_id, uint32_t chip_id, uint32_t start, uint32_t num, char *buffer,
                           uint32_t size) {
    return operate([&](board &b) {
        refuse_null(buffer);
        write_text(buffer, size, logic_chip::dump(b, chip(b, inst_id, chip_id), start, num));
    });
}

uint32_t drv_cpld_selftest(uint32_t inst_id, uint32_t chip_id, uint32_t *result, char *msg, uint32_t size) {
    return operate([&](board &b) {
        refuse_null(result, msg);
        tell(logic_chip::selftest(b, chip(b, inst_id, chip_id)), result, msg, size);
    });
}

uint32_t drv_cpld_test_all_function(uint32_t inst_id, uint32_t chip_id, uint32_t *flag) {
    return operate([&](board &b) {
        refuse_null(flag);
        *flag = logic_chip::failed_functions(b, chip(b, inst_id, chip_id));
    });
}

uint32_t drv_cpld_get_build_time(uint32_t inst_id, uint32_t chip_id, uint32_t *year, uint32_t *month, uint32_t *day) {
    return operate([&](board &b) {
        refuse_null(year, month, day);
        const auto which = chip(b, inst_id, chip_id);
        const uint32_t day_of_month = logic_chip::read_build_day(b, which);
        const uint32_t month_of_year = logic_chip::read_build_month(b, which);
        *year = logic_chip::read_build_year(b, which);
        *month = month_of_year;
        *day = day_of_month;
    });
}

uint32_t drv_cpld_check_agent_spi_status(uint32_t inst_id, uint32_t chip_id, uint32_t channel, uint32_t *result,
                                         char *msg, uint32_t size) {
    return operate(
        [&](board &b) { tell(logic_chip::check_agent(b, chip(b, inst_id, chip_id), channel), result, msg, size); });
}

uint32_t drv_cpld_check_pcie_link_status(uint32_t inst_id, uint32_t chip_id, uint32_t channel, uint32_t *result,
                                         char *msg, uint32_t size) {
    return operate(
        [&](board &b) { tell(logic_chip::check_port(b, chip(b, inst_id, chip_id), channel), result, msg, size); });
}

uint32_t drv_cpld_get_version(uint32_t inst_id, uint32_t chip_id, uint32_t *version) {
    return operate([&](board &b) {
        refuse_null(version);
        *version = logic_chip::read_version(b, chip(b, inst_id, chip_id));
    });
}

uint32_t drv_cpld_check_repeat_load(uint32_t inst_id, uint32_t chip_id, uint32_t *result, char *msg, uint32_t size) {
    return operate(
        [&](board &b) { tell(logic_chip::check_repeated_loads(b, chip(b, inst_id, chip_id)), result, msg, size); });
}

uint32_t drv_cpld_check_chip_link(uint32_t inst_id, uint32_t chip_id, uint32_t *result, char *msg, uint32_t size) {
    return operate(
        [&](board &b) { tell(logic_chip::check_chip_links(b, chip(b, inst_id, chip_id)), result, msg, size); });
}

uint32_t drv_cpld_uart_get_recv_alarm(uint32_t inst_id, uint32_t chip_id, uint32_t channel, uint32_t *result, char *msg,
                                      uint32_t size) {
    return operate(
        [&](board &b) { tell(logic_chip::check_receiver(b, chip(b, inst_id, chip_id), channel), result, msg, size); });
}

uint32_t drv_cpld_init_usr_data_pool(uint32_t inst_id) {
    return accept_instance(inst_id);
}

uint32_t drv_cpld_exit_usr_data_pool(uint32_t inst_id) {
    return accept_instance(inst_id);
}

uint32_t drv_cpld_set_np_para(uint32_t inst_id, uint32_t chip_id, uint32_t slave_addr, uint64_t np_addr) {
    return operate([&](board &b) { logic_chip::set_np(b, chip(b, inst_id, chip_id), slave_addr, np_addr); });
}

uint32_t drv_cpld_load(uint32_t inst_id, uint32_t chip_id, const uint8_t *buffer, uint32_t length) {
    return load_in_steps(
        buffer, length,
        [&](board &b, image_bytes image) { return logic_load::begin_cpld(b, chip(b, inst_id, chip_id), image); },
        [&](board &b, const logic_load::begun &load) { logic_load::finish_cpld(b, chip(b, inst_id, chip_id), load); });
}

uint32_t drv_jtag_load_cpld(uint32_t inst_id, uint32_t chip_id, const uint8_t *buffer, uint32_t length) {
    return load_in_steps(
        buffer, length,
        [&](board &b, image_bytes image) { return logic_load::begin_cpld(b, own_chip(b, inst_id, chip_id), image); },
        [&](board &b, const logic_load::begun &load) {
            logic_load::finish_by_restart(b, own_chip(b, inst_id, chip_id), load);
        });
}
