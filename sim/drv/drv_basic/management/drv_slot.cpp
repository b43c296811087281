// Slots of the chassis, as the backplane is built: what is in them makes no difference here.
#include "drv_basic/management/drv_slot.h"

#include "sim/devices/chassis/slots.h"
#include "sim/drv/driver.h"

using namespace kestro_sim;

namespace {

constexpr uint32_t type_first = 1;
constexpr uint32_t type_last = 11;

std::vector<uint32_t> slots_of_type(board &b, uint32_t type) {
    refuse_if(type < type_first || type > type_last, error::bad_value);
    refuse_if(b.all_at<chassis_slot::family>(board::chassis()).empty(), error::not_supported);
    return chassis_slot::of_type(b, type);
}

} // namespace

uint32_t drv_slot_get_type(uint32_t slot_id, uint32_t *type) {
    return operate([&](board &b) {
        refuse_null(type);
        *type = b.get(b.find_at<chassis_slot::family>(board::chassis(), slot_id), chassis_slot::type);
    });
}

uint32_t drv_slot_get_range(uint32_t *slot_min, uint32_t *slot_max) {
    return operate([&](board &b) {
        refuse_null(slot_min, slot_max);
        const uint32_t first = slot_range::limit(b, slot_range::first);
        *slot_max = slot_range::limit(b, slot_range::last);
        *slot_min = first;
    });
}

uint32_t drv_slot_get_num(uint32_t type, uint32_t *num) {
    return operate([&](board &b) {
        refuse_null(num);
        *num = static_cast<uint32_t>(slots_of_type(b, type).size());
    });
}

// Slots count from 1, so 0 says that there is none; the empty list starts with 0 too.
uint32_t drv_slot_get_start_num(uint32_t type, uint32_t *start_num) {
    return operate([&](board &b) {
        refuse_null(start_num);
        const std::vector<uint32_t> numbers = slots_of_type(b, type);
        *start_num = numbers.empty() ? 0 : numbers.front();
    });
}

uint32_t drv_slot_get_list(uint32_t type, drv_slot_list *list) {
    return operate([&](board &b) {
        refuse_null(list);
        const std::vector<uint32_t> numbers = slots_of_type(b, type);
        refuse_if(numbers.size() > DRV_SLOT_LIST_MAX, error::too_small);
        drv_slot_list filled{};
        for (const uint32_t slot_id : numbers) {
            refuse_if(slot_id > UINT8_MAX, error::too_small);
            filled.slot_id[filled.num++] = static_cast<uint8_t>(slot_id);
        }
        *list = filled;
    });
}
