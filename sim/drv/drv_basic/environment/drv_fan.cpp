// Fan trays, by slot. Their presence lines end at the main processing units.
#include "drv_basic/environment/drv_fan.h"

#include "sim/devices/chassis/fan_tray.h"
#include "sim/devices/chassis/slots.h"
#include "sim/drv/driver.h"

using namespace kestro_sim;

namespace {

void find_tray(board &b, uint32_t slot_id) {
    fan_tray::is_present(b, slot_id);
    refuse_if(!b.is_within_reach(place_of_slot(b, slot_id)), error::not_supported);
}

} // namespace

uint32_t drv_fan_get_online_status(uint32_t slot_id, uint32_t *online) {
    return operate([&](board &b) {
        refuse_null(online);
        const bool is_present = fan_tray::is_present(b, slot_id);
        refuse_if(!b.is_within_reach(place_of_slot(b, slot_id)), error::not_supported);
        *online = is_present ? 1 : 0;
    });
}

uint32_t drv_fan_init(uint32_t slot_id) {
    return operate([&](board &b) {
        find_tray(b, slot_id);
        refuse(error::not_supported);
    });
}

uint32_t drv_fan_exit(uint32_t slot_id) {
    return operate([&](board &b) {
        find_tray(b, slot_id);
        refuse(error::not_supported);
    });
}

uint32_t drv_fan_get_operation_complete_status(uint32_t slot_id, uint32_t, uint32_t, uint32_t *status) {
    return operate([&](board &b) {
        refuse_null(status);
        find_tray(b, slot_id);
        refuse(error::not_supported);
    });
}

uint32_t drv_fan_get_history_plug_status(uint32_t slot_id, uint32_t *plugged) {
    return operate([&](board &b) {
        refuse_null(plugged);
        find_tray(b, slot_id);
        refuse(error::not_supported);
    });
}

uint32_t drv_fan_get_num(uint32_t slot_id, uint32_t *num) {
    return operate([&](board &b) {
        refuse_null(num);
        find_tray(b, slot_id);
        refuse(error::not_supported);
    });
}

uint32_t drv_fan_get_wind_direct(uint32_t slot_id, uint32_t *direct) {
    return operate([&](board &b) {
        refuse_null(direct);
        find_tray(b, slot_id);
        refuse(error::not_supported);
    });
}

uint32_t drv_fan_get_volstatus_history(uint32_t slot_id, uint32_t *status) {
    return operate([&](board &b) {
        refuse_null(status);
        find_tray(b, slot_id);
        refuse(error::not_supported);
    });
}

uint32_t drv_fan_get_controlable(uint32_t slot_id, uint32_t *controlable) {
    return operate([&](board &b) {
        refuse_null(controlable);
        find_tray(b, slot_id);
        refuse(error::not_supported);
    });
}

uint32_t drv_fan_get_detectable(uint32_t slot_id, uint32_t *detectable) {
    return operate([&](board &b) {
        refuse_null(detectable);
        find_tray(b, slot_id);
        refuse(error::not_supported);
    });
}

uint32_t drv_fan_get_status(uint32_t slot_id, uint32_t, uint32_t *status) {
    return operate([&](board &b) {
        refuse_null(status);
        find_tray(b, slot_id);
        refuse(error::not_supported);
    });
}

uint32_t drv_fan_get_alarm(uint32_t slot_id, uint32_t, uint32_t, uint32_t *status) {
    return operate([&](board &b) {
        refuse_null(status);
        find_tray(b, slot_id);
        refuse(error::not_supported);
    });
}

uint32_t drv_fan_get_speed(uint32_t slot_id, uint32_t, uint32_t *speed) {
    return operate([&](board &b) {
        refuse_null(speed);
        find_tray(b, slot_id);
        refuse(error::not_supported);
    });
}

uint32_t drv_fan_get_max_speed(uint32_t slot_id, uint32_t, uint32_t *max_speed) {
    return operate([&](board &b) {
        refuse_null(max_speed);
        find_tray(b, slot_id);
        refuse(error::not_supported);
    });
}

uint32_t drv_fan_get_speed_percent(uint32_t slot_id, uint32_t, uint32_t *percent) {
    return operate([&](board &b) {
        refuse_null(percent);
        find_tray(b, slot_id);
        refuse(error::not_supported);
    });
}

uint32_t drv_fan_set_speed_percent(uint32_t slot_id, uint32_t, uint32_t) {
    return operate([&](board &b) {
        find_tray(b, slot_id);
        refuse(error::not_supported);
    });
}

uint32_t drv_fan_get_shift(uint32_t slot_id, uint32_t, uint32_t *shift) {
    return operate([&](board &b) {
        refuse_null(shift);
        find_tray(b, slot_id);
        refuse(error::not_supported);
    });
}

uint32_t drv_fan_set_shift(uint32_t slot_id, uint32_t, uint32_t) {
    return operate([&](board &b) {
        find_tray(b, slot_id);
        refuse(error::not_supported);
    });
}

uint32_t drv_fan_get_max_shift(uint32_t slot_id, uint32_t, uint32_t *max_shift) {
    return operate([&](board &b) {
        refuse_null(max_shift);
        find_tray(b, slot_id);
        refuse(error::not_supported);
    });
}

uint32_t drv_fan_get_max_speed_by_shift(uint32_t slot_id, uint32_t, uint32_t, uint32_t *max_speed) {
    return operate([&](board &b) {
        refuse_null(max_speed);
        find_tray(b, slot_id);
        refuse(error::not_supported);
    });
}

uint32_t drv_fan_get_max_power_by_shift(uint32_t slot_id, uint32_t, uint32_t, uint32_t *max_power) {
    return operate([&](board &b) {
        refuse_null(max_power);
        find_tray(b, slot_id);
        refuse(error::not_supported);
    });
}

uint32_t drv_fan_get_max_power_of_curshift(uint32_t slot_id, uint32_t, uint32_t *max_power) {
    return operate([&](board &b) {
        refuse_null(max_power);
        find_tray(b, slot_id);
        refuse(error::not_supported);
    });
}

uint32_t drv_fan_get_max_power(uint32_t slot_id, uint32_t, uint32_t *max_power) {
    return operate([&](board &b) {
        refuse_null(max_power);
        find_tray(b, slot_id);
        refuse(error::not_supported);
    });
}

uint32_t drv_fan_set_power(uint32_t slot_id, uint32_t, uint32_t) {
    return operate([&](board &b) {
        find_tray(b, slot_id);
        refuse(error::not_supported);
    });
}

uint32_t drv_fan_get_power(uint32_t slot_id, uint32_t, uint32_t *power) {
    return operate([&](board &b) {
        refuse_null(power);
        find_tray(b, slot_id);
        refuse(error::not_supported);
    });
}

uint32_t drv_fan_set_led(uint32_t slot_id, uint32_t, uint32_t) {
    return operate([&](board &b) {
        find_tray(b, slot_id);
        refuse(error::not_supported);
    });
}

uint32_t drv_fan_get_led(uint32_t slot_id, uint32_t, uint32_t *color) {
    return operate([&](board &b) {
        refuse_null(color);
        find_tray(b, slot_id);
        refuse(error::not_supported);
    });
}

uint32_t drv_fan_get_board_property(uint32_t slot_id, uint32_t, uint8_t *buffer, uint32_t *len) {
    return operate([&](board &b) {
        refuse_null(buffer, len);
        find_tray(b, slot_id);
        refuse(error::not_supported);
    });
}

uint32_t drv_fan_set_board_property(uint32_t slot_id, uint32_t, const uint8_t *buffer, uint32_t) {
    return operate([&](board &b) {
        refuse_null(buffer);
        find_tray(b, slot_id);
        refuse(error::not_supported);
    });
}
