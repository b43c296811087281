// device_test: what is in the slots of the chassis. Trays and cards are asked whether they are there, the two control
// planes also which of them is the master; every other slot is shown as the backplane is built.
#include <array>
#include <cstdint>
#include <cstdio>

#include "drv_basic/environment/drv_fan.h"
#include "drv_basic/management/drv_board.h"
#include "drv_basic/management/drv_msc.h"
#include "drv_basic/management/drv_slot.h"
#include "modules/modules.h"
#include "shell/console.h"
#include "shell/dispatch.h"

namespace {

enum slot_type : uint32_t { fan_tray = 5, card = 7, control_plane = 8 };

constexpr uint32_t slot_selector = 0xFF000000U;
constexpr uint32_t unknown_slot = UINT32_MAX;
constexpr uint32_t absent = 1;

const char *type_name(uint32_t type) {
    constexpr std::array names = {"UNKNOWN", "MPU", "LPU", "SFU", "CMU", "FAN", "PWR", "PIC", "CXP", "CLK", "LCD"};
    return names[type < names.size() ? type : 0];
}

uint32_t own_control_plane_slot() {
    uint32_t slot = 0;
    const uint32_t ret = drv_board_get_self_logic_slotid(&slot);
    if (ret != 0) {
        printf("\r\nError: drv_board_get_self_logic_slotid ret[%#x]", ret);
        return unknown_slot;
    }
    return slot;
}

// Nobody to ask for a control plane as long as the own slot is not known: it is shown like any other board. A tray
// tells that it is there, a board that it is not.
bool is_online(uint32_t slot, uint32_t type, uint32_t own_slot) {
    uint32_t online = 0;
    uint32_t status = absent;
    switch (type) {
    case fan_tray:
        return drv_fan_get_online_status(slot, &online) == 0 && online != 0;
    case card:
        return drv_board_get_online_status(slot_selector | slot, &status) == 0 && status != absent;
    case control_plane:
        if (own_slot == unknown_slot) {
            return true;
        }
        if (slot == own_slot) {
            return drv_board_get_self_online_status(&status) == 0 && status != absent;
        }
        return drv_board_get_peer_online_status(&status) == 0 && status != absent;
    default:
        return true;
    }
}

// Of the two control planes the other one is what this one is not.
const char *primary_text(uint32_t slot, uint32_t own_slot) {
    if (own_slot == unknown_slot) {
        return "NA";
    }
    uint32_t state = 0;
    const uint32_t ret = drv_msc_get_state(DRV_INST_SELF, 0, &state);
    if (ret != 0) {
        printf("\r\nError: drv_msc_get_state ret[%#x]", ret);
        return "NA";
    }
    const bool is_own = slot == own_slot;
    switch (state) {
    case 0:
        return is_own ? "Master" : "Slave";
    case 1:
        return is_own ? "Slave" : "Master";
    default:
        return "NA";
    }
}

void show_slot(uint32_t slot, uint32_t type) {
    const uint32_t own_slot = type == control_plane ? own_control_plane_slot() : unknown_slot;
    if (is_online(slot, type, own_slot)) {
        const char *primary = primary_text(slot, own_slot);
        printf("\r\n%-10u%-11s%-10s%-14s", slot, type_name(type), "Present", primary);
    }
}

// Lines begin with their line end here, so each is brought to the screen before a driver is asked again.
int show_device(int, char **) {
    uint32_t first = 0;
    uint32_t last = 0;
    printf("\r\nDevice status:");
    printf("\r\n%-10s%-11s%-10s%-14s", "Slot #", "Type", "Online", "Primary");
    printf("\r\n- - - - - - - - - - - - - - - - - - - - - - - - - - - - - -");
    flush_partial_line();
    uint32_t ret = drv_slot_get_range(&first, &last);
    if (ret != 0) {
        printf("\r\nError: drv_slot_get_range ret[%#x]", ret);
        return -1;
    }
    for (uint64_t slot = first; slot <= last; ++slot) {
        uint32_t type = 0;
        ret = drv_slot_get_type(static_cast<uint32_t>(slot), &type);
        if (ret != 0) {
            printf("\r\nError: drv_slot_get_type ret[%#x]", ret);
            return -1;
        }
        show_slot(static_cast<uint32_t>(slot), type);
        flush_partial_line();
    }
    puts("\r\n- - - - - - - - - - - - - - - - - - - - - - - - - - - - - -\r");
    return 0;
}

constexpr std::array rows = {
    command_row{"show_device", show_device, "show_device"},
};

static_assert(rows_are_sound(rows));

} // namespace

int device_test(int count, char **args) {
    return run_module(rows, count, args);
}
