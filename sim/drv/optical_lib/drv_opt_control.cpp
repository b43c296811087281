// What can be set of a module, and its registers.
#include "sim/drv/optical_lib/optical_port.h"
#include "sim/drv/optical_lib/optical_readings.h"

using namespace kestro_sim;

namespace {

constexpr uint32_t addresses = 2 * optics::half;
constexpr uint32_t page_select = optics::half - 1;

// Where the switches and rates of a kind are: bits of a byte.
struct control {
    uint8_t device;
    int page;
    uint32_t address;
};

void write_control(board &b, const optical_port::answer &module, const control &at, uint32_t value) {
    optics::write_byte(b, module.which, at.device, at.page, at.address, static_cast<uint8_t>(value));
}

// The board drives the pin of a smaller cage. Switching on takes the module's own switch back too.
void switch_small(board &b, const optical_port::answer &module, bool off) {
    b.put(module.which.port, cage::tx_disable, off ? 1 : 0);
    constexpr control at{optics::diagnostics_device, 0, 110};
    constexpr uint32_t soft_disable = 0x40;
    if (!off && module.which.kind->measures) {
        write_control(b, module, at,
                      optical_readings::byte_at(module.map, at.device, at.page, at.address) & ~soft_disable);
    }
}

void switch_lanes(board &b, const optical_port::answer &module, const control &at, uint32_t lanes, bool off) {
    const uint32_t before = optical_readings::byte_at(module.map, at.device, at.page, at.address);
    write_control(b, module, at, off ? before | lanes : before & ~lanes);
}

// Direction 0 is the transmitter. A small module has one bit, each lane of a bigger one has two.
void set_small_rate(board &b, const optical_port::answer &module, uint8_t direction, uint8_t rate) {
    refuse_if(rate > 1, error::bad_value);
    constexpr uint32_t soft_rate_bit = 0x08;
    const control at{optics::diagnostics_device, 0, direction == 0 ? 118U : 110U};
    const uint32_t before = optical_readings::byte_at(module.map, at.device, at.page, at.address);
    write_control(b, module, at, rate == 1 ? before | soft_rate_bit : before & ~soft_rate_bit);
}

void set_lane_rates(board &b, const optical_port::answer &module, uint8_t direction, uint32_t lanes, uint8_t rate) {
    refuse_if(rate > 3, error::bad_value);
    const control at{optics::first_device, 0, direction == 0 ? 88U : 87U};
    uint32_t byte = optical_readings::byte_at(module.map, at.device, at.page, at.address);
    for (uint32_t lane = 0; lanes >> lane != 0; ++lane) {
        const uint32_t shift = 2 * lane;
        if ((lanes >> lane & 1U) != 0) {
            byte = (byte & ~(3U << shift)) | uint32_t{rate} << shift;
        }
    }
    write_control(b, module, at, byte);
}

struct place_in_map {
    uint8_t device;
    int page;
};

// Showing a page is a write to the module, which stays.
place_in_map show(board &b, const optical_module::fitted &which, uint8_t device, uint8_t page, uint32_t address,
                  uint32_t length) {
    const uint8_t meant = device == 0 ? optics::first_device : device;
    refuse_if(!optics::has_device(*which.kind, meant), error::no_such_device);
    refuse_if(!optics::has_page(*which.kind, meant, page), error::out_of_range);
    refuse_if(length == 0 || address >= addresses || length > addresses - address, error::out_of_range);
    if (address + length > optics::half && which.kind->managed_by != optics::management::sfp) {
        optics::write_byte(b, which, meant, page, page_select, page);
    }
    return {meant, page};
}

} // namespace

uint32_t drv_opt_get_disable_status(uint32_t inst_id, const struct drv_opt_port_para *port_para, uint32_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        const auto module = optical_port::read(b, inst_id, port_para);
        const uint32_t lanes = optical_port::meant_lanes(port_para, optical_readings::lanes(module.map));
        const auto told = optical_readings::disabled_lanes(module.map);
        const uint32_t off = told ? *told : b.get(module.which.port, cage::tx_disable);
        *value = (off & lanes) == lanes ? 1 : 0;
    });
}

uint32_t drv_opt_set_disable_status(uint32_t inst_id, const struct drv_opt_port_para *port_para, uint32_t value) {
    return operate([&](board &b) {
        const auto module = optical_port::read(b, inst_id, port_para);
        const uint32_t lanes = optical_port::meant_lanes(port_para, optical_readings::lanes(module.map));
        refuse_if(value > 1, error::bad_value);
        switch (optical_readings::managed_by(module.map)) {
        case optics::management::sfp:
            switch_small(b, module, value == 1);
            break;
        case optics::management::qsfp:
            switch_lanes(b, module, {optics::first_device, 0, 86}, lanes, value == 1);
            break;
        case optics::management::cmis:
            switch_lanes(b, module, {optics::first_device, 0x10, 130}, lanes, value == 1);
            break;
        }
    });
}

uint32_t drv_opt_set_rate(uint32_t inst_id, const struct drv_opt_port_para *port_para, uint8_t direction,
                          uint8_t rate) {
    return operate([&](board &b) {
        const auto module = optical_port::read(b, inst_id, port_para);
        refuse_if(!optical_readings::has_rates(module.map), error::not_supported);
        refuse_if(direction > 1, error::bad_value);
        const uint32_t lanes = optical_port::meant_lanes(port_para, optical_readings::lanes(module.map));
        if (optical_readings::managed_by(module.map) == optics::management::sfp) {
            set_small_rate(b, module, direction, rate);
        } else {
            set_lane_rates(b, module, direction, lanes, rate);
        }
    });
}

uint32_t drv_opt_register_read(uint32_t inst_id, const struct drv_opt_port_para *port_para, uint8_t device,
                               uint8_t page, uint32_t address, uint32_t *data, uint32_t length) {
    return operate([&](board &b) {
        refuse_null(data);
        const auto which = optical_module::answering(b, optical_port::find(b, inst_id, port_para));
        const place_in_map at = show(b, which, device, page, address, length);
        const auto map = optics::memory_of(b, which);
        for (uint32_t i = 0; i < length; ++i) {
            data[i] = optical_readings::byte_at(map, at.device, at.page, address + i);
        }
    });
}

uint32_t drv_opt_register_write(uint32_t inst_id, const struct drv_opt_port_para *port_para, uint8_t device,
                                uint8_t page, uint32_t address, const uint32_t *data, uint32_t length) {
    return operate([&](board &b) {
        refuse_null(data);
        const auto which = optical_module::answering(b, optical_port::find(b, inst_id, port_para));
        refuse_if(length > addresses, error::out_of_range);
        for (uint32_t i = 0; i < length; ++i) {
            refuse_if(data[i] > 0xFF, error::bad_value);
        }
        const place_in_map at = show(b, which, device, page, address, length);
        for (uint32_t i = 0; i < length; ++i) {
            optics::write_byte(b, which, at.device, at.page, address + i, static_cast<uint8_t>(data[i]));
        }
    });
}
