// The images are storage images of the chassis, one for each kind and slot: a tray has those that are described.
#include "sim/devices/chassis/tray_memory.h"

#include "sim/core/catalogue.h"
#include "sim/core/checksum.h"
#include "sim/core/eeprom.h"

#include <string>

namespace kestro_sim {

namespace {

std::string tray_image(board &b, const fan_tray::one &tray, tray_memory::kind which) {
    static constexpr const char *names[]{"fan_label_", "fan_ability_", "fan_expanded_label_"};
    const std::string name = names[static_cast<size_t>(which)] + std::to_string(tray.id);
    const auto images = b.described().node(tray.instance, "sim_storage", "image");
    for (const pugi::xml_node entry : images.children("entry")) {
        if (entry.attribute("name").value() == name) {
            return image_name(name, tray.instance);
        }
    }
    refuse(error::not_supported);
}

} // namespace

std::vector<uint8_t> tray_memory::read(board &b, const fan_tray::one &tray, kind which) {
    return b.read_image(tray_image(b, tray, which), 0, image_size);
}

void tray_memory::write(board &b, const fan_tray::one &tray, kind which, std::span<const uint8_t> image) {
    const std::string name = tray_image(b, tray, which);
    refuse_if(image.size() != image_size, error::out_of_range);
    const uint32_t crc = crc16_checksum(image.subspan(2));
    refuse_if(image[0] != crc >> 8U || image[1] != (crc & 0xFFU), error::damaged);
    b.write_image(name, 0, image);
}

device_list devices_of_tray_memory() {
    return {};
}

} // namespace kestro_sim
