// Dry contacts: the channels of inputs and of outputs have different numbers.
#include "drv_basic/chips/drv_digital.h"

#include "sim/devices/chips/contacts.h"
#include "sim/drv/driver.h"

#include <optional>

using namespace kestro_sim;

namespace {

// The devices of one kind at an instance that has contacts at all.
template <const device_family &Family> std::vector<device_of<Family>> contacts(board &b, uint32_t inst_id) {
    const std::string place = b.instance(inst_id);
    auto found = b.all_at<Family>(place);
    refuse_if(b.all_at<contact_input::family>(place).empty() && b.all_at<contact_output::family>(place).empty(),
              error::not_supported);
    return found;
}

uint32_t accept_instance(uint32_t inst_id) {
    return operate([&](board &b) { contacts<contact_input::family>(b, inst_id); });
}

// The channel as a device of one kind, if that is what it is.
template <const device_family &Family>
std::optional<device_of<Family>> channel_as(board &b, uint32_t inst_id, uint32_t channel) {
    for (const auto &contact : contacts<Family>(b, inst_id)) {
        if (contact.id == channel) {
            return contact;
        }
    }
    return std::nullopt;
}

// Anything but an output is taken for an input.
device_of<contact_input::family> input(board &b, uint32_t inst_id, uint32_t channel) {
    const auto found = channel_as<contact_input::family>(b, inst_id, channel);
    refuse_if(!found, error::no_such_device);
    return *found;
}

} // namespace

uint32_t drv_digital_init(uint32_t inst_id) {
    return accept_instance(inst_id);
}

uint32_t drv_digital_deinit(uint32_t inst_id) {
    return accept_instance(inst_id);
}

uint32_t drv_digital_set_mode(uint32_t inst_id, uint32_t chip_id, uint32_t mode) {
    return operate([&](board &b) {
        if (const auto relay = channel_as<contact_output::family>(b, inst_id, chip_id)) {
            b.put(*relay, contact_output::mode, mode);
        } else {
            b.put(input(b, inst_id, chip_id), contact_input::mode, mode);
        }
    });
}

uint32_t drv_digital_set_status(uint32_t inst_id, uint32_t chip_id, uint32_t status) {
    return operate(
        [&](board &b) { b.put(b.find<contact_output::family>(inst_id, chip_id), contact_output::status, status); });
}

uint32_t drv_digital_get_status(uint32_t inst_id, uint32_t chip_id, uint32_t *status) {
    return operate([&](board &b) {
        refuse_null(status);
        const auto relay = channel_as<contact_output::family>(b, inst_id, chip_id);
        *status = relay ? contact_output::shown(b, *relay) : contact_input::status(b, input(b, inst_id, chip_id));
    });
}

uint32_t drv_digital_get_in_num(uint32_t inst_id, uint32_t *num) {
    return operate([&](board &b) {
        refuse_null(num);
        *num = static_cast<uint32_t>(contacts<contact_input::family>(b, inst_id).size());
    });
}

uint32_t drv_digital_get_out_num(uint32_t inst_id, uint32_t *num) {
    return operate([&](board &b) {
        refuse_null(num);
        *num = static_cast<uint32_t>(contacts<contact_output::family>(b, inst_id).size());
    });
}
