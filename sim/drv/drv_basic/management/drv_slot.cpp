// Slots of the chassis, as the backplane is built: what is in them makes no difference here.
#include "drv_basic/management/drv_slot.h"

#include "sim/drv/drv_basic/management/board/unit.h"

using namespace kestro_sim;

namespace {

constexpr device_kind slots{"sim_chassis", "slot"};
constexpr uint32_t type_first = 1;
constexpr uint32_t type_last = 11;

uint32_t type_of(board &b, uint32_t slot_id) {
    return b.get(b.find_at(board::chassis(), slots, slot_id), "type");
}

// Ascending. A type that is known but has no slot in this chassis gives an empty list.
std::vector<uint32_t> slots_of_type(board &b, uint32_t type) {
    refuse_if(type < type_first || type > type_last, error::bad_value);
    std::vector<uint32_t> numbers = b.ids(board::chassis(), slots);
    refuse_if(numbers.empty(), error::not_supported);
    std::erase_if(numbers, [&](uint32_t slot_id) { return type_of(b, slot_id) != type; });
    return numbers;
}

} // namespace

uint32_t drv_slot_get_type(uint32_t slot_id, uint32_t *type) {
    return operate([&](board &b) {
        refuse_null(type);
        *type = type_of(b, slot_id);
    });
}

uint32_t drv_slot_get_range(uint32_t *slot_min, uint32_t *slot_max) {
    return operate([&](board &b) {
        refuse_null(slot_min, slot_max);
        const uint32_t first = slot_range_limit(b, "first");
        *slot_max = slot_range_limit(b, "last");
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
