#include "sim/devices/chassis/library.h"

#include "sim/core/catalogue.h"

namespace kestro_sim {

device_list devices_of_library() {
    static constexpr const device_family *families[]{&lacking_library::family};
    return {families, {}};
}

} // namespace kestro_sim
