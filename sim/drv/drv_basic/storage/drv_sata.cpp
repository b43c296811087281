// The disks of the own board.
#include "drv_basic/storage/drv_sata.h"

#include "sim/devices/storage/disk.h"
#include "sim/drv/drv_basic/management/board/unit.h"

using namespace kestro_sim;

namespace {

disk::bay bay_of(board &b, uint32_t sata_id) {
    return b.find_at<disk::family>(b.self(), sata_id);
}

// What the disk itself is asked.
disk::bay answering(board &b, uint32_t sata_id) {
    disk::bay bay = bay_of(b, sata_id);
    refuse_if(!disk::is_on_line(b, bay), error::not_ready);
    return bay;
}

} // namespace

uint32_t drv_sata_get_num(uint32_t *num) {
    return operate([&](board &b) {
        refuse_null(num);
        const auto bays = b.all_at<disk::family>(b.self());
        refuse_if(bays.empty(), error::not_supported);
        uint32_t count = 0;
        for (const disk::bay &bay : bays) {
            count += disk::is_on_line(b, bay) ? 1 : 0;
        }
        *num = count;
    });
}

uint32_t drv_sata_get_online_status(uint32_t sata_id, uint32_t *status) {
    return operate([&](board &b) {
        refuse_null(status);
        *status = disk::is_on_line(b, bay_of(b, sata_id)) ? 1 : 0;
    });
}

uint32_t drv_sata_get_partition_num(uint32_t sata_id, uint32_t *num) {
    return operate([&](board &b) {
        refuse_null(num);
        *num = b.get(answering(b, sata_id), disk::partitions);
    });
}

// The texts go first, so that a refused one leaves the numbers untouched.
uint32_t drv_sata_get_property(uint32_t sata_id, uint32_t *vendor, uint32_t *speed, char *firm, uint32_t firm_size,
                               char *serial, uint32_t serial_size) {
    return operate([&](board &b) {
        refuse_null(vendor, speed, firm, serial);
        const disk::bay bay = answering(b, sata_id);
        write_text(firm, firm_size, b.text(bay, disk::firm));
        write_text(serial, serial_size, b.text(bay, disk::serial));
        *vendor = b.get(bay, disk::vendor);
        *speed = b.get(bay, disk::speed);
    });
}

uint32_t drv_sata_get_capacity(uint32_t sata_id, uint32_t *capacity) {
    return operate([&](board &b) {
        refuse_null(capacity);
        *capacity = b.get(answering(b, sata_id), disk::capacity);
    });
}

uint32_t drv_sata_get_remaining_life(uint32_t sata_id, uint32_t *remaining_life) {
    return operate([&](board &b) {
        refuse_null(remaining_life);
        *remaining_life = disk::remaining_life(b, answering(b, sata_id));
    });
}

uint32_t drv_sata_get_smartinfo(uint32_t sata_id, char *buf, uint32_t buf_len) {
    return operate([&](board &b) { write_text(buf, buf_len, disk::attribute_report(b, answering(b, sata_id))); });
}

uint32_t drv_sata_get_power_status(uint32_t sata_id, uint32_t *status) {
    return operate([&](board &b) {
        refuse_null(status);
        *status = b.get(bay_of(b, sata_id), disk::on);
    });
}

uint32_t drv_sata_power_on(uint32_t sata_id) {
    return operate([&](board &b) { disk::switch_on(b, bay_of(b, sata_id)); });
}

uint32_t drv_sata_power_off(uint32_t sata_id) {
    return operate([&](board &b) { disk::switch_off(b, bay_of(b, sata_id)); });
}

uint32_t drv_sata_check_fullin_status(uint32_t sata_id, uint32_t *status, char *buf, uint32_t buf_len) {
    return operate([&](board &b) { tell(disk::check_seat(b, bay_of(b, sata_id)), status, buf, buf_len); });
}
