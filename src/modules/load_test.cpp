// load_test: images for programmable logic, the errors that particles leave in the configuration of FPGAs, and the pins
// of the processor. No banners here.
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "drv_basic/chips/drv_cpld.h"
#include "drv_basic/chips/drv_fpga.h"
#include "drv_basic/management/drv_pic.h"
#include "modules/modules.h"
#include "nb_bsp/nb_bsp.h"
#include "shell/dispatch.h"
#include "shell/whole_file.h"
#include "shell/words.h"

namespace {

// Which chip is to get which image. The image's area is freed by the one who took the request.
struct load_request {
    uint32_t inst_id;
    uint32_t chip_id;
    const char *path;
    whole_file image;
};

// From the words of a sub-command: [inst_id] file chip_id. -1 without an image, and with a line about it.
int take_request(const char *name, int count, char **args, load_request *request) {
    char **inputs = after_optional_inst(count, args, 2, &request->inst_id);
    if (inputs == nullptr) {
        printf("./kestro_test load_test %s [inst_id] [file] [chip_id]\r\n", name);
        return -1;
    }
    request->path = inputs[0];
    request->chip_id = word_to_u32(inputs[1]);
    return read_whole_file(request->path, &request->image);
}

int fpga_load_test(int count, char **args) {
    load_request request{};
    if (take_request("fpga_load_test", count, args, &request) != 0) {
        return -1;
    }
    const uint32_t ret = drv_fpga_load(request.inst_id, request.chip_id, request.image.bytes, request.image.length);
    free(request.image.bytes);
    if (ret != 0) {
        printf("drv_fpga_load failure\r\n");
        return -1;
    }
    return 0;
}

// Scripts know its failure by the words of the FPGA's.
int cpld_load_test(int count, char **args) {
    load_request request{};
    if (take_request("cpld_load_test", count, args, &request) != 0) {
        return -1;
    }
    const uint32_t ret = drv_cpld_load(request.inst_id, request.chip_id, request.image.bytes, request.image.length);
    free(request.image.bytes);
    if (ret != 0) {
        printf("drv_fpga_load failure\r\n");
        return -1;
    }
    return 0;
}

int pic_load_test(int count, char **args) {
    load_request request{};
    if (take_request("pic_load_test", count, args, &request) != 0) {
        return -1;
    }
    const uint32_t ret =
        drv_logic_pic_load(request.inst_id, request.chip_id, request.image.bytes, request.image.length);
    free(request.image.bytes);
    if (ret != 0) {
        printf("drv_logic_pic_load failure\r\n");
        return -1;
    }
    return 0;
}

// Through the test port of the CPLD, whose new logic restarts the board under this program.
int jtag_load_test(int count, char **args) {
    load_request request{};
    if (take_request("jtag_load_test", count, args, &request) != 0) {
        return -1;
    }
    const whole_file image = request.image;
    printf("Start jtag load cpld %u, file:%s, fileLen:%#x, system will reboot after cpld loaded!\r\n", request.chip_id,
           request.path, image.length);
    const uint32_t ret = drv_jtag_load_cpld(request.inst_id, request.chip_id, image.bytes, image.length);
    free(image.bytes);
    if (ret != 0) {
        printf("drv_jtag_load_cpld failure, Result:%#x.\r\n", ret);
        return -1;
    }
    printf("Jtag load success, chip_id:%u, fileName:%s, fileLen:%#x.\r\n", request.chip_id, request.path, image.length);
    return 0;
}

// The instance is not left out here.
int clr_seu_err_test(int count, char **args) {
    if (count < 2) {
        printf("./kestro_test load_test %s [inst_id] [chip_id]\r\n", "clr_seu_err_test");
        return -1;
    }
    const uint32_t inst_id = word_to_u32(args[0]);
    const uint32_t chip_id = word_to_u32(args[1]);
    const uint32_t ret = drv_fpga_clr_seu_err(inst_id, chip_id);
    if (ret == 0) {
        printf("fpga_clr_seu_err success: inst_id:0x%x chip_id:0x%x\r\n", inst_id, chip_id);
    } else {
        printf("dfpga_clr_seu_err fail, inst_id:0x%x chip_id:0x%x ret:0x%x\r\n", inst_id, chip_id, ret);
    }
    return static_cast<int>(ret);
}

// Pins are named, and driven, with whatever words there are.
uint32_t word_or_0(int count, char **args, int index) {
    return index < count ? word_to_u32(args[index]) : 0;
}

int gpio_w(int count, char **args) {
    const uint32_t pin = word_or_0(count, args, 0);
    const uint32_t level = word_or_0(count, args, 1);
    const uint32_t ret = nb_gpio_write(pin, level);
    if (ret != 0) {
        printf("nb_gpio_write error, Pin:%u, Lvl:%u, Result:%#x.\r\n", pin, level, ret);
        return -1;
    }
    printf("nb_gpio_write pin:%u, level:%u.\r\n", pin, level);
    return 0;
}

int gpio_r(int count, char **args) {
    const uint32_t pin = word_or_0(count, args, 0);
    uint32_t level = 0;
    const uint32_t ret = nb_gpio_read(pin, &level);
    if (ret != 0) {
        printf("nb_gpio_read error, Pin:%u, Result:%#x.\r\n", pin, ret);
        return -1;
    }
    printf("nb_gpio_read pin:%u, level:%u.\r\n", pin, level);
    return 0;
}

constexpr std::array rows = {
    command_row{"fpga_load_test", fpga_load_test, "fpga_load_test"},
    command_row{"cpld_load_test", cpld_load_test, "cpld_load_test"},
    command_row{"pic_load_test", pic_load_test, "pic_load_test"},
    command_row{"jtag_load_test", jtag_load_test, "jtag_load_test"},
    command_row{"clr_seu_err_test", clr_seu_err_test, "clr_seu_err_test"},
    command_row{"gpio_w", gpio_w, "gpio_w"},
    command_row{"gpio_r", gpio_r, "gpio_r"},
};

static_assert(rows_are_sound(rows));

} // namespace

int load_test(int count, char **args) {
    return run_module(rows, count, args);
}
