// Dry contacts: channel n is input n and output n.
#include "drv_basic/chips/drv_digital.h"

#include "sim/devices/chips/contacts.h"
#include "sim/drv/driver.h"

#include <algorithm>

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

template <const device_family &Family>
void set_modes(board &b, uint32_t inst_id, uint32_t channel, written_of<Family> name, uint32_t mode, change &writes) {
    for (const auto &contact : contacts<Family>(b, inst_id)) {
        if (contact.id == channel) {
            b.put(writes, contact, name, mode);
        }
    }
}

bool has_channel(board &b, uint32_t inst_id, uint32_t channel) {
    const auto is_channel = [&](const device &which) { return which.id == channel; };
    const auto inputs = contacts<contact_input::family>(b, inst_id);
    const auto outputs = contacts<contact_output::family>(b, inst_id);
    return std::any_of(inputs.begin(), inputs.end(), is_channel) ||
           std::any_of(outputs.begin(), outputs.end(), is_channel);
}

} // namespace

uint32_t drv_digital_init(uint32_t inst_id) {
    return accept_instance(inst_id);
}

uint32_t drv_digital_deinit(uint32_t inst_id) {
    return accept_instance(inst_id);
}

// Both ends of a channel change together, or neither does.
uint32_t drv_digital_set_mode(uint32_t inst_id, uint32_t chip_id, uint32_t mode) {
    return operate([&](board &b) {
        refuse_if(!has_channel(b, inst_id, chip_id), error::no_such_device);
        change writes;
        set_modes<contact_input::family>(b, inst_id, chip_id, contact_input::mode, mode, writes);
        set_modes<contact_output::family>(b, inst_id, chip_id, contact_output::mode, mode, writes);
        b.commit(writes);
    });
}

uint32_t drv_digital_set_status(uint32_t inst_id, uint32_t chip_id, uint32_t status) {
    return operate(
        [&](board &b) { b.put(b.find<contact_output::family>(inst_id, chip_id), contact_output::status, status); });
}

uint32_t drv_digital_get_status(uint32_t inst_id, uint32_t chip_id, uint32_t *status) {
    return operate([&](board &b) {
        refuse_null(status);
        *status = contact_input::status(b, b.find<contact_input::family>(inst_id, chip_id));
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
