// What a lamp takes.
#include "sim/devices/management/lamp.h"

#include "sim/core/catalogue.h"
#include "sim/core/registers.h"

namespace kestro_sim {

namespace {
constexpr uint32_t driven_by_software = 1;
}

bool lamp::has_color(board &b, const device_of<family> &which, uint32_t value) {
    return is_in_range(color, value) && (b.get(which, colors) >> value & 1U) != 0;
}

void lamp::show(board &b, const device_of<family> &which, uint32_t to_color, uint32_t to_freq) {
    refuse_if(b.get(which, mode) != driven_by_software, error::not_supported);
    refuse_if(!has_color(b, which, to_color) || to_freq > b.get(which, freq_max), error::bad_value);
    b.put_all(which, {{color, to_color}, {freq, to_freq}});
}

void lamp_test::require_support(board &b, const device_of<family> &test) {
    refuse_if(b.get(test, support) == 0, error::not_supported);
}

device_list devices_of_lamp() {
    static constexpr const device_family *families[]{&lamp::family, &lamp_test::family, &panel_patch::family};
    return {families, {}};
}

} // namespace kestro_sim
