// Power supplies, by the slot of their frame. Their bus ends at the main processing units.
#include "drv_basic/power/drv_power.h"

#include "sim/devices/power/power_memory.h"
#include "sim/devices/power/power_supply.h"
#include "sim/drv/driver.h"

#include <algorithm>

using namespace kestro_sim;

namespace {

enum board_property : uint32_t { label_text, software_version, hardware_version, module_features, controller_features };

uint32_t board_word(board &b, const power_supply::one &which, uint32_t type) {
    const auto build = b.find_at<power_build::family>(which.instance, which.id);
    switch (type) {
    case software_version: {
        const auto programs = power_program::all(b, which);
        refuse_if(programs.empty(), error::not_ready);
        return b.get(programs.front(), power_program::version);
    }
    case hardware_version:
        return b.get(build, power_build::hardware);
    case module_features:
        return b.get(build, power_build::features);
    default:
        refuse(error::not_supported);
    }
}

} // namespace

uint32_t drv_power_init(uint32_t slot_id, uint32_t power_id) {
    return operate([&](board &b) { power_supply::bring_up(b, power_supply::find_answering(b, slot_id, power_id)); });
}

uint32_t drv_power_deinit(uint32_t slot_id, uint32_t power_id) {
    return operate([&](board &b) { power_supply::take_down(b, power_supply::find_answering(b, slot_id, power_id)); });
}

uint32_t drv_power_get_num(uint32_t slot_id, uint32_t *num) {
    return operate([&](board &b) {
        refuse_null(num);
        *num = power_supply::count(b, slot_id);
    });
}

// Presence is a line of its own: it is told of an empty place too, and says 0 when there is a supply.
uint32_t drv_power_get_property(uint32_t slot_id, uint32_t power_id, uint32_t type, uint32_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        if (type == 0) {
            *value = power_supply::is_present(b, power_supply::find(b, slot_id, power_id)) ? 0 : 1;
        } else {
            *value = power_supply::property(b, power_supply::find_answering(b, slot_id, power_id), type);
        }
    });
}

uint32_t drv_power_set_property(uint32_t slot_id, uint32_t power_id, uint32_t type, uint32_t value) {
    return operate([&](board &b) {
        power_supply::set_property(b, power_supply::find_answering(b, slot_id, power_id), type, value);
    });
}

uint32_t drv_power_get_alarm(uint32_t slot_id, uint32_t power_id, uint32_t type, uint32_t *alarms,
                             uint32_t *sub_alarm) {
    return operate([&](board &b) {
        refuse_null(alarms, sub_alarm);
        *alarms = power_supply::alarm_bits(b, power_supply::find_answering(b, slot_id, power_id), type);
        *sub_alarm = *alarms != 0 ? 1 : 0;
    });
}

uint32_t drv_power_get_board_property(uint32_t slot_id, uint32_t power_id, uint32_t type, uint8_t *buffer,
                                      uint32_t *len) {
    return operate([&](board &b) {
        refuse_null(buffer, len);
        const auto which = power_supply::find_answering(b, slot_id, power_id);
        if (type == label_text || type == controller_features) {
            const auto build = b.find_at<power_build::family>(which.instance, which.id);
            const std::string text =
                type == label_text ? b.text(build, power_build::label) : b.text(build, power_build::controller);
            write_text(reinterpret_cast<char *>(buffer), *len, text);
            *len = type == label_text ? static_cast<uint32_t>(text.size()) : *len;
        } else {
            const uint32_t word = board_word(b, which, type);
            refuse_if(*len < sizeof word, error::too_small);
            std::memcpy(buffer, &word, sizeof word);
        }
    });
}

uint32_t drv_power_set_board_property(uint32_t slot_id, uint32_t power_id, uint32_t type, const uint8_t *buffer,
                                      uint32_t len) {
    return operate([&](board &b) {
        refuse_null(buffer);
        const auto which = power_supply::find_answering(b, slot_id, power_id);
        refuse_if(type != label_text, error::not_supported);
        refuse_if(len > DRV_POWER_LABEL_SIZE, error::out_of_range);
        set_power_label(b, which, {buffer, len});
    });
}

// What the area has room for, in whole records.
uint32_t drv_power_get_bbox_info(uint32_t slot_id, uint32_t power_id, uint8_t *buffer, uint32_t len, uint32_t *retlen) {
    return operate([&](board &b) {
        refuse_null(buffer, retlen);
        std::vector<uint8_t> bytes = power_bbox::contents(b, power_supply::find_answering(b, slot_id, power_id));
        if (bytes.size() > len) {
            bytes.resize(len - len % 8);
        }
        std::copy(bytes.begin(), bytes.end(), buffer);
        *retlen = static_cast<uint32_t>(bytes.size());
    });
}

uint32_t drv_power_get_software_info(uint32_t slot_id, uint32_t power_id, struct drv_power_software_info *info) {
    return operate([&](board &b) {
        refuse_null(info);
        const auto programs = power_program::all(b, power_supply::find_answering(b, slot_id, power_id));
        *info = {};
        for (const auto &each : programs) {
            info->software[info->soft_cnt++] = {b.get(each, power_program::soft_id),
                                                b.get(each, power_program::modules)};
        }
    });
}

uint32_t drv_power_get_softver(uint32_t slot_id, uint32_t power_id, uint32_t soft_id, uint32_t module_id,
                               uint32_t *version) {
    return operate([&](board &b) {
        refuse_null(version);
        const auto which = power_supply::find_answering(b, slot_id, power_id);
        *version = power_program::version_of(b, which, soft_id, module_id);
    });
}

uint32_t drv_power_load_app(uint32_t slot_id, uint32_t power_id, uint32_t reserved, const uint8_t *data, uint32_t len) {
    return operate([&](board &b) {
        refuse_null(data);
        const auto which = power_supply::find_answering(b, slot_id, power_id);
        refuse_if(reserved != 0, error::bad_value);
        power_program::load(b, which, {data, len});
    });
}

// Nothing to correct here: the hooks are there, and take what they are told.
uint32_t drv_power_patch_func1(const char *text, uint32_t) {
    return operate([&](board &) { refuse_null(text); });
}

uint32_t drv_power_patch_func2(const char *text, uint32_t) {
    return operate([&](board &) { refuse_null(text); });
}
