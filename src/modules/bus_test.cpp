// bus_test: chips on the I2C buses of the base board, reached by bus, channel of the bus's switch, and address. The
// widths of addresses are said each time: nothing is known here about the chip.
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "drv_basic/chips/drv_i2c.h"
#include "modules/modules.h"
#include "shell/console.h"
#include "shell/dispatch.h"
#include "shell/words.h"

namespace {

// From the channel to the register address's width; what is done there differs.
void fill_request(struct drv_i2c_basebus_request *request, char **words) {
    memset(request, 0, sizeof *request);
    request->channel = static_cast<uint16_t>(word_to_u32(words[0]));
    request->slave_addr = static_cast<uint16_t>(word_to_u32(words[1]));
    request->offset = word_to_u32(words[2]);
    request->slave_addr_width = word_to_u32(words[3]);
    request->reg_addr_width = word_to_u32(words[4]);
}

// A line ends behind byte 0 and behind every byte whose index is a multiple of 16, so the first line has one byte.
void print_dump(const uint8_t *bytes, uint32_t len) {
    for (uint32_t i = 0; i < len; ++i) {
        printf("%02x ", bytes[i]);
        if (i % 16 == 0) {
            puts("\r");
        }
    }
}

int i2c_read_basebus(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **inputs = after_optional_inst(count, args, 7, &inst_id);
    if (inputs == nullptr) {
        puts("kestro_test bus_test i2c_read_basebus inst_id bus_id channel slave_addr offset slave_addr_width "
             "reg_addr_width len");
        return -1;
    }
    const uint32_t bus_id = word_to_u32(inputs[0]);
    struct drv_i2c_basebus_request request;
    fill_request(&request, inputs + 1);
    request.direction = DRV_I2C_BASEBUS_READ;
    request.length = word_to_u32(inputs[6]);
    if (request.length != 0) {
        request.data = reinterpret_cast<uint8_t *>(new_text_area(request.length));
        if (request.data == nullptr) {
            printf("Failed to malloc %d\r\n", static_cast<int>(request.length));
            return -1;
        }
    }
    uint8_t *const data = request.data;
    const uint32_t len = request.length;
    const uint32_t offset = request.offset;
    const uint32_t ret = drv_i2c_read_basebus(inst_id, bus_id, &request);
    printf("i2c_bus_read_basebus:[ret]:%d\r\n offset = %d, len:%d\r\n", static_cast<int>(ret), static_cast<int>(offset),
           static_cast<int>(len));
    print_dump(data, len);
    free(data);
    return static_cast<int>(ret);
}

int i2c_write_basebus(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **inputs = after_optional_inst(count, args, 7, &inst_id);
    if (inputs == nullptr) {
        puts("kestro_test bus_test i2c_write_basebus inst_id bus_id channel slave_addr offset slave_addr_width "
             "reg_addr_width value");
        return -1;
    }
    const uint32_t bus_id = word_to_u32(inputs[0]);
    auto value = static_cast<uint8_t>(word_to_u32(inputs[6]));
    struct drv_i2c_basebus_request request;
    fill_request(&request, inputs + 1);
    request.direction = DRV_I2C_BASEBUS_WRITE;
    request.length = 1;
    request.data = &value;
    const uint32_t ret = drv_i2c_write_basebus(inst_id, bus_id, &request);
    printf("i2c_bus_write_basebus:[ret]:%d\r\n offset = %d, value:%d\r\n", static_cast<int>(ret),
           static_cast<int>(request.offset), value);
    return static_cast<int>(ret);
}

constexpr std::array rows = {
    command_row{"i2c_read_basebus", i2c_read_basebus,
                "kestro_test bus_test i2c_read_basebus inst_id bus_id channel slave_addr offset slave_addr_width "
                "reg_addr_width len "},
    command_row{"i2c_write_basebus", i2c_write_basebus,
                "kestro_test bus_test i2c_write_basebus inst_id bus_id channel slave_addr offset slave_addr_width "
                "reg_addr_width value "},
};

static_assert(rows_are_sound(rows));

} // namespace

int bus_test(int count, char **args) {
    return run_module(rows, count, args);
}
