// Images are made with the state.
#include "sim/devices/storage/images.h"

#include "sim/core/catalogue.h"

namespace kestro_sim {

device_list devices_of_images() {
    static constexpr const device_family *families[]{&storage_image::family};
    return {families, {}};
}

} // namespace kestro_sim
