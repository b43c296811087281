// Light goes from lane to lane of the same number, and loses something on its way.
#include "sim/devices/optics/fibre.h"

#include "sim/core/catalogue.h"
#include "sim/devices/optics/optical_module.h"

namespace kestro_sim {

namespace {

// dB per kilometre.
double attenuation(double nanometres) {
    return nanometres < 1000 ? 3.0 : 0.35;
}

struct far_end {
    device_of<fibre::family> by;
    uint32_t slot;
    uint32_t port;
};

std::optional<far_end> other_end(board &b, const cage::one &here) {
    for (const auto &each : b.all_at<fibre::family>(board::chassis())) {
        const uint32_t slots[]{b.get(each, fibre::slot), b.get(each, fibre::far_slot)};
        const uint32_t ports[]{b.get(each, fibre::port), b.get(each, fibre::far_port)};
        for (const int end : {0, 1}) {
            if (slots[end] != 0 && slot_place(slots[end]) == here.instance && ports[end] == here.id) {
                return far_end{each, slots[1 - end], ports[1 - end]};
            }
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<double> fibre::light_at(board &b, const cage::one &receiver, const optics::model &kind, uint32_t lane) {
    const auto end = other_end(b, receiver);
    if (!end || b.get(end->by, cut) != 0) {
        return std::nullopt;
    }
    std::optional<double> sent;
    double nanometres = kind.nanometres;
    if (end->slot == 0) {
        sent = static_cast<int32_t>(b.get(end->by, far_power)) / 100.0;
    } else {
        const auto port_there = board::at<cage::family>(slot_place(end->slot), end->port);
        if (!b.is_present(port_there.instance) || !b.is_described(port_there)) {
            return std::nullopt;
        }
        const auto sender = optical_module::in(b, port_there);
        if (!sender || (sender->kind->nanometres == 0) != (kind.nanometres == 0)) {
            return std::nullopt;
        }
        sent = optical_module::sent(b, *sender, lane);
        nanometres = sender->kind->nanometres;
    }
    if (!sent) {
        return std::nullopt;
    }
    return *sent - b.get(end->by, loss) / 100.0 - attenuation(nanometres) * b.get(end->by, length) / 1000.0;
}

device_list devices_of_fibre() {
    static constexpr const device_family *families[]{&fibre::family};
    return {families, {}};
}

} // namespace kestro_sim
