// The special calls, each a handler of its own.
#include "tests/sim/special_calls.h"

#include "drv_basic/identity/drv_barcode.h"
#include "drv_basic/identity/drv_elabel.h"
#include "drv_basic/identity/drv_mac.h"
#include "drv_basic/management/drv_msc.h"
#include "drv_basic/service/drv_log.h"
#include "drv_basic/storage/drv_eeprom.h"
#include "nb_bsp/nb_bsp.h"
#include "nb_ctl/board_xml.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <mutex>
#include <unistd.h>

namespace kestro_tests {

namespace {

// Text padded with zeros to len bytes.
std::vector<uint8_t> padded(const std::string &text, size_t len) {
    std::vector<uint8_t> bytes(text.begin(), text.end());
    bytes.resize(len, 0);
    return bytes;
}

using area_read = uint32_t (*)(uint32_t, uint32_t, uint8_t *, uint32_t);
using area_write = uint32_t (*)(uint32_t, uint32_t, const uint8_t *, uint32_t);

// Labels and bar codes are text in an area of bytes, up to its first zero.
std::string label_text(const std::vector<uint8_t> &bytes, size_t size) {
    std::string text;
    for (size_t i = 0; i < size && bytes[i] != 0; ++i) {
        const bool is_printable = bytes[i] >= 0x20 && bytes[i] < 0x7F;
        text += is_printable ? std::string(1, static_cast<char>(bytes[i])) : "\\" + hex(&bytes[i], 1, "");
    }
    return " \"" + text + "\"";
}

void read_area(words &call, area_read read) {
    const uint32_t inst = call.number();
    const uint32_t id = call.number();
    const uint32_t len = call.number();
    area text(call);
    const uint32_t result = read(inst, id, text.bytes.data(), len);
    const size_t size = std::min<size_t>(len, area_size);
    print_answer(result, label_text(text.bytes, size) + text.overrun(size), text.is_touched());
}

void write_area(words &call, area_write write) {
    const uint32_t inst = call.number();
    const uint32_t id = call.number();
    const uint32_t len = call.number();
    const std::vector<uint8_t> text = padded(call.next(), std::max<size_t>(len, 4096));
    print_result(write(inst, id, text.data(), len));
}

// The same byte all over, so that a mixture of two writes shows.
void fill_area(words &call, area_write write, uint32_t size) {
    const uint32_t inst = call.number();
    const auto byte = static_cast<uint8_t>(call.number());
    const uint32_t times = call.number();
    uint32_t result = 0;
    for (uint32_t i = 0; i < times; ++i) {
        const std::vector<uint8_t> label(size, static_cast<uint8_t>(byte + (i & 1U)));
        result |= write(inst, 0, label.data(), size);
    }
    print_result(result);
}

void fill_macs(words &call) {
    const uint32_t inst = call.number();
    const auto byte = static_cast<uint8_t>(call.number());
    const uint32_t times = call.number();
    uint32_t result = 0;
    for (uint32_t i = 0; i < times; ++i) {
        const std::vector<uint8_t> addr(6, static_cast<uint8_t>(byte + (i & 1U)));
        result |= drv_mac_set_addr_num(inst, 1, addr[0], addr.data());
    }
    print_result(result);
}

std::vector<uint8_t> address(words &call) {
    const unsigned long long number = strtoull(call.next().c_str(), nullptr, 0);
    std::vector<uint8_t> bytes;
    for (int shift = 40; shift >= 0; shift -= 8) {
        bytes.push_back(static_cast<uint8_t>(number >> shift));
    }
    return bytes;
}

// The one area whose size is not given: an address has always six bytes.
void mac_get_addr(words &call) {
    const uint32_t inst = call.number();
    const uint32_t type = call.number();
    argument<uint8_t *> addr(call);
    const uint32_t result = drv_mac_get_addr(inst, type, addr.get());
    print_answer(result, addr.answer(DRV_MAC_SIZE), addr.is_touched());
}

void mac_set_addr(words &call) {
    const uint32_t inst = call.number();
    const uint32_t type = call.number();
    print_result(drv_mac_set_addr(inst, type, address(call).data()));
}

void mac_set_addr_num(words &call) {
    const uint32_t inst = call.number();
    const uint32_t type = call.number();
    const uint32_t num = call.number();
    print_result(drv_mac_set_addr_num(inst, type, num, address(call).data()));
}

void eeprom_write(words &call) {
    const uint32_t inst = call.number();
    const uint32_t section = call.number();
    const uint32_t offset = call.number();
    const uint32_t len = call.number();
    const std::vector<uint8_t> bytes(std::clamp<uint32_t>(len, 1, 16384), static_cast<uint8_t>(call.number()));
    print_result(drv_eeprom_write_data(inst, section, offset, bytes.data(), len));
}

// The kernel ends this process at an instant of the work that nobody chose.
void kill_after_us(words &call) {
    sigevent how{};
    how.sigev_notify = SIGEV_SIGNAL;
    how.sigev_signo = SIGKILL;
    timer_t timer{};
    const long delay = static_cast<long>(call.number());
    const itimerspec when{{0, 0}, {delay / 1000000, delay % 1000000 * 1000 + 1}};
    if (timer_create(CLOCK_MONOTONIC, &how, &timer) != 0 || timer_settime(timer, 0, &when, nullptr) != 0) {
        perror("kill_after_us");
        exit(3);
    }
}

void himem(words &) {
    uint64_t start = 0;
    uint64_t length = 0;
    const uint32_t result = nb_get_himem_info(&start, &length);
    printf("0x%x 0x%llx 0x%llx\n", result, static_cast<unsigned long long>(start),
           static_cast<unsigned long long>(length));
}

// Every pointer parameter in turn is null.
void null_pointers(words &) {
    const uint32_t self = DRV_INST_SELF;
    uint32_t number = 0;
    uint64_t wide = 0;
    char text[8];
    for (const uint32_t result : {drv_elabel_read(self, 0, nullptr, 1200),
                                  drv_elabel_write(self, 0, nullptr, 1200),
                                  drv_barcode_read(self, 0, nullptr, 128),
                                  drv_barcode_write(self, 0, nullptr, 128),
                                  drv_mac_set_addr(self, 1, nullptr),
                                  drv_mac_get_addr(self, 1, nullptr),
                                  drv_mac_get_num(self, 1, nullptr, 0),
                                  drv_mac_set_addr_num(self, 1, 1, nullptr),
                                  drv_mac_get_addr_num(self, 1, 1, nullptr, 6),
                                  drv_eeprom_read_data(self, 0, 0, nullptr, 1),
                                  drv_eeprom_write_data(self, 0, 0, nullptr, 1),
                                  drv_msc_get_state(self, 0, nullptr),
                                  nb_gpio_read(5, nullptr),
                                  nb_get_himem_info(nullptr, &wide),
                                  nb_get_himem_info(&wide, nullptr),
                                  get_card_id(0xFF000005U, nullptr),
                                  find_section_info_by_section(self, 0, nullptr, &number, &number),
                                  find_section_info_by_section(self, 0, &number, nullptr, &number),
                                  find_section_info_by_section(self, 0, &number, &number, nullptr),
                                  xml_get_entry_num(self, nullptr, "i2c_dev", &number),
                                  xml_get_entry_num(self, "i2c", nullptr, &number),
                                  xml_get_entry_num(self, "i2c", "i2c_dev", nullptr),
                                  xml_get_node_num(self, nullptr, &number),
                                  xml_get_node_num(self, "i2c", nullptr),
                                  xml_get_specified_node_num(self, "i2c", "i2c_dev", nullptr),
                                  xml_get_element_string(self, "i2c", "i2c_dev", "entry0", "chip_id", nullptr, 8),
                                  xml_get_element_string(self, "i2c", "i2c_dev", "entry0", nullptr, text, 8),
                                  xml_get_element_value_u32(self, "i2c", "i2c_dev", nullptr, "chip_id", &number),
                                  xml_get_element_value_u32(self, "i2c", "i2c_dev", "entry0", "chip_id", nullptr),
                                  xml_get_element_value_u64(self, "i2c", "i2c_dev", "entry0", "chip_id", nullptr),
                                  xml_is_module_exist(self, "i2c", nullptr),
                                  xml_is_node_exist(self, nullptr, "i2c_dev", &number),
                                  xml_is_entry_exist(self, "i2c", "i2c_dev", nullptr, &number),
                                  xml_is_element_exist(self, "i2c", "i2c_dev", "entry0", "chip_id", nullptr)}) {
        printf("0x%x\n", result);
    }
}

void log_line(words &call) {
    const uint32_t id = call.number();
    const uint32_t level = call.number();
    print_result(drv_log_record(id, level, 0, "%s\r\n", call.next().c_str()));
}

void log_without_format(words &) {
    uint32_t (*const record)(uint32_t, uint32_t, uint32_t, const char *, ...) = drv_log_record;
    print_result(record(1, 1, 0, nullptr));
}

// Callbacks come on a thread of the drivers: what they say is kept until it is asked for.
std::mutex heard_lock;
std::string heard;

// Asks a driver from within the callback, as listeners do.
uint32_t hear_in_out(uint32_t slot_id, uint32_t in, void *user_data) {
    uint32_t own_slot = 0xCCCCCCCCU;
    const uint32_t result = drv_board_get_self_slotid(&own_slot);
    char line[128];
    snprintf(line, sizeof(line), "%s: slot %u in %u, told to slot %u with 0x%x\n", static_cast<const char *>(user_data),
             slot_id, in, own_slot, result);
    const std::lock_guard guard(heard_lock);
    heard += line;
    return 0;
}

// Waits for so many lines; a minute at most.
void print_heard(words &call) {
    const auto wanted = static_cast<std::ptrdiff_t>(call.number());
    for (int i = 0; i < 6000; ++i) {
        {
            const std::lock_guard guard(heard_lock);
            if (std::count(heard.begin(), heard.end(), '\n') >= wanted) {
                break;
            }
        }
        usleep(10000);
    }
    const std::lock_guard guard(heard_lock);
    fputs(heard.c_str(), stdout);
    heard.clear();
}

void register_listener(words &call) {
    static char who[] = "listener";
    const std::string name = call.next();
    print_result(drv_board_in_out_reg(hear_in_out, who, name.c_str(), call.number()));
}

} // namespace

void add_identity_areas(std::map<std::string, handler> &calls) {
    calls["elabel_read"] = [](words &call) { read_area(call, drv_elabel_read); };
    calls["elabel_write"] = [](words &call) { write_area(call, drv_elabel_write); };
    calls["elabel_fill"] = [](words &call) { fill_area(call, drv_elabel_write, DRV_ELABEL_SIZE); };
    calls["barcode_read"] = [](words &call) { read_area(call, drv_barcode_read); };
    calls["barcode_write"] = [](words &call) { write_area(call, drv_barcode_write); };
    calls["barcode_fill"] = [](words &call) { fill_area(call, drv_barcode_write, DRV_BARCODE_SIZE); };
    calls["mac_fill"] = fill_macs;
    calls["mac_get_addr"] = mac_get_addr;
    calls["mac_set_addr"] = mac_set_addr;
    calls["mac_set_addr_num"] = mac_set_addr_num;
    calls["eeprom_write"] = eeprom_write;
}

void add_listeners(std::map<std::string, handler> &calls) {
    calls["in_out_reg"] = register_listener;
    calls["heard"] = print_heard;
    calls["in_out_unreg"] = [](words &) { print_result(drv_board_in_out_unreg(hear_in_out)); };
    calls["in_out_reg_null_handler"] = [](words &call) {
        print_result(drv_board_in_out_reg(nullptr, nullptr, call.next().c_str(), 0));
    };
    calls["in_out_unreg_null_handler"] = [](words &) { print_result(drv_board_in_out_unreg(nullptr)); };
    calls["in_out_reg_null_name"] = [](words &) {
        print_result(drv_board_in_out_reg(hear_in_out, nullptr, nullptr, 0));
    };
}

void add_other_specials(std::map<std::string, handler> &calls) {
    calls["kill_after_us"] = kill_after_us;
    calls["null_pointers"] = null_pointers;
    calls["himem"] = himem;
    calls["log"] = log_line;
    calls["log_without_format"] = log_without_format;
}

} // namespace kestro_tests
