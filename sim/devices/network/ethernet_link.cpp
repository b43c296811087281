// Links belong to the chassis: both ends see the same one.
#include "sim/devices/network/ethernet_link.h"

#include "sim/core/catalogue.h"
#include "sim/core/instance.h"

namespace kestro_sim {

namespace ethernet_link {

std::optional<view> at(board &b, const std::string &place, uint32_t port) {
    const std::optional<uint32_t> slot = slot_of_place(place);
    for (const one &link : b.all_at<family>(board::chassis())) {
        if (b.get(link, slot_a) == slot && b.get(link, port_a) == port) {
            return view{link, b.get(link, slot_b), b.get(link, port_b), b.get(link, rate_b), b.get(link, rate_a)};
        }
        if (b.get(link, slot_b) == slot && b.get(link, port_b) == port) {
            return view{link, b.get(link, slot_a), b.get(link, port_a), b.get(link, rate_a), b.get(link, rate_b)};
        }
    }
    return std::nullopt;
}

} // namespace ethernet_link

device_list devices_of_ethernet_link() {
    static constexpr const device_family *families[]{&ethernet_link::family};
    return {families, {}};
}

} // namespace kestro_sim
