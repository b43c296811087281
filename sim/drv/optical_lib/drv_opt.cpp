// Front ports and what is plugged into them. Each operation looks for itself: a run keeps nothing for the next one.
#include "sim/drv/optical_lib/optical_port.h"

#include <cerrno>
#include <ctime>

using namespace kestro_sim;

namespace {

// The halves of an instance id that the port map is asked with.
uint32_t instance_of_halves(uint32_t slot, uint32_t frame) {
    refuse_if(slot > 0xFFFF || frame > 0xFF, error::no_such_instance);
    if (slot != 0xFFFF) {
        return frame << 24U | slot;
    }
    return frame == 0xFF ? DRV_INST_SELF : frame << 24U | 0xFFFFU;
}

} // namespace

uint32_t drv_opt_init(uint32_t inst_id) {
    return operate([&](board &b) {
        for (const cage::one &port : cage::all(b, inst_id)) {
            cage::notice(b, port);
        }
    });
}

uint32_t drv_opt_exit(uint32_t inst_id) {
    return operate([&](board &b) { cage::all(b, inst_id); });
}

uint32_t drv_opt_get_card_port_map(uint32_t slot, uint32_t frame, struct drv_opt_port_row *map, uint32_t size) {
    return operate([&](board &b) {
        refuse_null(map);
        refuse_if(size < DRV_OPT_MAP_ROWS * sizeof *map, error::too_small);
        const auto rows = cage::port_map(b, instance_of_halves(slot, frame));
        refuse_if(rows.size() > DRV_OPT_MAP_ROWS, error::too_small);
        for (size_t i = 0; i < DRV_OPT_MAP_ROWS; ++i) {
            map[i] = i < rows.size() ? drv_opt_port_row{rows[i].package, rows[i].number, rows[i].first}
                                     : drv_opt_port_row{DRV_OPT_NO_PACKAGE, 0, 0};
        }
    });
}

uint32_t drv_cbb_optical_get_port_type_str_from_value(uint32_t value, char *text, uint32_t size) {
    return operate([&](board &) {
        refuse_null(text);
        refuse_if(value == 0 || value >= std::size(cage::package_names), error::bad_value);
        write_text(text, size, cage::package_names[value]);
    });
}

// A signal does not shorten it.
uint32_t drv_cbb_optical_delay_nointerupt(uint32_t count) {
    constexpr uint32_t per_second = 1'000'000;
    timespec left{};
    left.tv_sec = static_cast<time_t>(count / per_second);
    left.tv_nsec = static_cast<decltype(left.tv_nsec)>(count % per_second * 1000);
    while (nanosleep(&left, &left) != 0 && errno == EINTR) {
    }
    return 0;
}

uint32_t drv_opt_get_physical_present_status(uint32_t inst_id, const struct drv_opt_port_para *port_para,
                                             uint32_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        *value = cage::is_filled(b, optical_port::find(b, inst_id, port_para)) ? 1 : 0;
    });
}

// What the driver knows is there: a module that has come up.
uint32_t drv_opt_get_present_status(uint32_t inst_id, const struct drv_opt_port_para *port_para, uint32_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        const auto which = optical_module::in(b, optical_port::find(b, inst_id, port_para));
        *value = which && optical_module::is_ready(b, *which) ? 1 : 0;
    });
}

uint32_t drv_opt_get_physical_pull_status(uint32_t inst_id, const struct drv_opt_port_para *port_para,
                                          uint32_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        *value = cage::take_pull_history(b, optical_port::find(b, inst_id, port_para)) ? 1 : 0;
    });
}

uint32_t drv_opt_bus_status_get(uint32_t inst_id, const struct drv_opt_port_para *port_para, uint32_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        const auto which = optical_module::in(b, optical_port::find(b, inst_id, port_para));
        refuse_if(!which, error::not_ready);
        *value = optical_module::holds_bus(b, *which) ? 1 : 0;
    });
}

uint32_t drv_opt_bus_status_recovery(uint32_t inst_id, const struct drv_opt_port_para *port_para) {
    return operate([&](board &b) {
        const auto which = optical_module::in(b, optical_port::find(b, inst_id, port_para));
        refuse_if(!which || !optical_module::recover_bus(b, *which), error::not_ready);
    });
}
