// The USB ports of the own board.
#include "drv_basic/storage/drv_usb.h"

#include "sim/devices/storage/usb_port.h"
#include "sim/drv/driver.h"
#include "sim/drv/drv_basic/storage/usb_events.h"

using namespace kestro_sim;

namespace {

usb_port::port port_of(board &b, uint32_t usb_id) {
    return b.find_at<usb_port::family>(b.self(), usb_id);
}

// What the stick itself is asked.
usb_port::port answering(board &b, uint32_t usb_id) {
    usb_port::port port = port_of(b, usb_id);
    refuse_if(!usb_port::is_on_line(b, port), error::not_ready);
    return port;
}

uint32_t count_ports(board &b) {
    const auto ports = b.all_at<usb_port::family>(b.self());
    refuse_if(ports.empty(), error::not_supported);
    return static_cast<uint32_t>(ports.size());
}

uint32_t read_port(uint32_t usb_id, word_of<usb_port::family> name, uint32_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        *value = b.get(port_of(b, usb_id), name);
    });
}

uint32_t read_stick(uint32_t usb_id, word_of<usb_port::family> name, uint32_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        *value = b.get(answering(b, usb_id), name);
    });
}

} // namespace

uint32_t drv_usb_init(void) {
    return operate([](board &b) { count_ports(b); });
}

uint32_t drv_usb_deinit(void) {
    const uint32_t ret = operate([](board &b) { count_ports(b); });
    if (ret == 0) {
        end_watching_usb();
    }
    return ret;
}

uint32_t drv_usb_get_num(uint32_t *num) {
    return operate([&](board &b) {
        refuse_null(num);
        *num = count_ports(b);
    });
}

uint32_t drv_usb_get_online_status(uint32_t usb_id, uint32_t *online) {
    return operate([&](board &b) {
        refuse_null(online);
        *online = usb_port::is_on_line(b, port_of(b, usb_id)) ? 1 : 0;
    });
}

uint32_t drv_usb_get_devmap(uint32_t usb_id, char *devmap, uint32_t len) {
    return operate([&](board &b) { write_text(devmap, len, b.text(answering(b, usb_id), usb_port::devmap)); });
}

uint32_t drv_usb_get_size(uint32_t usb_id, uint32_t *size) {
    return read_stick(usb_id, usb_port::size, size);
}

uint32_t drv_usb_get_partition_num(uint32_t usb_id, uint32_t *num) {
    return read_stick(usb_id, usb_port::partitions, num);
}

uint32_t drv_usb_get_hotplug_ability(uint32_t usb_id, uint32_t *hotplug) {
    return read_port(usb_id, usb_port::hotplug, hotplug);
}

uint32_t drv_usb_hotplug_regist_event(uint32_t usb_id) {
    return operate([&](board &b) {
        const usb_port::port port = port_of(b, usb_id);
        refuse_if(b.get(port, usb_port::hotplug) == 0, error::not_supported);
        begin_to_watch_usb(b, port);
    });
}

uint32_t drv_usb_power_on(uint32_t usb_id) {
    return operate([&](board &b) { usb_port::switch_to(b, port_of(b, usb_id), 1); });
}

uint32_t drv_usb_power_off(uint32_t usb_id) {
    return operate([&](board &b) { usb_port::switch_to(b, port_of(b, usb_id), 0); });
}

uint32_t drv_usb_check_fault(uint32_t usb_id, uint32_t *fault) {
    return read_port(usb_id, usb_port::fault, fault);
}

uint32_t drv_usb_recover_fault(uint32_t usb_id, uint32_t *result) {
    return operate([&](board &b) {
        refuse_null(result);
        *result = usb_port::recover(b, port_of(b, usb_id)) ? 0 : 1;
    });
}

uint32_t drv_usb_check_voltage_status(uint32_t usb_id, uint32_t *status) {
    return operate([&](board &b) {
        refuse_null(status);
        *status = usb_port::judge_voltage(b, port_of(b, usb_id));
    });
}

uint32_t drv_usb_get_irq_no(uint32_t usb_id, uint32_t *irq_no) {
    return read_port(usb_id, usb_port::irq, irq_no);
}
