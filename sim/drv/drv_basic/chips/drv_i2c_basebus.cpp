// Chips on the buses of the base board.
#include "drv_basic/chips/drv_i2c.h"

#include "sim/devices/chips/base_bus.h"
#include "sim/drv/driver.h"

#include <algorithm>

using namespace kestro_sim;

namespace {

i2c_chip::one chip_of(board &b, uint32_t inst_id, uint32_t bus_id, const drv_i2c_basebus_request &request) {
    return base_bus::find(b, b.instance(inst_id),
                          {bus_id, request.channel, request.slave_addr, request.slave_addr_width,
                           request.reg_addr_width, request.offset});
}

void check_request(const drv_i2c_basebus_request *request, uint8_t direction) {
    refuse_null(request);
    refuse_if(request->direction != direction || request->reserved != 0, error::bad_value);
    refuse_if(request->length != 0 && request->data == nullptr, error::null_pointer);
}

} // namespace

uint32_t drv_i2c_read_basebus(uint32_t inst_id, uint32_t bus_id, drv_i2c_basebus_request *request) {
    return operate([&](board &b) {
        check_request(request, DRV_I2C_BASEBUS_READ);
        const auto bytes = i2c_chip::read(b, chip_of(b, inst_id, bus_id, *request), request->offset, request->length);
        std::copy(bytes.begin(), bytes.end(), request->data);
    });
}

uint32_t drv_i2c_write_basebus(uint32_t inst_id, uint32_t bus_id, drv_i2c_basebus_request *request) {
    return operate([&](board &b) {
        check_request(request, DRV_I2C_BASEBUS_WRITE);
        i2c_chip::write(b, chip_of(b, inst_id, bus_id, *request), request->offset, {request->data, request->length});
    });
}
