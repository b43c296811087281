// Fan trays, by slot. Their presence lines and buses end at the main processing units.
#include "drv_basic/environment/drv_fan.h"

#include "sim/devices/chassis/fan.h"
#include "sim/devices/chassis/fan_tray.h"
#include "sim/devices/chassis/tray_memory.h"
#include "sim/drv/driver.h"

#include <algorithm>

using namespace kestro_sim;

static_assert(DRV_FAN_ALL == fan::all_fans);
static_assert(DRV_FAN_IMAGE_SIZE == tray_memory::image_size);

namespace {

constexpr uint32_t pcb_version_type = 1;
constexpr uint32_t init_operation = 0;
constexpr uint32_t tray_lamp = 0;

tray_memory::kind image_of_type(uint32_t type) {
    switch (type) {
    case 2:
        return tray_memory::kind::label;
    case 3:
        return tray_memory::kind::ability;
    case 6:
        return tray_memory::kind::expanded_label;
    default:
        refuse(error::not_supported);
    }
}

void require_detection(board &b, uint32_t slot_id) {
    refuse_if(b.get_or(fan_tray::find_answering(b, slot_id), fan_tray::detectable, 1) == 0, error::not_supported);
}

void set_pcb_version(board &b, const fan_tray::one &tray, std::span<const uint8_t> text) {
    const auto end = std::find(text.begin(), text.end(), 0);
    refuse_if(end == text.begin(), error::bad_value);
    refuse_if(static_cast<size_t>(end - text.begin()) > fan_tray::pcb_version.text_max, error::out_of_range);
    change writes;
    board::add_text(writes, tray, fan_tray::pcb_version, {text.begin(), end});
    b.commit(writes);
}

} // namespace

uint32_t drv_fan_init(uint32_t slot_id) {
    return operate([&](board &b) { fan_tray::bring_up(b, fan_tray::find_present(b, slot_id)); });
}

uint32_t drv_fan_exit(uint32_t slot_id) {
    return operate([&](board &b) { fan_tray::take_down(b, fan_tray::find_present(b, slot_id)); });
}

// The controller is one for all fans.
uint32_t drv_fan_get_operation_complete_status(uint32_t slot_id, uint32_t fan_id, uint32_t operation,
                                               uint32_t *status) {
    return operate([&](board &b) {
        refuse_null(status);
        const auto tray = fan_tray::find_answering(b, slot_id);
        fan::find_one_or_all(b, slot_id, fan_id);
        refuse_if(operation != init_operation, error::not_supported);
        *status = fan_tray::is_coming_up(b, tray) ? 1 : 0;
    });
}

uint32_t drv_fan_get_online_status(uint32_t slot_id, uint32_t *online) {
    return operate([&](board &b) {
        refuse_null(online);
        fan_tray::find(b, slot_id);
        *online = fan_tray::is_present(b, slot_id) ? 1 : 0;
    });
}

uint32_t drv_fan_get_history_plug_status(uint32_t slot_id, uint32_t *plugged) {
    return operate([&](board &b) {
        refuse_null(plugged);
        *plugged = fan_tray::take_plug_history(b, fan_tray::find(b, slot_id)) ? 1 : 0;
    });
}

uint32_t drv_fan_get_num(uint32_t slot_id, uint32_t *num) {
    return operate([&](board &b) {
        refuse_null(num);
        *num = fan::count(b, slot_id);
    });
}

uint32_t drv_fan_get_wind_direct(uint32_t slot_id, uint32_t *direct) {
    return operate([&](board &b) {
        refuse_null(direct);
        *direct = b.get(fan_tray::find_answering(b, slot_id), fan_tray::direct);
    });
}

uint32_t drv_fan_get_volstatus_history(uint32_t slot_id, uint32_t *status) {
    return operate([&](board &b) {
        refuse_null(status);
        *status = fan_tray::take_voltage_history(b, fan_tray::find(b, slot_id)) ? 1 : 0;
    });
}

uint32_t drv_fan_get_controlable(uint32_t slot_id, uint32_t *controlable) {
    return operate([&](board &b) {
        refuse_null(controlable);
        *controlable = b.get(fan_tray::find_answering(b, slot_id), fan_tray::controlable);
    });
}

uint32_t drv_fan_get_detectable(uint32_t slot_id, uint32_t *detectable) {
    return operate([&](board &b) {
        refuse_null(detectable);
        *detectable = b.get(fan_tray::find_answering(b, slot_id), fan_tray::detectable);
    });
}

uint32_t drv_fan_get_status(uint32_t slot_id, uint32_t fan_id, uint32_t *status) {
    return operate([&](board &b) {
        refuse_null(status);
        *status = fan::is_stalled(b, fan::find(b, slot_id, fan_id)) ? 1 : 0;
    });
}

uint32_t drv_fan_get_alarm(uint32_t slot_id, uint32_t fan_id, uint32_t alarm, uint32_t *status) {
    return operate([&](board &b) {
        refuse_null(status);
        *status = fan::has_alarm(b, fan::find(b, slot_id, fan_id), alarm) ? 1 : 0;
    });
}

uint32_t drv_fan_get_speed(uint32_t slot_id, uint32_t fan_id, uint32_t *speed) {
    return operate([&](board &b) {
        refuse_null(speed);
        require_detection(b, slot_id);
        *speed = fan::speed(b, fan::find(b, slot_id, fan_id));
    });
}

uint32_t drv_fan_get_max_speed(uint32_t slot_id, uint32_t fan_id, uint32_t *max_speed) {
    return operate([&](board &b) {
        refuse_null(max_speed);
        *max_speed = b.get(fan::find(b, slot_id, fan_id), fan::max_speed);
    });
}

uint32_t drv_fan_get_speed_percent(uint32_t slot_id, uint32_t fan_id, uint32_t *percent) {
    return operate([&](board &b) {
        refuse_null(percent);
        require_detection(b, slot_id);
        *percent = fan::percent(b, fan::find(b, slot_id, fan_id));
    });
}

uint32_t drv_fan_set_speed_percent(uint32_t slot_id, uint32_t fan_id, uint32_t percent) {
    return operate([&](board &b) { fan::set_percent(b, fan::find_one_or_all(b, slot_id, fan_id), percent); });
}

uint32_t drv_fan_get_shift(uint32_t slot_id, uint32_t fan_id, uint32_t *shift) {
    return operate([&](board &b) {
        refuse_null(shift);
        require_detection(b, slot_id);
        *shift = fan::shift(b, fan::find(b, slot_id, fan_id));
    });
}

uint32_t drv_fan_set_shift(uint32_t slot_id, uint32_t fan_id, uint32_t shift) {
    return operate([&](board &b) { fan::set_shift(b, fan::find_one_or_all(b, slot_id, fan_id), shift); });
}

uint32_t drv_fan_get_max_shift(uint32_t slot_id, uint32_t fan_id, uint32_t *max_shift) {
    return operate([&](board &b) {
        refuse_null(max_shift);
        *max_shift = b.get(fan::find(b, slot_id, fan_id), fan::max_shift);
    });
}

uint32_t drv_fan_get_max_speed_by_shift(uint32_t slot_id, uint32_t fan_id, uint32_t shift, uint32_t *max_speed) {
    return operate([&](board &b) {
        refuse_null(max_speed);
        *max_speed = fan::max_speed_of_shift(b, fan::find(b, slot_id, fan_id), shift);
    });
}

uint32_t drv_fan_get_max_power_by_shift(uint32_t slot_id, uint32_t fan_id, uint32_t shift, uint32_t *max_power) {
    return operate([&](board &b) {
        refuse_null(max_power);
        *max_power = fan::max_power_of_shift(b, fan::find(b, slot_id, fan_id), shift);
    });
}

uint32_t drv_fan_get_max_power_of_curshift(uint32_t slot_id, uint32_t fan_id, uint32_t *max_power) {
    return operate([&](board &b) {
        refuse_null(max_power);
        const auto which = fan::find(b, slot_id, fan_id);
        require_detection(b, slot_id);
        *max_power = fan::max_power_of_shift(b, which, fan::shift(b, which));
    });
}

uint32_t drv_fan_get_max_power(uint32_t slot_id, uint32_t fan_id, uint32_t *max_power) {
    return operate([&](board &b) {
        refuse_null(max_power);
        *max_power = b.get(fan::find(b, slot_id, fan_id), fan::max_power);
    });
}

uint32_t drv_fan_set_power(uint32_t slot_id, uint32_t fan_id, uint32_t power) {
    return operate([&](board &b) { fan::switch_power(b, fan::find_one_or_all(b, slot_id, fan_id), power); });
}

uint32_t drv_fan_get_power(uint32_t slot_id, uint32_t fan_id, uint32_t *power) {
    return operate([&](board &b) {
        refuse_null(power);
        *power = b.get(fan::find(b, slot_id, fan_id), fan::power);
    });
}

uint32_t drv_fan_set_led(uint32_t slot_id, uint32_t type, uint32_t color) {
    return operate([&](board &b) {
        const auto tray = fan_tray::find_answering(b, slot_id);
        refuse_if(type != tray_lamp, error::no_such_device);
        fan_tray::show(b, tray, color);
    });
}

uint32_t drv_fan_get_led(uint32_t slot_id, uint32_t type, uint32_t *color) {
    return operate([&](board &b) {
        refuse_null(color);
        const auto tray = fan_tray::find_answering(b, slot_id);
        refuse_if(type != tray_lamp, error::no_such_device);
        *color = b.get(tray, fan_tray::color);
    });
}

uint32_t drv_fan_get_board_property(uint32_t slot_id, uint32_t type, uint8_t *buffer, uint32_t *len) {
    return operate([&](board &b) {
        refuse_null(buffer, len);
        const auto tray = fan_tray::find_answering(b, slot_id);
        if (type == pcb_version_type) {
            const std::string text = b.text(tray, fan_tray::pcb_version);
            write_text(reinterpret_cast<char *>(buffer), *len, text);
            *len = static_cast<uint32_t>(text.size()) + 1;
        } else {
            const auto image = tray_memory::read(b, tray, image_of_type(type));
            refuse_if(*len < image.size(), error::too_small);
            std::copy(image.begin(), image.end(), buffer);
            *len = static_cast<uint32_t>(image.size());
        }
    });
}

uint32_t drv_fan_set_board_property(uint32_t slot_id, uint32_t type, const uint8_t *buffer, uint32_t len) {
    return operate([&](board &b) {
        refuse_null(buffer);
        const auto tray = fan_tray::find_answering(b, slot_id);
        if (type == pcb_version_type) {
            set_pcb_version(b, tray, {buffer, len});
        } else {
            tray_memory::write(b, tray, image_of_type(type), {buffer, len});
        }
    });
}
